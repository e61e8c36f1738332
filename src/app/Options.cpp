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

void Options::Write(const wchar_t* key, std::wstring_view value) {
    if (parts_.form.IsVisible()) {
        parts_.store.WriteSetting(key, value);
    }
}

void Options::RefreshAndWrite(const wchar_t* key, std::wstring_view value) {
    RefreshToolbar();
    Write(key, value);
}

void Options::Switch(bool& option, bool on, const wchar_t* key) {
    option = on;
    RefreshAndWrite(key, BooleanText(on));
}

void Options::SetSaveSettingsInINI(bool save) {
    chosen_.saveSettings = save;
    RefreshToolbar();
    if (!parts_.form.IsVisible() || (!save && ShowMessageBox(parts_.operations, stopSavingQuestion, stopSavingTitle,
                                                             MB_YESNO | MB_ICONQUESTION) != IDYES)) {
        return;
    }
    // The write is gated by the very switch that it turns off.
    chosen_.saveSettings = true;
    Write(settings::saveSettings, BooleanText(save));
    chosen_.saveSettings = save;
}

void Options::ShowToolbar(bool show) {
    parts_.form.ShowToolbarControl(show);
    Switch(chosen_.toolbarShown, show, settings::viewToolbar);
}

void Options::SetInputMode(InputMode mode) {
    if (mode == chosen_.inputMode) {
        return;
    }
    if (mode != InputMode::HiddenMouseAndHover) {
        parts_.pointer.ShowMouse();
    } else if (!parts_.pointer.HideMouse()) {
        RefreshToolbar();
        return;
    }
    parts_.hover.SetTimerEnabled(mode != InputMode::Standard);
    parts_.form.ShowHoverDelay(mode != InputMode::Standard);
    chosen_.inputMode = mode;
    RefreshAndWrite(settings::mouseMode, InputModeText(mode));
}

void Options::SetDragDropMode(DragDropMode mode) {
    chosen_.dragDropMode = mode;
    RefreshAndWrite(settings::dragDropMode, DragDropModeText(mode));
}

void Options::SetTextIsMasked(bool masked) {
    parts_.password.SetTextIsMasked(masked);
    RefreshToolbar();
    if (parts_.form.IsVisible()) {
        parts_.store.WriteSettingSoon(settings::viewPasswordMask, BooleanText(masked));
    }
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
    RefreshAndWrite(settings::hoverTimerInterval, std::to_wstring(intervalMs));
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
    chosen_.keepOnTop = keepOnTop;
    SetTopmost(parts_.form.Handle(), keepOnTop);
    parts_.layer.KeepTogether(keepOnTop);
    RefreshToolbar();
}

void Options::SetLayoutMark(LayoutMark mark, bool noneImported, std::wstring name) {
    chosen_.layout = mark;
    chosen_.noneImported = noneImported;
    layoutName_ = std::move(name);
    RefreshToolbar();
}

CommandSnapshot Options::Snapshot() const {
    CommandSnapshot snapshot = chosen_;
    snapshot.textIsMasked = parts_.password.TextIsMasked();
    snapshot.layerMarked = parts_.layer.IsMarked();
    snapshot.answersOthers = parts_.program.answersOthers;
    snapshot.hardeningOff = parts_.program.hardening.switchedOff;
    snapshot.transferRunning = parts_.operations.IsTransferring();
    return snapshot;
}

void Options::RefreshToolbar() {
    const CommandSnapshot snapshot = Snapshot();
    parts_.form.Refresh(snapshot, StatusBarTexts(snapshot, parts_.hover.TimerInterval(), layoutName_));
}

} // namespace vextrel
