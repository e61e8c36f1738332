#include "app/CommandHandlers.h"

#include "core/ids.h"
#include "ui/AboutDialog.h"
#include "win32/EventGuard.h"
#include "win32/WebLinks.h"

namespace vextrel {

namespace {

using Parts = CommandParts;

template <auto set, auto value>
void Choose(const Parts& parts) {
    (parts.options.*set)(value);
}

void ToggleInjection(const Parts& parts) {
    const bool injects = parts.options.Snapshot().dragDropMode == DragDropMode::Inject;
    parts.options.SetDragDropMode(injects ? DragDropMode::DragDrop : DragDropMode::Inject);
}

/// Sets a two-way option to what it is not.
template <auto now, auto set>
void Toggle(const Parts& parts) {
    (parts.options.*set)(!(parts.options.Snapshot().*now));
}

template <LayoutId layout>
void ChooseLayout(const Parts& parts) {
    parts.layouts.SwitchKeyboardLang(static_cast<std::int32_t>(layout), false);
}

template <WebPage page>
void Open(const Parts& parts) {
    OpenWebPage(parts.form.Handle(), page);
}

void ToggleLayer(const Parts& parts) {
    const bool asks = parts.layer.ToggleOpacity();
    parts.options.RefreshToolbar();
    if (asks) {
        parts.layer.AskOpacity();
    }
}

void ShowAbout(const Parts& parts) {
    AboutDialog(parts.operations, {.program = parts.program,
                                   .layerTakesClicks = parts.layer.TakesClicks(),
                                   .textIsMasked = parts.password.TextIsMasked(),
                                   .mouseHidden = parts.pointer.MouseHidden(),
                                   .capture = CaptureStateOf(parts.form.Handle())})
        .RunModal(parts.operations, parts.form.Handle());
}

void Clear(const Parts& parts) {
    parts.password.ClearText();
    parts.transfer.DiscardHanded();
}

struct Handler {
    int command;         ///< Command::Id
    const wchar_t* name; ///< of its menu item, as an error report gives it
    void (*run)(const Parts& parts);
};

constexpr Handler handlers[] = {
    {ids::mnuFileKeepOnTop, L"mnuFileKeepOnTop_Click", Toggle<&CommandSnapshot::keepOnTop, &Options::SetKeepOnTop>},
    {ids::mnuFileExit, L"mnuFileExit_Click",
     [](const Parts& parts) { ::PostMessageW(parts.form.Handle(), WM_CLOSE, 0, 0); }},
    {ids::mnuModeStandard, L"mnuModeStandard_Click", Choose<&Options::SetInputMode, InputMode::Standard>},
    {ids::mnuModeHover, L"mnuModeHover_Click", Choose<&Options::SetInputMode, InputMode::Hover>},
    {ids::mnuModeHiddenMouseAndHover, L"mnuModeHiddenMouseAndHover_Click",
     Choose<&Options::SetInputMode, InputMode::HiddenMouseAndHover>},
    {ids::mnuViewToolbar, L"mnuViewToolbar_Click", Toggle<&CommandSnapshot::toolbarShown, &Options::ShowToolbar>},
    {ids::mnuViewProtectiveLayer, L"mnuViewProtectiveLayer_Click", ToggleLayer},
    {ids::mnuViewPasswordMask, L"mnuViewPasswordMask_Click",
     Toggle<&CommandSnapshot::textIsMasked, &Options::SetTextIsMasked>},
    {ids::mnuOptionsBeepOnHover, L"mnuOptionsBeepOnHover_Click",
     Toggle<&CommandSnapshot::beepOnHover, &Options::SetBeepOnHover>},
    {ids::mnuOptionsKeepPasswordAfterDragDrop, L"mnuOptionsKeepPasswordAfterDragDrop_Click",
     Toggle<&CommandSnapshot::keepPassword, &Options::SetKeepPasswordAfterDragDrop>},
    {ids::mnuOptionsDragDrop, L"mnuOptionsDragDrop_Click", Choose<&Options::SetDragDropMode, DragDropMode::DragDrop>},
    {ids::mnuOptionsInjectMode, L"mnuOptionsInjectMode_Click", Choose<&Options::SetDragDropMode, DragDropMode::Inject>},
    {ids::mnuOptionsSaveSettingsInINI, L"mnuOptionsSaveSettingsInINI_Click",
     Toggle<&CommandSnapshot::saveSettings, &Options::SetSaveSettingsInINI>},
    {ids::mnuKeyboardLayoutDefault, L"mnuKeyboardLayoutDefault_Click", ChooseLayout<LayoutId::Default>},
    {ids::mnuKeyboardLayoutEnglish, L"mnuKeyboardLayoutEnglish_Click", ChooseLayout<LayoutId::English>},
    {ids::mnuKeyboardLayoutLastSaved, L"mnuKeyboardLayoutLastSaved_Click", ChooseLayout<LayoutId::LastSaved>},
    {ids::mnuKeyboardLayoutImport, L"mnuKeyboardLayoutImport_Click", ChooseLayout<LayoutId::Import>},
    {ids::mnuKeyboardCreateNewLayoutFile, L"mnuKeyboardCreateNewLayoutFile_Click",
     [](const Parts& parts) { parts.layouts.CreateNewLayoutFile(); }},
    {ids::mnuHelpVisitHomepage, L"mnuHelpVisitHomepage_Click", Open<WebPage::Homepage>},
    {ids::mnuHelpDonate, L"mnuHelpDonate_Click", Open<WebPage::Donate>},
    {ids::mnuHelpAbout, L"mnuHelpAbout_Click", ShowAbout},
    {ids::toolInject, nullptr, ToggleInjection},
    {ids::toolRefresh, nullptr, [](const Parts& parts) { parts.placement.RandomiseFormSizeAndPlacement(); }},
    {ids::toolClear, nullptr, Clear},
};

} // namespace

void RunCommand(int id, const CommandParts& parts) noexcept {
    const HWND form = parts.form.Handle();
    const std::span<const HoverDelayItem> delays = HoverDelayMenu();
    if (const auto delay = std::ranges::find(delays, id, &HoverDelayItem::id); delay != delays.end()) {
        // A delay switches to hover entry as well.
        GuardEvent(form, L"tbToolbar_ButtonMenuClick", [&] {
            parts.options.SetInputMode(InputMode::Hover);
            parts.options.SetTimerInterval(delay->delayMs);
        });
        return;
    }
    const Command* const command = CommandOf(id);
    const auto* const handler = std::ranges::find(handlers, command != nullptr ? command->Id() : 0, &Handler::command);
    const bool isTool = IsToolButton(id);
    if (handler == std::end(handlers) && !isTool) {
        return;
    }
    GuardEvent(form, isTool ? L"tbToolbar_ButtonClick" : handler->name, [&] {
        if (handler != std::end(handlers) && StateOfCommand(id, parts.options.Snapshot()).enabled) {
            handler->run(parts);
        }
        // The buttons that are there to be seen have nothing but this.
        if (isTool) {
            parts.options.RefreshToolbar();
        }
    });
}

} // namespace vextrel
