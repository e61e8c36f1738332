#include "app/CommandHandlers.h"

#include "app/Keyboard.h"
#include "core/CaptureRules.h"
#include "core/ids.h"
#include "win32/EventGuard.h"
#include "win32/WebLinks.h"

#include <algorithm>
#include <iterator>

namespace vextrel {

namespace {

struct Handler {
    int id;
    const wchar_t* name; ///< as an error report gives it
    void (*run)(Keyboard& keyboard);
};

template <InputMode mode>
void ChooseInputMode(Keyboard& keyboard) {
    keyboard.Options().SetInputMode(mode);
}

template <LayoutId layout>
void ChooseLayout(Keyboard& keyboard) {
    keyboard.Layouts().SwitchKeyboardLang(static_cast<std::int32_t>(layout), false);
}

/// A delay from the Hover button's menu switches to hover entry as well.
template <int delayMs>
void ChooseDelay(Keyboard& keyboard) {
    keyboard.Options().SetInputMode(InputMode::Hover);
    keyboard.Options().SetTimerInterval(delayMs);
}

void ToggleKeepOnTop(Keyboard& keyboard) {
    keyboard.Options().SetKeepOnTop(!keyboard.Options().KeepOnTop());
}
void ToggleMask(Keyboard& keyboard) {
    keyboard.ToggleMask();
}
void ToggleBeep(Keyboard& keyboard) {
    keyboard.Options().SetBeepOnHover(!keyboard.Hover().BeepOnHover());
}
void ToggleKeepPassword(Keyboard& keyboard) {
    keyboard.Options().SetKeepPasswordAfterDragDrop(!keyboard.Options().Snapshot().keepPassword);
}
void DoNothing(Keyboard&) {}

constexpr const wchar_t* toolbarHandler = L"tbToolbar_ButtonClick";
constexpr const wchar_t* delayHandler = L"tbToolbar_ButtonMenuClick";

constexpr Handler handlers[] = {
    {ids::mnuFileKeepOnTop, L"mnuFileKeepOnTop_Click", ToggleKeepOnTop},
    {ids::mnuFileExit, L"mnuFileExit_Click",
     [](Keyboard& keyboard) { ::PostMessageW(keyboard.Form().Handle(), WM_CLOSE, 0, 0); }},
    {ids::mnuModeStandard, L"mnuModeStandard_Click", ChooseInputMode<InputMode::Standard>},
    {ids::mnuModeHover, L"mnuModeHover_Click", ChooseInputMode<InputMode::Hover>},
    {ids::mnuModeHiddenMouseAndHover, L"mnuModeHiddenMouseAndHover_Click",
     ChooseInputMode<InputMode::HiddenMouseAndHover>},
    {ids::mnuViewToolbar, L"mnuViewToolbar_Click",
     [](Keyboard& keyboard) { keyboard.Options().ShowToolbar(!keyboard.Options().Snapshot().toolbarShown); }},
    {ids::mnuViewProtectiveLayer, L"mnuViewProtectiveLayer_Click",
     [](Keyboard& keyboard) { keyboard.ToggleProtectiveLayer(); }},
    {ids::mnuViewPasswordMask, L"mnuViewPasswordMask_Click", ToggleMask},
    {ids::mnuOptionsBeepOnHover, L"mnuOptionsBeepOnHover_Click", ToggleBeep},
    {ids::mnuOptionsKeepPasswordAfterDragDrop, L"mnuOptionsKeepPasswordAfterDragDrop_Click", ToggleKeepPassword},
    {ids::mnuOptionsDragDrop, L"mnuOptionsDragDrop_Click",
     [](Keyboard& keyboard) { keyboard.Options().SetDragDropMode(DragDropMode::DragDrop); }},
    {ids::mnuOptionsInjectMode, L"mnuOptionsInjectMode_Click",
     [](Keyboard& keyboard) { keyboard.Options().SetDragDropMode(DragDropMode::Inject); }},
    {ids::mnuOptionsSaveSettingsInINI, L"mnuOptionsSaveSettingsInINI_Click",
     [](Keyboard& keyboard) { keyboard.Options().SetSaveSettingsInINI(!keyboard.Options().SaveSettingsInINI()); }},
    {ids::mnuKeyboardLayoutDefault, L"mnuKeyboardLayoutDefault_Click", ChooseLayout<LayoutId::Default>},
    {ids::mnuKeyboardLayoutEnglish, L"mnuKeyboardLayoutEnglish_Click", ChooseLayout<LayoutId::English>},
    {ids::mnuKeyboardLayoutLastSaved, L"mnuKeyboardLayoutLastSaved_Click", ChooseLayout<LayoutId::LastSaved>},
    {ids::mnuKeyboardLayoutImport, L"mnuKeyboardLayoutImport_Click", ChooseLayout<LayoutId::Import>},
    {ids::mnuKeyboardCreateNewLayoutFile, L"mnuKeyboardCreateNewLayoutFile_Click",
     [](Keyboard& keyboard) { keyboard.Layouts().CreateNewLayoutFile(); }},
    {ids::mnuHelpVisitHomepage, L"mnuHelpVisitHomepage_Click",
     [](Keyboard& keyboard) { OpenWebPage(keyboard.Form().Handle(), WebPage::Homepage); }},
    {ids::mnuHelpDonate, L"mnuHelpDonate_Click",
     [](Keyboard& keyboard) { OpenWebPage(keyboard.Form().Handle(), WebPage::Donate); }},
    {ids::mnuHelpAbout, L"mnuHelpAbout_Click", [](Keyboard& keyboard) { keyboard.ShowAbout(); }},

    {ids::toolStandard, toolbarHandler, ChooseInputMode<InputMode::Standard>},
    {ids::toolHover, toolbarHandler, ChooseInputMode<InputMode::Hover>},
    {ids::toolHideMouse, toolbarHandler, ChooseInputMode<InputMode::HiddenMouseAndHover>},
    {ids::toolInject, toolbarHandler,
     [](Keyboard& keyboard) {
         const bool injects = keyboard.Options().Snapshot().dragDropMode == DragDropMode::Inject;
         keyboard.Options().SetDragDropMode(injects ? DragDropMode::DragDrop : DragDropMode::Inject);
     }},
    // These five are there to be seen; they only have the toolbar refreshed.
    {ids::toolScrambleOnScreen, toolbarHandler, DoNothing},
    {ids::toolScrambleAll, toolbarHandler, DoNothing},
    {ids::toolDvorak, toolbarHandler, DoNothing},
    {ids::toolUnscramble, toolbarHandler, DoNothing},
    {ids::toolObsfucate, toolbarHandler, DoNothing},
    {ids::toolToggleMask, toolbarHandler, ToggleMask},
    {ids::toolBeep, toolbarHandler, ToggleBeep},
    {ids::toolKeepPassword, toolbarHandler, ToggleKeepPassword},
    {ids::toolKeepOnTop, toolbarHandler, ToggleKeepOnTop},
    {ids::toolRefresh, toolbarHandler, [](Keyboard& keyboard) { keyboard.Rearrange(); }},
    {ids::toolClear, toolbarHandler, [](Keyboard& keyboard) { keyboard.ClearText(); }},

    {ids::hoverDelayHalfSecond, delayHandler, ChooseDelay<500>},
    {ids::hoverDelayOneSecond, delayHandler, ChooseDelay<1000>},
    {ids::hoverDelayOneAndAHalfSeconds, delayHandler, ChooseDelay<1500>},
    {ids::hoverDelayTwoSeconds, delayHandler, ChooseDelay<2000>},
};

constexpr bool IsToolbarButton(int id) noexcept {
    return id >= ids::toolStandard && id <= ids::toolClear;
}

} // namespace

void RunCommand(int id, Keyboard& keyboard) noexcept {
    const auto* const handler =
        std::find_if(std::begin(handlers), std::end(handlers), [id](const Handler& entry) { return entry.id == id; });
    if (handler == std::end(handlers)) {
        return;
    }
    GuardEvent(keyboard.Form().Handle(), handler->name, [&] {
        handler->run(keyboard);
        if (IsToolbarButton(id)) {
            keyboard.Options().RefreshToolbar();
        }
    });
}

} // namespace vextrel
