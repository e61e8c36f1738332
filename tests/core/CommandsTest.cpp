#include "core/Commands.h"

#include "core/ids.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace vextrel {
namespace {

using namespace ids;
using enum LayoutMark;
constexpr auto standard = InputMode::Standard, hover = InputMode::Hover, hidden = InputMode::HiddenMouseAndHover;
constexpr auto drag = DragDropMode::DragDrop, inject = DragDropMode::Inject;

TEST(Commands, EveryMarkAndPressedButtonShowsItsOption) {
    // No two options are on in the same ones of these.
    const struct {
        CommandSnapshot snapshot;
        std::set<int> marked;
    } rows[] = {
        {{standard, drag, true, false, false, true, false, false, false, English},
         {mnuModeStandard, toolStandard, mnuOptionsDragDrop, mnuViewPasswordMask, toolToggleMask, mnuFileKeepOnTop,
          toolKeepOnTop, mnuKeyboardLayoutEnglish}},
        {{hover, drag, true, true, false, false, true, true, true, Default},
         {mnuModeHover, toolHover, mnuOptionsDragDrop, mnuViewPasswordMask, toolToggleMask, mnuOptionsBeepOnHover,
          toolBeep, mnuOptionsSaveSettingsInINI, mnuViewToolbar, mnuViewProtectiveLayer, mnuKeyboardLayoutDefault}},
        {{hidden, inject, false, true, false, true, true, false, false, LastSaved},
         {mnuModeHiddenMouseAndHover, toolHideMouse, mnuOptionsInjectMode, toolInject, mnuOptionsBeepOnHover, toolBeep,
          mnuFileKeepOnTop, toolKeepOnTop, mnuOptionsSaveSettingsInINI, mnuKeyboardLayoutLastSaved}},
        {{hover, inject, true, false, true, false, false, false, true, LastSaved},
         {mnuModeHover, toolHover, mnuOptionsInjectMode, toolInject, mnuViewPasswordMask, toolToggleMask,
          mnuOptionsKeepPasswordAfterDragDrop, toolKeepPassword, mnuViewProtectiveLayer, mnuKeyboardLayoutLastSaved}},
        {{hover, inject, true, false, true, false, true, true, false, English},
         {mnuModeHover, toolHover, mnuOptionsInjectMode, toolInject, mnuViewPasswordMask, toolToggleMask,
          mnuOptionsKeepPasswordAfterDragDrop, toolKeepPassword, mnuOptionsSaveSettingsInINI, mnuViewToolbar,
          mnuKeyboardLayoutEnglish}},
        {{standard, drag, false, false, false, false, false, false, false, Imported},
         {mnuModeStandard, toolStandard, mnuOptionsDragDrop}}};
    std::set<int> everMarked;
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        std::set<int> marked;
        for (int id = 0; id < 2200; ++id) {
            if (StateOfCommand(id, row.snapshot).checked) {
                marked.insert(id);
            }
        }
        EXPECT_EQ(marked, row.marked);
        everMarked.merge(marked);
    }
    for (const ToolButton& button : ToolButtons()) {
        EXPECT_EQ(button.style != ToolButtonStyle::Plain, everMarked.contains(button.id)) << button.id;
    }
}

TEST(Commands, ATransferDisablesExactlyWhatWouldDisturbItAndPutsClearingOff) {
    const std::set refused{
        mnuViewPasswordMask,        toolToggleMask,          mnuKeyboardLayoutDefault,       mnuKeyboardLayoutEnglish,
        mnuKeyboardLayoutLastSaved, mnuKeyboardLayoutImport, mnuKeyboardCreateNewLayoutFile, toolRefresh};
    for (int id = 2000; id < 2130; ++id) {
        const CommandState running = StateOfCommand(id, {.transferRunning = true});
        EXPECT_EQ(running.enabled, !refused.contains(id)) << id;
        EXPECT_EQ(running.waits, id == toolClear) << id;
        EXPECT_TRUE(StateOfCommand(id, {}).enabled && !StateOfCommand(id, {}).waits) << id;
    }
}

