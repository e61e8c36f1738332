#include "app/Keyboard.h"

#include "core/Absence.h"
#include "core/PasswordView.h"
#include "core/TextEdit.h"
#include "win32/EventGuard.h"
#include "win32/Gate.h"
#include "win32/InputState.h"
#include "win32/Text.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

Keyboard::Keyboard(ProgramState& program, SettingsStore& store, Operations& operations)
    : program_(program)
    , store_(store)
    , operations_(operations)
    , hover_(form_, formCover_)
    , password_(form_)
    , pointer_(form_, operations)
    , placement_(form_, program)
    , layer_(form_, formCover_, operations)
    , options_({form_, program, store, operations, password_, hover_, pointer_, layer_})
    , transfer_(form_, password_, operations, options_)
    , layouts_({form_, formCover_, hover_, options_, store, program, operations})
    , commands_{form_, operations, program, options_, password_, transfer_, pointer_, layer_, placement_, layouts_} {
    try {
        Start();
    } catch (...) {
        UnloadWindows();
        throw;
    }
}

// How the controller comes to life, in the order that the rest of the program relies on: the windows, the first
// settings while nothing is visible, the random place, the shown window, the remaining settings through their setters.
void Keyboard::Start() {
    program_.SettingsFilePath = store_.GetSettingsPath(false);
    form_.Load(*this, *this, *this);
    if (!program_.HooksDisabled) {
        form_.InstallMoveHook();
    }
    // Translucent before it is shown: to become so afterwards costs painting everything once more.
    SetLayeredTransparency(form_.Handle(), AlphaForKeyboard(options_.KeyboardTransparency()));
    formCover_.Load(form_.Handle(), *this);
    operations_.SetWindows(form_.Handle(), formCover_.Handle());
    operations_.SetOnTransfer([this] { OnTransfer(); });
    form_.Sliders().SetHoverPosition(HoverSliderPosition(hover_.TimerInterval()));
    form_.Sliders().SetTransparencyPercent(TransparencySliderPercent(options_.KeyboardTransparency()));
    placement_.TakeWidestSize(); // the first random place's lower margin counts with the widest keyboard's height
    options_.ApplyEarlySettings();
    password_.SetTextIsMasked(true);
    hover_.SetTimerEnabled(false);
    placement_.RandomiseFormSizeAndPlacement();
    hover_.SeePointer();
    ShowAsItIs(form_.Handle());
    layer_.SetCoverTransparency(program_.HooksDisabled ? visibleCoverTransparency : defaultCoverTransparency);
    layer_.FormMove();
    form_.ShowNotice(L"Click the keys to begin");
    layouts_.SwitchKeyboardLang(ParseKeyboardLayout(store_.ReadSetting(settings::keyboardLayout)), true);
    layouts_.ReadActionCaptions();
    layouts_.RefreshCaptions();
    options_.ApplyRemainingSettings();
    ShowAsItIs(form_.Handle());
    if (!layer_.AreTopmost(true)) { // as both windows are created; what takes a moment is left out
        layer_.KeepTogether(true);
    }
    options_.RefreshToolbar();
    pointer_.AllowQuestions();
}

void Keyboard::UnloadWindows() noexcept {
    operations_.SetWindows(nullptr, nullptr);
    operations_.SetOnTransfer({});
    formCover_.Unload();
    form_.Unload();
}

void Keyboard::ButtonClick(int button) {
    // Under its own name, whoever calls: a key, the layer or hover entry.
    GuardEvent(form_.Handle(), L"ButtonClick ", [&] {
        if (operations_.IsTransferring()) {
            return;
        }
        const KeyPressOutcome outcome =
            PressKey(button, form_.Key(button).Caption(), password_.ReadBox(), layouts_.Modifiers());
        if (outcome.edit) {
            password_.Apply(*outcome.edit);
        }
        ShowEntry();
        layouts_.SetModifiers(outcome.modifiers);
        if (outcome.showLeftover) {
            ShowMessageBox(operations_, L"asdf", L"Vextrel", MB_OK);
        }
    });
    hover_.Entered(button);
}

void Keyboard::ButtonMouseMove(int button) {
    if (!operations_.IsResting()) {
        pointer_.SetOverKeys(true);
        hover_.MoveOverKey(button);
    }
}

void Keyboard::MouseMoveInTextBox() {
    if (hover_.TimerEnabled()) {
        pointer_.SetOverKeys(false);
    }
}

void Keyboard::MouseMoveInForm() {
    hover_.LeaveKeys();
    MouseMoveInTextBox();
}

void Keyboard::Timer() {
    const std::optional<int> key = hover_.Tick();
    if (key && (operations_.IsResting() || IsAnyMouseButtonDown())) {
        hover_.ClearCurrentButton(); // to be arrived at anew, or entered by the click that has begun
    } else if (key) {
        ButtonClick(*key);
        if (options_.Snapshot().beepOnHover) {
            Hover::Beep(program_.folder);
        }
    }
}

bool Keyboard::KeyPress(wchar_t code) {
    if (operations_.IsTransferring()) {
        return false;
    }
    const bool forwarded = IsForwardedCharacter(code);
    if (!forwarded && !password_.TextIsMasked()) {
        return true;
    }
    if (code == backspaceCode) {
        password_.Apply(EraseBackwards(password_.ReadBox()));
    } else if (forwarded && scrambledInput_) {
        password_.Enter(ScrambledInput(code, [this](int button) { return form_.Key(button).Caption(); }));
    } else if (!IsControlCharacter(code) || forwarded) {
        // The masked box takes nothing by itself: it must hold exactly one asterisk per character.
        password_.Enter({&code, 1});
    }
    ShowEntry();
    return false;
}

