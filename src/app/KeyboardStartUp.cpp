// How the controller comes to life, in the order that the rest of the program relies on: the windows, the first
// settings while nothing is visible, the random place, the shown window, the remaining settings through their setters.
#include "app/Keyboard.h"

#include "core/CaptureRules.h"
#include "win32/MoveHook.h"
#include "win32/WindowStyle.h"

namespace vextrel {

namespace {

/// The layer's opacity where nothing can bring it back from another one.
constexpr std::int16_t coverTransparencyWithoutHooks = 100;

} // namespace

Keyboard::Keyboard(ProgramState& program, SettingsStore& store, Operations& operations)
    : program_(program)
    , store_(store)
    , operations_(operations)
    , hover_(form_, formCover_)
    , captions_(form_, hover_)
    , password_(form_)
    , transfer_(form_, password_, operations)
    , protection_(form_, formCover_, operations, program.DefaultCoverTransparency)
    , options_({.form = form_,
                .store = store,
                .operations = operations,
                .password = password_,
                .transfer = transfer_,
                .hover = hover_,
                .protection = protection_})
    , layouts_({.form = form_,
                .cover = formCover_,
                .captions = captions_,
                .options = options_,
                .store = store,
                .program = program,
                .operations = operations}) {
    try {
        Start();
    } catch (...) {
        LeaveWindows();
        throw;
    }
}

void Keyboard::Start() {
    program_.SettingsFilePath = store_.GetSettingsPath(false);
    LoadWindows();
    protection_.FitHeight(); // the first random place's lower margin counts with that of the widest keyboard
    ApplyEarlySettings();
    password_.SetTextIsMasked(true);
    hover_.SetTimerEnabled(false);
    protection_.RandomiseFormSizeAndPlacement();
    ::ShowWindow(form_.Handle(), SW_SHOW);
    protection_.SetCoverTransparency(HooksDisabled ? coverTransparencyWithoutHooks : program_.DefaultCoverTransparency);
    protection_.ResetFormCover();
    ApplyRemainingSettings();
    ::ShowWindow(form_.Handle(), SW_SHOW);
    if (!protection_.AreTopmost(true)) { // as both windows are created; what takes a moment is left out
        protection_.KeepTogether(true);
    }
    options_.RefreshToolbar();
    protection_.AllowQuestions();
}

void Keyboard::LoadWindows() {
    form_.Load();
    // Translucent before it is shown: to become so afterwards costs painting everything once more.
    SetLayeredTransparency(form_.Handle(), AlphaForKeyboard(options_.KeyboardTransparency()));
    formCover_.Load(form_.Handle());
    operations_.SetWindows(form_.Handle(), formCover_.Handle());
    form_.SetController(this);
    form_.SetHoverSlider(HoverSliderPosition(hover_.TimerInterval()));
    form_.SetTransparencySlider(TransparencySliderPercent(options_.KeyboardTransparency()));
    formCover_.SetController(this, this);
}

void Keyboard::ApplyEarlySettings() {
    options_.SetSaveSettingsInINI(IsOnUnlessFalse(store_.ReadSetting(settings::saveSettings)));
    options_.ShowToolbar(IsOnUnlessFalse(store_.ReadSetting(settings::viewToolbar)));
}

void Keyboard::ApplyRemainingSettings() {
    layouts_.SwitchKeyboardLang(ParseKeyboardLayout(store_.ReadSetting(settings::keyboardLayout)), true);
    layouts_.ReadActionCaptions();
    captions_.Refresh();

    options_.SetInputMode(ParseInputMode(store_.ReadSetting(settings::mouseMode)));
    if (const auto mode = ParseDragDropMode(store_.ReadSetting(settings::dragDropMode))) {
        options_.SetDragDropMode(*mode);
    }
    if (const auto masked = ParseBoolean(store_.ReadSetting(settings::viewPasswordMask))) {
        options_.SetTextIsMasked(*masked);
    }
    if (const auto beep = ParseBoolean(store_.ReadSetting(settings::beepOnHover))) {
        options_.SetBeepOnHover(*beep);
    }
    if (const auto keep = ParseBoolean(store_.ReadSetting(settings::keepPassword))) {
        options_.SetKeepPasswordAfterDragDrop(*keep);
    }
    if (const auto transparency = ParseTransparency(store_.ReadSetting(settings::transparency))) {
        options_.SetKeyboardTransparency(*transparency);
    }
    if (const auto interval = ParseHoverInterval(store_.ReadSetting(settings::hoverTimerInterval))) {
        options_.SetTimerInterval(*interval);
    }
    if (const auto visible = ParseBoolean(store_.ReadSetting(settings::toolbarVisible))) {
        form_.ShowToolbarControl(*visible);
        protection_.ResetFormCover();
    }
}

} // namespace vextrel