TEST(Commands, MenusAndButtonsStandInTheirOrder) {
    std::wstring words, buttons, delays;
    int last = 0;
    for (const Menu& menu : MenuBar()) {
        words += menu.caption + std::wstring(L":");
        for (const Command& item : menu.items) {
            words += L" " + std::wstring(item.menuId != 0 ? item.caption : L"-") + L",";
            EXPECT_TRUE(item.menuId == 0 || item.menuId > std::exchange(last, item.menuId)) << "numbers ascend";
        }
        words += L"\n";
    }
    EXPECT_EQ(words, L"&File: Keep on &Top, E&xit,\n"
                     L"&Mouse Mode: 1. Standard, 2. Hover Entry, 3. Hidden Mouse and Hover Entry,\n"
                     L"&View: &Toolbar, Protective Layer, -, &Password Mask,\n"
                     L"&Options: &Beep on Hover Entry, &Keep Password after Drag Drop, -, Drag and Drop Mode, "
                     L"Injection Mode, -, Save setting changes in the vxrconfig.ini file,\n"
                     L"&Keyboard Layout: Default Language Layout, English Layout, Load Last Imported Layout, -, "
                     L"Import a Layout..., Save current layout...,\n"
                     L"Help: Visit Vextrel homepage, Donate..., -, About Vextrel,\n");
    for (const ToolButton& tool : ToolButtons()) {
        EXPECT_EQ(tool.id, toolStandard + (&tool - ToolButtons().data()));
        EXPECT_GT(std::wstring_view(tool.toolTip).size(), 5U) << tool.id;
        buttons += (tool.startsGroup ? L"| " : L"") + std::wstring(tool.key) + L" ";
    }
    EXPECT_EQ(buttons, L"Standard Hover HideMouse | Inject | ScrambleOnScreen ScrambleAll Dvorak Unscramble | "
                       L"ToggleMask Beep KeepPassword Obsfucate | KeepOnTop Refresh Clear ");
    for (const HoverDelayItem& item : HoverDelayMenu()) {
        delays +=
            item.key + (L" " + std::to_wstring(item.id - toolClear)) + L" " + std::to_wstring(item.delayMs) + L" ";
    }
    EXPECT_EQ(delays,
              L"halfseconddely 6 500 oneseconddelay 7 1000 oneandhalfseconddelay 8 1500 twosecondsdelay 9 2000 ");
}

TEST(Commands, TheStatusBarTellsModeDelayTransferAndLayoutAndWarns) {
    const struct {
        InputMode mode;
        int intervalMs;
        DragDropMode transfer;
        LayoutMark layout;
        const wchar_t *name, *texts;
    } rows[] = {{standard, 1500, drag, English, L"", L"Standard entry|Drag and drop|English layout"},
                {hover, 1500, inject, Default, L"X", L"Hover entry, 1.5 s|Injection|Default layout"},
                {hidden, 500, inject, LastSaved, L"", L"Hidden mouse, 0.5 s|Injection|Last imported layout"},
                {hover, 32767, inject, Imported, L"", L"Hover entry, 32.767 s|Injection|Imported layout"},
                {hover, 1, inject, Imported, L"German", L"Hover entry, 0.001 s|Injection|German"},
                {hover, 2000, inject, LastSaved, L"German", L"Hover entry, 2.0 s|Injection|German, as stored"},
                {standard, 1, drag, None, L"", L"Standard entry|Drag and drop|English layout"}};
    for (const auto& row : rows) {
        const CommandSnapshot snapshot{.inputMode = row.mode, .dragDropMode = row.transfer, .layout = row.layout};
        const auto [mode, transfer, layout, warning] = StatusBarTexts(snapshot, row.intervalMs, row.name);
        EXPECT_EQ(std::wstring(mode).append(L"|").append(transfer).append(L"|").append(layout), row.texts);
        EXPECT_EQ(warning, L"");
    }
    EXPECT_EQ(StatusBarTexts({.layout = LastSaved, .noneImported = true}, 1, L"X").layout, L"No layout imported yet");
    EXPECT_EQ(StatusBarTexts({.layout = Imported, .noneImported = true}, 1, L"X").layout, L"X");
    EXPECT_EQ(StatusBarTexts({.answersOthers = true, .hardeningOff = true}, 1).warning, L"Open to other programs");
    EXPECT_EQ(StatusBarTexts({.hardeningOff = true}, 1).warning, L"Not hardened");
    const std::pair<const wchar_t*, const wchar_t*> whereRoomIsShort[] = {
        {L"Last imported layout", L"Last imported"}, {L"Hover entry, 1.5 s", L"Hover, 1.5 s"},
        {L"Open to other programs", L"Open"},        {L"Standard entry", L"Standard"},
        {L"German, as stored", L"German"},           {L"Drag and drop", L"Drag"},
        {L"Not hardened", L"Not hardened"}};
    for (const auto& [text, brief] : whereRoomIsShort) {
        EXPECT_EQ(BriefStatus(text), brief);
    }
    for (const wchar_t* const text : {L"No layout imported yet", L"System's layout not read"}) {
        EXPECT_EQ(BriefStatus(text), text);
    }
}

} // namespace
} // namespace vextrel
