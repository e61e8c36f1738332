#include "app/Options.h"

#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

constexpr const wchar_t* stopSavingTitle = L"Save the change?";
constexpr const wchar_t* stopSavingQuestion =
    L"In order for Vextrel to remember to stop any future updates to the vxrconfig.ini file, it needs to save this "
    L"setting in the vxrconfig.ini file - though just the once.\r\n"
    L"Is it okay for Vextrel to update the local vxrconfig.ini file this last time (to disable the feature)?";

} // namespace

void Options::ApplyEarlySettings() {
    SetSaveSettingsInINI(IsOnUnlessFalse(parts_.store.ReadSetting(settings::saveSettings)));
    ShowToolbar(IsOnUnlessFalse(parts_.store.ReadSetting(settings::viewToolbar)));
}

void Options::ApplyRemainingSettings() {
    // What a settings file without or with an unreadable value leaves as it is.
    const auto apply = [this](const wchar_t* key, auto parse, auto setter) {
        if (const auto value = parse(parts_.store.ReadSetting(key))) {
            (this->*setter)(*value);
        }
    };
    SetInputMode(ParseInputMode(parts_.store.ReadSetting(settings::mouseMode)));
    apply(settings::dragDropMode, ParseDragDropMode, &Options::SetDragDropMode);
    apply(settings::viewPasswordMask, ParseBoolean, &Options::SetTextIsMasked);
    apply(settings::beepOnHover, ParseBoolean, &Options::SetBeepOnHover);
    apply(settings::keepPassword, ParseBoolean, &Options::SetKeepPasswordAfterDragDrop);
    apply(settings::transparency, ParseTransparency, &Options::SetKeyboardTransparency);
    apply(settings::hoverTimerInterval, ParseHoverInterval, &Options::SetTimerInterval);
    apply(settings::toolbarVisible, ParseBoolean, &Options::ShowToolbarControl);
}

void Options::ShowToolbarControl(bool show) {
    parts_.form.ShowToolbarControl(show);
    parts_.layer.ResetFormCover();
}

void Options::Write(const wchar_t* key, std::wstring_view value) {
    if (parts_.form.IsVisible()) {
        parts_.store.WriteSetting(key, value);
    }
}

void Options::SetSaveSettingsInINI(bool save) {
    saveSettings_ = save;
    RefreshToolbar();
    if (!parts_.form.IsVisible() || (!save && ShowMessageBox(parts_.operations, stopSavingQuestion, stopSavingTitle,
                                                             MB_YESNO | MB_ICONQUESTION) != IDYES)) {
        return;
    }
    // The write is gated by the very switch that it turns off.
    saveSettings_ = true;
    Write(settings::saveSettings, BooleanText(save));
    saveSettings_ = save;
}

void Options::ShowToolbar(bool show) {
    toolbarShown_ = show;
    parts_.form.ShowToolbarControl(show);
    RefreshToolbar();
    Write(settings::viewToolbar, BooleanText(show));
}

void Options::SetInputMode(enum InputMode mode) {
    if (mode == inputMode_) {
        return;
    }
    switch (mode) {
    case InputMode::Standard:
        parts_.pointer.ShowMouse();
        parts_.hover.SetTimerEnabled(false);
        break;
    case InputMode::Hover:
        parts_.hover.SetTimerEnabled(true);
        parts_.pointer.ShowMouse();
        break;
    case InputMode::HiddenMouseAndHover:
        if (!parts_.pointer.HideMouse()) {
            RefreshToolbar();
            return;
        }
        parts_.hover.SetTimerEnabled(true);
        break;
    default: return;
    }
    parts_.form.ShowHoverDelayLabel(mode != InputMode::Standard);
    inputMode_ = mode;
    RefreshToolbar();
    Write(settings::mouseMode, InputModeText(mode));
}

void Options::SetDragDropMode(DragDropMode mode) {
    parts_.transfer.SetDragDropMode(mode);
    RefreshToolbar();
    Write(settings::dragDropMode, DragDropModeText(mode));
}

void Options::SetTextIsMasked(bool masked) {
    parts_.password.SetTextIsMasked(masked);
    RefreshToolbar();
    Write(settings::viewPasswordMask, BooleanText(masked));
}

void Options::SetBeepOnHover(bool beep) {
    parts_.hover.SetBeepOnHover(beep);
    RefreshToolbar();
    Write(settings::beepOnHover, BooleanText(beep));
}

void Options::SetKeepPasswordAfterDragDrop(bool keep) {
    parts_.transfer.SetKeepPasswordAfterDragDrop(keep);
    RefreshToolbar();
    Write(settings::keepPassword, BooleanText(keep));
}

void Options::SetKeyboardTransparency(std::int16_t transparency) {
    keyboardTransparency_ = transparency;
    SetLayeredTransparency(parts_.form.Handle(), AlphaForKeyboard(transparency));
    parts_.form.Sliders().SetTransparencyPercent(TransparencySliderPercent(transparency));
    Write(settings::transparency, std::to_wstring(transparency));
}

void Options::SetTimerInterval(std::int32_t intervalMs) {
    parts_.hover.SetTimerInterval(intervalMs);
    parts_.form.Sliders().SetHoverPosition(HoverSliderPosition(intervalMs));
    RefreshToolbar();
    Write(settings::hoverTimerInterval, std::to_wstring(intervalMs));
}

void Options::HoverSliderMoved(int positionMs) {
    const int snapped = HoverSliderPosition(positionMs);
    if (snapped != HoverSliderPosition(parts_.hover.TimerInterval())) {
        SetTimerInterval(snapped);
    } else {
        parts_.form.Sliders().SetHoverPosition(snapped);
    }
}

void Options::TransparencySliderMoved(int percent) {
    if (percent != TransparencySliderPercent(keyboardTransparency_)) {
        SetKeyboardTransparency(TransparencyOfPercent(percent));
    }
}

void Options::SetKeepOnTop(bool keepOnTop) {
    keepOnTop_ = keepOnTop;
    SetTopmost(parts_.form.Handle(), keepOnTop);
    parts_.layer.KeepTogether(keepOnTop);
    RefreshToolbar();
}

void Options::SetLayoutMark(LayoutMark mark) {
    layoutMark_ = mark;
    RefreshToolbar();
}

CommandSnapshot Options::Snapshot() const {
    return {.inputMode = inputMode_,
            .dragDropMode = parts_.transfer.DragDropMode(),
            .textIsMasked = parts_.password.TextIsMasked(),
            .beepOnHover = parts_.hover.BeepOnHover(),
            .keepPassword = parts_.transfer.KeepPasswordAfterDragDrop(),
            .keepOnTop = keepOnTop_,
            .saveSettings = saveSettings_,
            .toolbarShown = toolbarShown_,
            .layerMarked = parts_.layer.IsMarked(),
            .layout = layoutMark_,
            .answersOthers = parts_.program.answersOthers,
            .hardeningOff = parts_.program.hardening.switchedOff,
            .transferRunning = parts_.operations.IsTransferring()};
}

void Options::RefreshToolbar() {
    const CommandSnapshot snapshot = Snapshot();
    parts_.form.Refresh(snapshot, StatusBarTexts(snapshot, parts_.hover.TimerInterval()));
}

} // namespace vextrel
