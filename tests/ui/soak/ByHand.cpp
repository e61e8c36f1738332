// What the random user does with the real pointer and the real keys.

#include "soak/RandomUser.h"

#include <commctrl.h>

#include <algorithm>

namespace vextrel::driver {

namespace {

/// Whether a field of one line shows it, and the code page, in which characters are injected, has it.
bool CanBeShown(const std::wstring& text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return (c >= L' ' && c < 0x7F) || c == 0xE4; });
}

} // namespace

void RandomUser::ClickForReal() {
    MakeReady();
    const int button = PickCharacterKey();
    const std::wstring caption = CaptionOf(button);
    pointer_.Click(Key(button));
    model_.Press(button, caption);
    if (!WaitFor([this] { return Agrees(); }, Milliseconds(3000))) {
        Note("real click once more"); // lost between the display and Wine; if it was merely late, now it is one too
                                      // many
        pointer_.Click(Key(button));
    }
}

void RandomUser::DoubleClickForReal() {
    MakeReady();
    const int button = PickCharacterKey();
    pointer_.DoubleClick(CentreOf(Key(button)));
    model_.Press(button, CaptionOf(button));
    model_.Press(button, CaptionOf(button));
    flashed_ = button;
}

void RandomUser::TypeForReal() {
    MakeReady();
    Await("the box has the focus", [this] { return app_.Focus() == Box(); });
    const auto letter = static_cast<wchar_t>(L'a' + Pick(26));
    Keys::Stroke(static_cast<WORD>(L'A' + (letter - L'a')));
    // The captions tell when all keys have been taken, the release of Shift last. Held, it repeats, as on any keyboard:
    // under Wine a program may take it for up within 50 ms of another key. The letter is not typed meanwhile, since
    // Wine lets go of keys that its display does not know of whenever it looks.
    model_.s.modifiers.shiftIsDown = true;
    Await("the captions follow Shift", [this] {
        Keys::Down(VK_SHIFT);
        return CaptionsAgree();
    });
    Keys::Up(VK_SHIFT);
    model_.s.modifiers.shiftIsDown = false;
    AwaitCaptions("Shift");
    model_.Enter(std::wstring(1, letter));
}

void RandomUser::Park() {
    const RECT own = BoundsOf(app_.Main());
    pointer_.MoveTo({own.left > 20 ? own.left - 10 : own.right + 10, own.top + 10});
}

void RandomUser::Hover() {
    Park(); // a key on which it rested from earlier would be entered first
    const bool hidesPointer = Pick(3) == 0;
    CommandThatMayAsk(hidesPointer ? ids::mnuModeHiddenMouseAndHover : ids::mnuModeHover, IDOK);
    MakeReady();
    int button = PickCharacterKey();
    while (CaptionOf(button) == lastHovered_ || CaptionOf(button).empty()) {
        button = PickCharacterKey();
    }
    const POINT place = CentreOf(Key(button));
    model_.Press(button, CaptionOf(button));
    lastHovered_ = CaptionOf(button); // a key that Shift let go shows another one now
    LONG shift = 0;
    static_cast<void>(WaitFor([&] {
        shift = 1 - shift;
        pointer_.MoveTo({place.x + shift, place.y});
        return Agrees();
    }));
    AwaitModel("hover");
    Park();
    Command(ids::mnuModeStandard);
}

void RandomUser::CaptureLayout() {
    MakeReady();
    Command(ids::mnuKeyboardLayoutLastSaved);
    Post(app_.Main(), WM_COMMAND, ids::mnuKeyboardLayoutDefault);
    layout_ = &english_; // what the test bed's keyboard has
    AwaitCaptions("a capture");
    Await("the capture ends", [this] { return sandbox_.Setting(L"Keyboard Layout") == L"Default"; });
}

void RandomUser::MinimiseAndRestore() {
    Post(app_.Main(), WM_SYSCOMMAND, SC_MINIMIZE);
    Await("the layer hides", [this] { return !IsWindowVisible(layer_); });
    Post(app_.Main(), WM_SYSCOMMAND, SC_RESTORE);
    MakeReady();
}

HWND RandomUser::Hint() const {
    for (const HWND window : app_.Running().Windows(formClass, L"")) {
        if (GetDlgItem(window, ids::dragNoteHeader) != nullptr) {
            return window;
        }
    }
    return nullptr;
}

