#include "core/Commands.h"

#include "core/ids.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <utility>

namespace vextrel {
namespace {

TEST(Commands, EveryMarkAndPressedButtonShowsItsOption) {
    using S = CommandSnapshot;
    const struct {
        int menuId, toolId;
        std::function<bool(const S&)> checked;
    } rows[] = {
        {ids::mnuModeStandard, ids::toolStandard, [](const S& s) { return s.inputMode == InputMode::Standard; }},
        {ids::mnuModeHover, ids::toolHover, [](const S& s) { return s.inputMode == InputMode::Hover; }},
        {ids::mnuModeHiddenMouseAndHover, ids::toolHideMouse,
         [](const S& s) { return s.inputMode == InputMode::HiddenMouseAndHover; }},
        {ids::mnuOptionsInjectMode, ids::toolInject, [](const S& s) { return s.dragDropMode == DragDropMode::Inject; }},
        {ids::mnuOptionsDragDrop, 0, [](const S& s) { return s.dragDropMode == DragDropMode::DragDrop; }},
        {ids::mnuViewPasswordMask, ids::toolToggleMask, [](const S& s) { return s.textIsMasked; }},
        {ids::mnuOptionsBeepOnHover, ids::toolBeep, [](const S& s) { return s.beepOnHover; }},
        {ids::mnuOptionsKeepPasswordAfterDragDrop, ids::toolKeepPassword, [](const S& s) { return s.keepPassword; }},
        {ids::mnuFileKeepOnTop, ids::toolKeepOnTop, [](const S& s) { return s.keepOnTop; }},
        {ids::mnuOptionsSaveSettingsInINI, 0, [](const S& s) { return s.saveSettings; }},
        {ids::mnuViewToolbar, 0, [](const S& s) { return s.toolbarShown; }},
        {ids::mnuViewProtectiveLayer, 0, [](const S& s) { return s.layerMarked; }},
        {ids::mnuKeyboardLayoutDefault, 0, [](const S& s) { return s.layout == LayoutMark::Default; }},
        {ids::mnuKeyboardLayoutEnglish, 0, [](const S& s) { return s.layout == LayoutMark::English; }},
        {ids::mnuKeyboardLayoutLastSaved, 0, [](const S& s) { return s.layout == LayoutMark::LastSaved; }},
    };
    std::set<int> marked;
    for (int n = 0; n < 15 << 8; ++n) { // every combination
        const auto bit = [n](int which) { return (n / 15 >> which & 1) != 0; };
        const S snapshot{
            InputMode(1 + n % 3), DragDropMode(bit(0)), bit(1), bit(2), bit(3), bit(4), bit(5), bit(6), bit(7),
            LayoutMark(n / 3 % 5)};
        for (const auto& row : rows) {
            for (const int id : {row.menuId, row.toolId}) {
                ASSERT_EQ(id != 0 && StateOfCommand(id, snapshot).checked, id != 0 && row.checked(snapshot)) << id;
                marked.insert(id);
            }
        }
        for (int id = 0; id < 2200; ++id) {
            ASSERT_TRUE(marked.contains(id) || !StateOfCommand(id, snapshot).checked) << id;
        }
    }
    for (const ToolButton& button : ToolButtons()) {
        EXPECT_EQ(button.style != ToolButtonStyle::Plain, marked.contains(button.id)) << button.id;
    }
}

TEST(Commands, ATransferDisablesExactlyWhatWouldDisturbItAndPutsClearingOff) {
    const std::set<int> refused{ids::mnuViewPasswordMask,
                                ids::mnuKeyboardLayoutDefault,
                                ids::mnuKeyboardLayoutEnglish,
                                ids::mnuKeyboardLayoutLastSaved,
                                ids::mnuKeyboardLayoutImport,
                                ids::toolToggleMask,
                                ids::mnuKeyboardCreateNewLayoutFile,
                                ids::toolRefresh};
    CommandSnapshot running;
    running.transferRunning = true;
    for (int id = 2000; id < 2130; ++id) {
        EXPECT_EQ(StateOfCommand(id, running).enabled, !refused.contains(id)) << id;
        EXPECT_EQ(StateOfCommand(id, running).waits, id == ids::toolClear) << id;
        EXPECT_TRUE(StateOfCommand(id, {}).enabled && !StateOfCommand(id, {}).waits) << id;
    }
}

TEST(Commands, MenusAndButtonsStandInTheirOrderWithTheirWords) {
    const wchar_t* const menus[] = {
        L"&File: Keep on &Top, E&xit",
        L"&Mouse Mode: 1. Standard, 2. Hover Entry, 3. Hidden Mouse and Hover Entry",
        L"&View: &Toolbar, Protective Layer, -, &Password Mask",
        L"&Options: &Beep on Hover Entry, &Keep Password after Drag Drop, -, Drag and Drop Mode, Injection Mode, -, "
        L"Save setting changes in the vxrconfig.ini file",
        L"&Keyboard Layout: Default Language Layout, English Layout, Load Last Imported Layout, -, Import a Layout..., "
        L"Save current layout...",
        L"Help: Visit Vextrel homepage, Donate..., -, About Vextrel",
    };
    ASSERT_EQ(MenuBar().size(), std::size(menus));
    int last = 0;
    for (std::size_t i = 0; i < std::size(menus); ++i) {
        std::wstring words = MenuBar()[i].caption;
        for (const Command& item : MenuBar()[i].items) {
            words +=
                (&item == MenuBar()[i].items.data() ? L": " : L", ") + std::wstring(item.menuId ? item.caption : L"-");
            EXPECT_TRUE(item.menuId == 0 || item.menuId > std::exchange(last, item.menuId))
                << "numbers ascend; " << item.menuId;
        }
        EXPECT_EQ(words, menus[i]);
    }
    std::wstring keys;
    std::wstring tips;
    for (const ToolButton& tool : ToolButtons()) {
        EXPECT_EQ(tool.id, ids::toolStandard + (&tool - ToolButtons().data()));
        keys += (tool.startsGroup ? L"| " : L"") + std::wstring(tool.key) + L" ";
        tips += std::wstring(tool.toolTip) + L"\n";
    }
    EXPECT_EQ(keys, L"Standard Hover HideMouse | Inject | ScrambleOnScreen ScrambleAll Dvorak Unscramble | ToggleMask "
                    L"Beep KeepPassword Obsfucate | KeepOnTop Refresh Clear ");
    EXPECT_EQ(
        tips,
        L"Standard Entry\nHover Entry\nHidden Mouse and Hover Entry\nInjection Mode: try it if drag-drop "
        L"doesn't work\nScramble JUST the on-screen keys\nScramble the on-screen keys AND keyboard input\n"
        L"Use Dvorak layout for on-screen keys AND keyboard\nUnscramble on-screen keys and keyboard input\n"
        L"Show/hide the password masking\nBeep on Hover Entry\nKeep Password After Drag Drop\nHide "
        L"password in amongst random characters\nKeep On Top\nResize Vextrel\nClear text/password (Ctrl+Delete)\n");
    std::wstring delays;
    for (const HoverDelayItem& item : HoverDelayMenu()) {
        delays += item.key + (L" " + std::to_wstring(item.delayMs)) + L" " + item.caption + L" " +
                  std::to_wstring(item.id - ids::toolClear) + L"\n";
    }
    EXPECT_EQ(delays, L"halfseconddely 500 Half Second Delay 6\noneseconddelay 1000 One Second Delay 7\n"
                      L"oneandhalfseconddelay 1500 One and a Half Second Delay 8\n"
                      L"twosecondsdelay 2000 Two Second Delay 9\n");
}

TEST(Commands, TheStatusBarTellsModeDelayTransferAndLayout) {
    using enum LayoutMark;
    constexpr auto drag = DragDropMode::DragDrop;
    constexpr auto inject = DragDropMode::Inject;
    const struct {
        InputMode mode;
        int intervalMs;
        DragDropMode transfer;
        LayoutMark layout;
        const wchar_t *texts, *brief, *name = L"";
    } rows[] = {
        {InputMode::Standard, 1500, drag, English, L"Standard entry|Drag and drop|English layout",
         L"Standard|Drag|English"},
        {InputMode::Hover, 1500, inject, Default, L"Hover entry, 1.5 s|Injection|Default layout",
         L"Hover, 1.5 s|Injection|Default"},
        {InputMode::HiddenMouseAndHover, 500, inject, LastSaved, L"Hidden mouse, 0.5 s|Injection|Last imported layout",
         L"Hidden mouse, 0.5 s|Injection|Last imported"},
        {InputMode::Hover, 32767, drag, Imported, L"Hover entry, 32.767 s|Drag and drop|Imported layout",
         L"Hover, 32.767 s|Drag|Imported"},
        {InputMode::Standard, 1, drag, Imported, L"Standard entry|Drag and drop|German", L"Standard|Drag|German",
         L"German"},
        {InputMode::Standard, 1, drag, LastSaved, L"Standard entry|Drag and drop|German, as stored",
         L"Standard|Drag|German", L"German"},
        {InputMode::Hover, 1, drag, None, L"Hover entry, 0.001 s|Drag and drop|English layout",
         L"Hover, 0.001 s|Drag|English"},
        {InputMode::Hover, 2000, drag, None, L"Hover entry, 2.0 s|Drag and drop|English layout",
         L"Hover, 2.0 s|Drag|English"},
    };
    for (const auto& row : rows) {
        const auto [first, second, third, warning] = StatusBarTexts(
            {.inputMode = row.mode, .dragDropMode = row.transfer, .layout = row.layout}, row.intervalMs, row.name);
        EXPECT_EQ(first + L"|" + second + L"|" + third, row.texts);
        EXPECT_EQ(warning, L"");
        EXPECT_EQ(BriefStatus(first) + L"|" + BriefStatus(second) + L"|" + BriefStatus(third), row.brief);
    }
}

TEST(Commands, TheStatusBarSaysThatNoLayoutIsImportedYetWholeWhereRoomIsShort) {
    using enum LayoutMark;
    for (const LayoutMark mark : {None, Default, English, LastSaved, Imported}) {
        const CommandSnapshot snapshot{.layout = mark, .noneImported = true};
        EXPECT_EQ(StatusBarTexts(snapshot, 1000, L"German").layout == L"No layout imported yet", mark == LastSaved);
        EXPECT_EQ(StateOfCommand(ids::mnuKeyboardLayoutLastSaved, snapshot).checked, mark == LastSaved);
    }
    EXPECT_EQ(BriefStatus(L"No layout imported yet"), L"No layout imported yet");
    EXPECT_EQ(BriefStatus(L"System's layout not read"), L"System's layout not read");
}

TEST(Commands, TheStatusBarWarnsOfWhatASettingsFileHasOpened) {
    EXPECT_EQ(StatusBarTexts({.answersOthers = true, .hardeningOff = true}, 1000).warning, L"Open to other programs");
    EXPECT_EQ(BriefStatus(L"Open to other programs"), L"Open");
    EXPECT_EQ(StatusBarTexts({.hardeningOff = true}, 1000).warning, L"Not hardened");
}

} // namespace
} // namespace vextrel
