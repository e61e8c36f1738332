#include "ui/Commands.h"

#include "ui/ids.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace vextrel {
namespace {

/// Every combination of what check marks and pressed buttons depend on.
void ForEachSnapshot(const std::function<void(const CommandSnapshot&)>& visit) {
    for (int bits = 0; bits < 1 << 9; ++bits) {
        for (const InputMode mode : {InputMode::Standard, InputMode::Hover, InputMode::HiddenMouseAndHover}) {
            for (const LayoutMark layout :
                 {LayoutMark::None, LayoutMark::Default, LayoutMark::English, LayoutMark::LastSaved}) {
                const auto bit = [bits](int n) { return (bits >> n & 1) != 0; };
                visit({mode, bit(0) ? DragDropMode::Inject : DragDropMode::DragDrop, bit(1), bit(2), bit(3), bit(4),
                       bit(5), bit(6), bit(7), layout, bit(8)});
            }
        }
    }
}

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
    ForEachSnapshot([&](const S& snapshot) {
        for (const auto& row : rows) {
            for (const int id : {row.menuId, row.toolId}) {
                ASSERT_EQ(id != 0 && StateOfCommand(id, snapshot).checked, id != 0 && row.checked(snapshot)) << id;
                marked.insert(id);
            }
        }
        for (const int id : {ids::mnuFileExit, ids::mnuKeyboardLayoutImport, ids::mnuHelpAbout, ids::toolDvorak,
                             ids::toolScrambleAll, ids::toolRefresh, ids::toolClear, 0, 99999}) {
            ASSERT_FALSE(StateOfCommand(id, snapshot).checked) << id;
        }
    });
    for (const ToolButton& button : ToolButtons()) {
        EXPECT_EQ(button.style != ToolButtonStyle::Plain, marked.contains(button.id)) << button.id;
    }
}

TEST(Commands, ATransferDisablesExactlyWhatWouldDisturbIt) {
    const std::set<int> refused{ids::mnuViewPasswordMask,
                                ids::mnuKeyboardLayoutDefault,
                                ids::mnuKeyboardLayoutEnglish,
                                ids::mnuKeyboardLayoutLastSaved,
                                ids::mnuKeyboardLayoutImport,
                                ids::mnuKeyboardCreateNewLayoutFile,
                                ids::toolToggleMask,
                                ids::toolRefresh,
                                ids::toolClear};
    CommandSnapshot running;
    running.transferRunning = true;
    for (int id = 2000; id < 2130; ++id) {
        EXPECT_EQ(StateOfCommand(id, running).enabled, !refused.contains(id)) << id;
        EXPECT_TRUE(StateOfCommand(id, {}).enabled) << id;
    }
}

TEST(Commands, TheTablesNameEveryCommandOnceAndInOrder) {
    const std::pair<const wchar_t*, std::vector<int>> expected[] = {
        {L"&File", {2001, 2002}},
        {L"&Mouse Mode", {2011, 2012, 2013}},
        {L"&View", {2021, 2022, 0, 2023}},
        {L"&Options", {2031, 2032, 0, 2033, 2034, 0, 2035}},
        {L"&Keyboard Layout", {2041, 2042, 2043, 0, 2044, 2045}},
        {L"Help", {2051, 2052, 0, 2053}},
    };
    ASSERT_EQ(MenuBar().size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const Menu& menu = MenuBar()[i];
        EXPECT_STREQ(menu.caption, expected[i].first);
        std::vector<int> found;
        for (const MenuItem& item : menu.items) {
            EXPECT_EQ(item.id == 0, item.caption == nullptr);
            found.push_back(item.id);
        }
        EXPECT_EQ(found, expected[i].second) << i;
    }

    ASSERT_EQ(ToolButtons().size(), 15u);
    for (std::size_t i = 0; i < 15; ++i) {
        const int id = ToolButtons()[i].id;
        EXPECT_EQ(id, 2101 + static_cast<int>(i));
        EXPECT_EQ(ToolButtons()[i].startsGroup, id == ids::toolInject || id == ids::toolScrambleOnScreen ||
                                                    id == ids::toolToggleMask || id == ids::toolKeepOnTop);
    }
    for (std::size_t i = 0; i < HoverDelayMenu().size(); ++i) {
        EXPECT_EQ(HoverDelayMenu()[i].id, 2121 + static_cast<int>(i));
        EXPECT_EQ(HoverDelayMenu()[i].delayMs, 500 * (static_cast<int>(i) + 1));
    }
}

TEST(Commands, TheStatusBarTellsModeDelayTransferAndLayout) {
    const struct {
        InputMode mode;
        int intervalMs;
        DragDropMode transfer;
        LayoutMark layout;
        bool imported;
        const wchar_t *first, *second, *third;
    } rows[] = {
        {InputMode::Standard, 1500, DragDropMode::DragDrop, LayoutMark::English, false, L"Standard entry",
         L"Drag and drop", L"English layout"},
        {InputMode::Hover, 1500, DragDropMode::Inject, LayoutMark::Default, true, L"Hover entry, 1.5 s", L"Injection",
         L"Default layout"},
        {InputMode::HiddenMouseAndHover, 500, DragDropMode::Inject, LayoutMark::LastSaved, true, L"Hidden mouse, 0.5 s",
         L"Injection", L"Last imported layout"},
        {InputMode::Hover, 2000, DragDropMode::DragDrop, LayoutMark::None, true, L"Hover entry, 2.0 s",
         L"Drag and drop", L"Imported layout"},
        {InputMode::Hover, 32767, DragDropMode::DragDrop, LayoutMark::None, false, L"Hover entry, 32.767 s",
         L"Drag and drop", L"English layout"},
        {InputMode::Hover, 1, DragDropMode::DragDrop, LayoutMark::None, false, L"Hover entry, 0.001 s",
         L"Drag and drop", L"English layout"},
    };
    for (const auto& row : rows) {
        CommandSnapshot snapshot;
        snapshot.inputMode = row.mode;
        snapshot.dragDropMode = row.transfer;
        snapshot.layout = row.layout;
        const StatusTexts texts = StatusBarTexts(snapshot, row.intervalMs, row.imported);
        EXPECT_EQ(texts.inputMode, row.first);
        EXPECT_EQ(texts.transferMode, row.second);
        EXPECT_EQ(texts.layout, row.third);
    }
}

} // namespace
} // namespace vextrel