bool RandomUser::HintFollows(POINT place) const {
    RECT bounds{};
    constexpr LONG reach = 200;
    return GetWindowRect(Hint(), &bounds) != FALSE && std::abs(bounds.left - place.x) < reach &&
           std::abs(bounds.top - place.y) < reach;
}

void RandomUser::Drag(bool takesAway) {
    if (toggled_[ids::toolKeepPassword] == takesAway) {
        Toggle(ids::toolKeepPassword);
    }
    const bool escapes = Pick(5) == 0;
    const session::Model before = model_;
    if (!DragOnce(takesAway, escapes)) {
        // A late event of the X server took the pointer back to the window just as the button went up.
        Note("drag once more");
        AwaitModel("a drag onto the program itself");
        Select(before.s.caret, before.s.selected);
        if (!DragOnce(takesAway, escapes)) {
            throw Failure("the second drag ended over the program itself, too");
        }
    }
    Await("commands are taken again", [this] {
        Command(ids::toolScrambleAll); // has the buttons brought up to date, and does nothing else
        return (app_.ToolState(ids::toolClear) & TBSTATE_ENABLED) != 0;
    });
}

bool RandomUser::DragOnce(bool takesAway, bool escapes) {
    const bool injects = toggled_[ids::toolInject];
    MakeReady();
    // Escape goes up over the box or not; either way Shift then follows the physical keys.
    Ask(Box(), WM_KEYUP, VK_ESCAPE, 1);
    model_.s.modifiers.shiftIsDown = false;
    for (const int id : {target::dropField, target::editField, target::charRecord, target::keyRecord}) {
        Ask(target_.Field(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
    }
    const int drops = target_.Drops();
    Command(ids::toolScrambleAll); // does nothing but take back what the status bar says of an earlier injection
    PullToTarget(injects);
    if (escapes) {
        Keys::Stroke(VK_ESCAPE);
    } else {
        pointer_.Release();
    }
    Await(std::string("the hint goes after ") + (escapes   ? "Escape"
                                                 : injects ? "an injection"
                                                           : "a drop"),
          [this, escapes, polls = 0]() mutable {
              if (Hint() == nullptr) {
                  return true;
              }
              if (++polls % 100 == 0) { // Wine has lost it, as the target was just being asked
                  Note("release once more");
                  escapes ? Keys::Stroke(VK_ESCAPE) : Pointer::SendButton(MOUSEEVENTF_LEFTUP);
              }
              return false;
          });
    if (escapes) {
        pointer_.Release();
        model_.Carry(false);
        return true;
    }
    session::Model handedOver = model_;
    const std::wstring carried = handedOver.Carry(takesAway);
    const bool taken = injects || WaitFor([&] { return target_.Drops() == drops + 1; });
    if (!taken || !Arrives(carried, injects)) {
        model_.Carry(false);
        return false;
    }
    model_ = handedOver;
    return true;
}

void RandomUser::PullToTarget(bool injects) {
    const POINT to = CentreOf(target_.Field(injects ? target::editField : target::dropField));
    const int entries = target_.Entries();
    pointer_.MoveTo(CentreOf(Box()));
    Await("the box lies under the pointer", [this] { return WindowFromPoint(Pointer::Place()) == Box(); });
    pointer_.Press();
    LONG shift = 0;
    Await("a drag begins and reaches the target", [&] {
        shift = 1 - shift;
        pointer_.MoveTo({to.x + shift, to.y}, 2, Milliseconds(20));
        return HintFollows(to) && (injects || target_.Entries() > entries);
    });
}

bool RandomUser::Arrives(const std::wstring& carried, bool injected) {
    const auto came = [&] { return injected ? target_.TypedCharacters() : target_.Text(); };
    // Where the field or the code page cannot have a character, an injection's length alone is compared.
    const bool shown = CanBeShown(carried);
    const auto arrived = [&] { return shown ? came() == carried : !injected || came().size() == carried.size(); };
    const auto refused = [&] { return TextOf(app_.Control(ids::StatusBar1)) == L"Nothing injected here"; };
    // The rounds of an injection's wait take as long as the machine makes them.
    if (!WaitFor([&] { return arrived() || (injected && refused()); }, Milliseconds(60000))) {
        throw Failure("not what was carried: " + Words(came()) + " instead of " + Words(carried));
    }
    return arrived();
}

} // namespace vextrel::driver