void Keyboard::FollowPhysicalModifiers() {
    Modifiers modifiers = layouts_.Modifiers();
    modifiers.shiftIsPhysical = true;
    modifiers.shiftIsDown = FoldedShift({.capsLock = WasToggled(VK_CAPITAL), .shift = IsShiftDownNow()});
    layouts_.SetModifiers(modifiers);
}

bool Keyboard::PlainBoxWillChange() {
    if (operations_.IsTransferring()) {
        return false;
    }
    password_.PlainBoxWillChange();
    return true;
}

void Keyboard::PlainBoxHasChanged() {
    password_.PlainBoxHasChanged();
    ShowEntry();
}

bool Keyboard::KeyDown(unsigned virtualKey) {
    FollowPhysicalModifiers();
    if (operations_.IsTransferring()) {
        return false;
    }
    if (virtualKey == VK_DELETE && password_.TextIsMasked()) {
        password_.Apply(EraseForwards(password_.ReadBox()));
        ShowEntry();
        return false;
    }
    return true;
}

void Keyboard::PasteIntoMaskedBox() {
    if (!operations_.IsTransferring()) {
        LockedText pasted;
        ReadClipboardText(form_.Handle(), pasted);
        DropControlCharacters(pasted);
        password_.Enter(pasted.View());
        ShowEntry();
    }
}

void Keyboard::DragPassword() {
    hover_.LeaveKeys();
    form_.ShowNotice({});
    transfer_.Drag();
    ShowRemark();
}

void Keyboard::Command(int id) {
    hover_.SeePointer();
    form_.ShowNotice({});
    if (StateOfCommand(id, options_.Snapshot()).waits) {
        waitingCommand_ = id;
    } else {
        RunCommand(id, commands_);
    }
    ShowRemark();
}

void Keyboard::OnTransfer() noexcept {
    GuardEvent(form_.Handle(), L"Transfer", [&] { options_.RefreshToolbar(); });
    if (!operations_.IsTransferring()) {
        transferEndMs_ = ::GetTickCount64();
        RunCommand(std::exchange(waitingCommand_, 0), commands_);
        ShowRemark();
        if (const std::wstring reason = std::exchange(waitingReason_, {}); !reason.empty()) {
            GuardEvent(form_.Handle(), L"Transfer", [&] { ClearUnasked(reason); });
        }
    }
}

void Keyboard::ClearUnasked(std::wstring_view reason) {
    if (StateOfCommand(ids::toolClear, options_.Snapshot()).waits) {
        waitingReason_ = reason;
    } else if (password_.CurrentPassword().Size() > 0 || form_.VisibleBox().Length() > 0) {
        Command(ids::toolClear);
        form_.ShowNotice(std::wstring(reason));
    } else {
        transfer_.DiscardHanded();
    }
}

void Keyboard::SessionChanged(WPARAM change) {
    if (const std::wstring_view reason = ClearedBySession(change); !reason.empty()) {
        ClearUnasked(reason);
    }
}

void Keyboard::MenuLoop(bool entered) {
    menu_.reset();
    if (entered) {
        menu_.emplace(operations_, Operations::Kind::Menu);
    }
}

void Keyboard::FormActivated() {
    hover_.SeePointer();
    if (layouts_.Modifiers().shiftIsPhysical) {
        FollowPhysicalModifiers(); // they may have changed meanwhile, elsewhere
    }
    layer_.KeepLayerAbove();
    form_.FocusVisibleBox();
    options_.RefreshToolbar();
}

void Keyboard::WipePassword() noexcept {
    password_.Wipe();
    // A target may hold what it was given for as long as it likes; the program's end is too late for it.
    transfer_.DiscardHanded();
}

void Keyboard::FormUnloading() {
    WipePassword();
    store_.WriteWaiting();
    // The other windows, last to first. Unloading one may take others with it: look anew each time.
    for (std::size_t left = Form::Loaded().size(); left > 0; --left) {
        if (left <= Form::Loaded().size()) {
            Form::Loaded()[left - 1]->Unload();
        }
    }
}

void Keyboard::BringToFront() {
    if (::GetForegroundWindow() != form_.Handle()) {
        ::SetForegroundWindow(form_.Handle());
    }
}

void Keyboard::CheckActiveWindow() {
    if (!operations_.IsTransferring() &&
        IsAbsent(program_.clearAfterMinutes, ::GetTickCount64(), std::max(Gate::LastInputMs(), transferEndMs_))) {
        ClearUnasked(ClearedByAbsence(program_.clearAfterMinutes));
    }
    if (operations_.IsClosePending()) {
        static_cast<void>(operations_.RequestClose());
    }
    const HWND front = ::GetForegroundWindow();
    // Nobody has it for a moment while it changes hands: no change of its own.
    if (front == nullptr || front == lastForeground_ || operations_.IsResting()) {
        return;
    }
    lastForeground_ = front;
    if (options_.Snapshot().keepOnTop && !IsOurs(front)) {
        layer_.KeepTogether(true);
    }
}

void Keyboard::FlashKey(int button) {
    constexpr int rounds = 1000; // of painting the key while messages run
    if (const int older = std::exchange(flashedKey_, button); older != 0) {
        // In the middle of another flash: its loop goes on with this key, so that fast clicking nests nothing.
        PushKey(older, false);
        PushKey(button, true);
        flashRoundsLeft_ = rounds;
        return;
    }
    const Operations::Scope flash(operations_, Operations::Kind::Flash);
    PushKey(button, true);
    for (flashRoundsLeft_ = rounds; flashRoundsLeft_ > 0 && !operations_.IsClosePending(); --flashRoundsLeft_) {
        if (!PumpPendingMessages()) {
            break;
        }
        ::RedrawWindow(form_.Key(flashedKey_).Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
    PushKey(std::exchange(flashedKey_, 0), false);
}

} // namespace vextrel
