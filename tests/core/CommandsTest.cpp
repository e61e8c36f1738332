#include "core/Commands.h"
#include "core/ids.h"

#include "Each.h"

#include <set>
#include <utility>

using namespace vextrel;
using namespace ids;
using enum LayoutMark;
using S = CommandSnapshot;

TEST(Commands, EveryMarkAndPressedButtonShowsItsOption) {
    const auto with = [](auto S::*option, auto value) {
        S snapshot{InputMode{}, DragDropMode{-1}, false, false, false, false, false, false, false, None};
        snapshot.*option = value;
        return snapshot;
    };
    const std::pair<S, std::set<int>> rows[] = {
        {with(&S::inputMode, InputMode::Standard), {mnuModeStandard, toolStandard}},
        {with(&S::inputMode, InputMode::Hover), {mnuModeHover, toolHover}},
        {with(&S::inputMode, InputMode::HiddenMouseAndHover), {mnuModeHiddenMouseAndHover, toolHideMouse}},
        {with(&S::dragDropMode, DragDropMode::DragDrop), {mnuOptionsDragDrop}},
        {with(&S::dragDropMode, DragDropMode::Inject), {mnuOptionsInjectMode, toolInject}},
        {with(&S::textIsMasked, true), {mnuViewPasswordMask, toolToggleMask}},
        {with(&S::beepOnHover, true), {mnuOptionsBeepOnHover, toolBeep}},
        {with(&S::keepPassword, true), {mnuOptionsKeepPasswordAfterDragDrop, toolKeepPassword}},
        {with(&S::keepOnTop, true), {mnuFileKeepOnTop, toolKeepOnTop}},
        {with(&S::saveSettings, true), {mnuOptionsSaveSettingsInINI}},
        {with(&S::toolbarShown, true), {mnuViewToolbar}},
        {with(&S::layerMarked, true), {mnuViewProtectiveLayer}},
        {with(&S::layout, Default), {mnuKeyboardLayoutDefault}},
        {with(&S::layout, English), {mnuKeyboardLayoutEnglish}},
        {with(&S::layout, LastSaved), {mnuKeyboardLayoutLastSaved}},
        {with(&S::layout, Imported), {}}};
    for (const auto& [snapshot, expected] : rows) {
        std::set<int> marked;
        for (int id = 0; id < 2200; ++id) {
            if (StateOfCommand(id, snapshot).checked) {
                marked.insert(id);
            }
        }
        EXPECT_EQ(marked, expected);
    }
}

TEST(Commands, ATransferDisablesExactlyWhatWouldDisturbItAndPutsClearingOff) {
    const std::set refused{
        mnuViewPasswordMask,        toolToggleMask,          mnuKeyboardLayoutDefault,       mnuKeyboardLayoutEnglish,
        mnuKeyboardLayoutLastSaved, mnuKeyboardLayoutImport, mnuKeyboardCreateNewLayoutFile, toolRefresh};
    for (int id = 2000; id < 2130; ++id) {
        const CommandState running = StateOfCommand(id, {.transferRunning = true}), idle = StateOfCommand(id, {});
        EXPECT_TRUE(running.enabled != refused.contains(id) && running.waits == (id == toolClear)) << id;
        EXPECT_TRUE(idle.enabled && !idle.waits) << id;
    }
}

TEST(Commands, ButtonsAndDelaysStandInTheirOrderUnderTheirKeys) {
    std::wstring words;
    for (const ToolButton& tool : ToolButtons()) {
        EXPECT_TRUE(tool.id == toolStandard + (&tool - ToolButtons().data()) && IsToolButton(tool.id)) << tool.id;
        words += (tool.startsGroup ? L"| " : L"") + std::wstring(tool.key) + L" ";
    }
    for (const HoverDelayItem& item : HoverDelayMenu()) {
        words += std::to_wstring(item.id - toolClear) + L" " + item.key + L" " + std::to_wstring(item.delayMs) + L" ";
    }
    EXPECT_EQ(MenuBar().size(), 6U) << "the last group is the toolbar's alone";
    EXPECT_EQ(words, L"Standard Hover HideMouse | Inject | ScrambleOnScreen ScrambleAll Dvorak Unscramble | "
                     L"ToggleMask Beep KeepPassword Obsfucate | KeepOnTop Refresh Clear 6 halfseconddely 500 "
                     L"7 oneseconddelay 1000 8 oneandhalfseconddelay 1500 9 twosecondsdelay 2000 ");
}

TEST(Commands, TheStatusBarTellsModeDelayTransferAndLayoutAndWarns) {
    const auto mode = [](CommandSnapshot s) { return StatusBarTexts(s, 1050).inputMode; };
    EXPECT_EQ(OfEach(mode, S{.inputMode = InputMode::Standard}, S{.inputMode = InputMode::Hover},
                     S{.inputMode = InputMode::HiddenMouseAndHover}),
              L"Standard entry|Hover entry, 1.05 s|Hidden mouse, 1.05 s|");
    EXPECT_EQ(OfEach(SecondsText, 1, 500, 1500, 2000, 32767), L"0.001 s|0.5 s|1.5 s|2.0 s|32.767 s|");
    const auto layout = [](CommandSnapshot s) { return StatusBarTexts(s, 1, L"X").layout; };
    EXPECT_EQ(OfEach(layout, S{.layout = None}, S{.layout = Default}, S{.layout = English}, S{.layout = LastSaved},
                     S{.layout = Imported, .noneImported = true}, S{.layout = LastSaved, .noneImported = true}),
              L"English layout|Default layout|English layout|X, as stored|X|No layout imported yet|");
    const auto nameless = [](CommandSnapshot s) { return StatusBarTexts(s, 1).layout; };
    EXPECT_EQ(OfEach(nameless, S{.layout = LastSaved}, S{.layout = Imported}),
              L"Last imported layout|Imported layout|");
    const auto rest = [](CommandSnapshot s) {
        return StatusBarTexts(s, 1).transferMode + L": " + StatusBarTexts(s, 1).warning;
    };
    EXPECT_EQ(OfEach(rest, S{}, S{.dragDropMode = DragDropMode::Inject, .hardeningOff = true},
                     S{.answersOthers = true, .hardeningOff = true}),
              L"Drag and drop: |Injection: Not hardened|Drag and drop: Open to other programs|");
    EXPECT_EQ(OfEach(BriefStatus, L"Hover entry, 1.5 s", L"Open to other programs", L"German, as stored"),
              L"Hover, 1.5 s|Open|German|");
}
