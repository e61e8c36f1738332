#include "app/Keyboard.h"

#include "app/CommandHandlers.h"
#include "core/KeyPress.h"
#include "core/PhysicalInput.h"
#include "core/SlotTable.h"
#include "core/Wipe.h"
#include "ui/AboutDialog.h"
#include "ui/LayerQuestion.h"
#include "win32/Clipboard.h"
#include "win32/EventGuard.h"
#include "win32/HoverBeep.h"
#include "win32/Messages.h"
#include "win32/ScreenCapture.h"
#include "win32/WindowStyle.h"

#include <utility>

namespace vextrel {

namespace {

/// How often a double-clicked key is repainted while messages run.
constexpr int flashRounds = 1000;

bool IsDownNow(int virtualKey) noexcept {
    return ::GetAsyncKeyState(virtualKey) < 0;
}
const wchar_t* CaptureLine(CaptureState state) noexcept {
    switch (state) {
    case CaptureState::Excluded: return L"Windows hidden from screen capture";
    case CaptureState::Black: return L"Windows black in screen captures";
    case CaptureState::Shown: break;
    }
    return L"Windows visible to screen capture";
}
bool IsToggled(int virtualKey) noexcept {
    return (::GetKeyState(virtualKey) & 1) != 0;
}

} // namespace

Keyboard::~Keyboard() {
    LeaveWindows();
}

void Keyboard::LeaveWindows() noexcept {
    operations_.SetWindows(nullptr, nullptr);
    formCover_.SetController(nullptr, nullptr);
    form_.SetController(nullptr);
    formCover_.Unload();
}

void Keyboard::ClearText() {
    if (!operations_.IsTransferring()) {
        password_.ClearText();
        TextDataObject::DiscardAll();
    }
}

void Keyboard::ToggleMask() {
    if (!operations_.IsTransferring()) {
        options_.SetTextIsMasked(!password_.TextIsMasked());
    }
}

void Keyboard::ButtonClick(int button) {
    // Under its own name, whoever calls: a key, the layer or hover entry.
    GuardEvent(form_.Handle(), L"ButtonClick ", [&] { EnterKey(button); });
}

void Keyboard::EnterKey(int button) {
    if (operations_.IsTransferring()) {
        return;
    }
    form_.ShowNotice({});
    const ModifierState& before = captions_.Modifiers();
    const KeyPressOutcome outcome = PressKey(
        button, form_.Key(button).Caption(), password_.ReadBox(),
        {.shiftIsDown = before.shiftIsDown, .capsLockIsDown = before.capsLockIsDown, .shiftLatched = shiftLatched_});
    if (outcome.edit) {
        password_.Apply(*outcome.edit);
    }
    shiftLatched_ = outcome.modifiers.shiftLatched;
    captions_.SetCapsLockIsDown(outcome.modifiers.capsLockIsDown);
    captions_.SetShiftIsDown(outcome.modifiers.shiftIsDown);
    if (outcome.refreshCaptions) {
        captions_.Refresh();
    }
    if (outcome.showLeftover) {
        ShowMessageBox(operations_, L"asdf", L"Vextrel", MB_OK);
    }
}

void Keyboard::ButtonMouseMove(int button) {
    if (operations_.IsResting()) {
        return;
    }
    protection_.PointerOverKeys(true);
    hover_.MoveOverKey(button);
}

void Keyboard::MouseMoveInTextBox() {
    if (hover_.TimerEnabled()) {
        protection_.PointerOverKeys(false);
    }
}

void Keyboard::MouseMoveInForm() {
    hover_.LeaveKeys();
    MouseMoveInTextBox();
}

void Keyboard::Timer() {
    if (operations_.IsResting() || menuOpen_) {
        return;
    }
    if (const std::optional<int> key = hover_.Tick()) {
        ButtonClick(*key);
        if (hover_.BeepOnHover()) {
            PlayHoverBeep(program_.folder);
        }
    }
    hover_.Ticked();
}

void Keyboard::EnterCharacter(wchar_t code) {
    if (code == backspaceCode) {
        password_.Apply(EraseBackwards(password_.ReadBox()));
        return;
    }
    if (scrambledInput_) {
        password_.Enter(ScrambledInput(code, [this](int button) { return form_.Key(button).Caption(); }));
    } else {
        password_.Enter({&code, 1});
    }
}

bool Keyboard::KeyPress(wchar_t code) {
    if (operations_.IsTransferring()) {
        return false;
    }
    if (IsForwardedCharacter(code)) {
        EnterCharacter(code);
        return false;
    }
    if (IsMasked()) {
        // The masked box takes nothing by itself: it must hold exactly one asterisk per character.
        if (!IsControlCharacter(code)) {
            password_.Enter({&code, 1});
        }
        return false;
    }
    return true;
}

void Keyboard::FollowPhysicalModifiers() {
    captions_.SetShiftIsDown(FoldedShift({.capsLockToggled = IsToggled(VK_CAPITAL),
                                          .shiftPressed = IsDownNow(VK_SHIFT),
                                          .rightShiftPressed = IsDownNow(VK_RSHIFT),
                                          .leftShiftPressed = IsDownNow(VK_LSHIFT)}));
}

bool Keyboard::PlainBoxWillChange() {
    if (operations_.IsTransferring()) {
        return false;
    }
    password_.PlainBoxWillChange();
    return true;
}

bool Keyboard::KeyDown(UINT virtualKey) {
    FollowPhysicalModifiers();
    if (operations_.IsTransferring()) {
        return false;
    }
    if (virtualKey == VK_DELETE && IsMasked()) {
        password_.Apply(EraseForwards(password_.ReadBox()));
        return false;
    }
    return true;
}

void Keyboard::KeyUp(UINT) {
    FollowPhysicalModifiers();
}

void Keyboard::PasteIntoMaskedBox() {
    if (operations_.IsTransferring()) {
        return;
    }
    SecretText pasted;
    ReadClipboardText(form_.Handle(), pasted);
    DropControlCharacters(pasted);
    password_.Enter(pasted.View());
}

void Keyboard::DragPassword() {
    hover_.LeaveKeys();
    transfer_.Drag();
    options_.RefreshToolbar();
    form_.ShowNotice(transfer_.Notice());
}

void Keyboard::Command(int id) {
    form_.ShowNotice({});
    RunCommand(id, *this);
}

void Keyboard::HoverSliderMoved(int positionMs) {
    // The slider may stand for an interval beside its steps; telling it again what it shows changes nothing.
    const int snapped = HoverSliderPosition(positionMs);
    if (snapped != HoverSliderPosition(hover_.TimerInterval())) {
        options_.SetTimerInterval(snapped);
    } else {
        form_.SetHoverSlider(snapped);
    }
}

void Keyboard::TransparencySliderMoved(int percent) {
    // The slider may stand for a value between its positions; telling it again what it shows changes nothing.
    if (percent != TransparencySliderPercent(options_.KeyboardTransparency())) {
        options_.SetKeyboardTransparency(TransparencyOfPercent(percent));
    }
}

void Keyboard::FormActivated() {
    protection_.KeepLayerAbove();
    form_.FocusVisibleBox();
    options_.RefreshToolbar();
}

void Keyboard::FormResized() {
    form_.LayOut();
    protection_.FormMove();
}

void Keyboard::Rearrange() {
    if (operations_.IsTransferring()) {
        return;
    }
    protection_.RandomiseFormSizeAndPlacement();
    protection_.ResetFormCover();
}

std::vector<std::wstring> Keyboard::ProtectionsInForce() const {
    std::vector<std::wstring> lines;
    lines.emplace_back(printScreenBlocked_ ? L"Print Screen is blocked" : L"Print Screen is not blocked");
    lines.emplace_back(protection_.LayerTakesClicks() ? L"Protective layer over the keys"
                                                      : L"Protective layer invisible: clicks reach the keys");
    lines.emplace_back(options_.Snapshot().textIsMasked ? L"Password masked" : L"Password shown in clear");
    lines.emplace_back(protection_.MouseHidden() ? L"Pointer shown as a grey dot" : L"Pointer shown as usual");
    lines.emplace_back(CaptureLine(CaptureStateOf(form_.Handle())));
    const std::vector<std::wstring> process = HardeningLines(hardening_);
    lines.insert(lines.end(), process.begin(), process.end());
    return lines;
}

void Keyboard::ShowAbout() {
    AboutDialog(ProtectionsInForce()).RunModal(operations_, form_.Handle());
}

void Keyboard::FormMoved() {
    protection_.FormMove();
}

void Keyboard::DisplayChanged() {
    protection_.ReturnToVisiblePlace();
}

bool Keyboard::MayUnload() {
    return operations_.RequestClose();
}

void Keyboard::WipePassword() noexcept {
    password_.Wipe();
    // A target may hold what it was given for as long as it likes; the program's end is too late for it.
    TextDataObject::DiscardAll();
}

void Keyboard::FormUnloading() {
    WipePassword();
    if (closeProgram_) {
        closeProgram_();
    }
}

void Keyboard::MenuLoop(bool entered) {
    menuOpen_ = entered;
}

void Keyboard::BringToFront() {
    if (::GetForegroundWindow() != form_.Handle()) {
        ::SetForegroundWindow(form_.Handle());
    }
}

void Keyboard::CheckForeground() {
    protection_.CheckForeground(options_.LayerMarked());
}

void Keyboard::CheckActiveWindow() {
    const HWND front = ::GetForegroundWindow();
    // Nobody has it for a moment while it changes hands: no change of its own.
    if (front == nullptr || front == lastForeground_ || operations_.IsResting() || menuOpen_) {
        return;
    }
    lastForeground_ = front;
    DWORD process = 0;
    ::GetWindowThreadProcessId(front, &process);
    if (options_.KeepOnTop() && process != ::GetCurrentProcessId()) {
        protection_.KeepTogether(true);
    }
}

void Keyboard::FlashKey(int button) {
    if (const int older = std::exchange(flashedKey_, button); older != 0) {
        // In the middle of another flash: its loop goes on with this key, so that fast clicking nests nothing.
        ::SendMessageW(form_.Key(older).Handle(), BM_SETSTATE, FALSE, 0);
        ::SendMessageW(form_.Key(button).Handle(), BM_SETSTATE, TRUE, 0);
        flashRoundsLeft_ = flashRounds;
        return;
    }
    const Operations::Scope flash(operations_, Operations::Kind::Flash);
    ::SendMessageW(form_.Key(button).Handle(), BM_SETSTATE, TRUE, 0);
    for (flashRoundsLeft_ = flashRounds; flashRoundsLeft_ > 0 && !operations_.IsClosePending(); --flashRoundsLeft_) {
        if (!PumpPendingMessages()) {
            break;
        }
        ::RedrawWindow(form_.Key(flashedKey_).Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
    ::SendMessageW(form_.Key(std::exchange(flashedKey_, 0)).Handle(), BM_SETSTATE, FALSE, 0);
}

void Keyboard::ToggleProtectiveLayer() {
    const LayerCommandOutcome outcome =
        RunLayerCommand(layerCommand_, protection_.CoverTransparency(), program_.DefaultCoverTransparency);
    layerCommand_ = outcome.state;
    protection_.SetCoverTransparency(outcome.coverTransparency);
    options_.SetLayerMarked(outcome.marked);
    if (!outcome.ask) {
        return;
    }
    layerCommand_ = TakeLayerAnswer(layerCommand_, AskForLayerOpacity(operations_, form_.Handle()));
    if (const std::optional<std::int16_t> opacity = LayerOpacity(layerCommand_)) {
        protection_.SetCoverTransparency(*opacity);
    }
}

} // namespace vextrel
