#include "transfer/SystemLayout.h"

#include "win32/Messages.h"
#include "win32/Text.h"

#include <imm.h>

#include <algorithm>

namespace vextrel {

namespace {

/// A key answers within a millisecond or two; a machine that is busy for longer than this ends the capture, because
/// what comes later would end up in the wrong slot.
constexpr ULONGLONG answerLimitMs = 1000;

bool IsDown(int virtualKey) noexcept {
    return ::GetAsyncKeyState(virtualKey) < 0;
}

/// The real keyboard and an edit control, which is watched for as long as this lives.
class SystemKeyboard final : public CaptureDevice {
  public:
    explicit SystemKeyboard(HWND setupBox)
        : box_(setupBox) {
        // What an input method composes is no caption, and it would keep the keys to itself.
        ::ImmAssociateContextEx(box_, nullptr, 0);
        if (::SetWindowSubclass(box_, &SystemKeyboard::SubclassProc, subclassId, reinterpret_cast<DWORD_PTR>(this)) ==
            FALSE) {
            ThrowLastError();
        }
    }
    ~SystemKeyboard() { ::RemoveWindowSubclass(box_, &SystemKeyboard::SubclassProc, subclassId); }
    SystemKeyboard(const SystemKeyboard&) = delete;
    SystemKeyboard& operator=(const SystemKeyboard&) = delete;

    void GiveFocus() noexcept override {
        // Where taking the focus brings a window to the front, it must not be taken from another program.
        if (const HWND front = ::GetForegroundWindow();
            front == nullptr || ::GetWindowThreadProcessId(front, nullptr) == ::GetCurrentThreadId()) {
            ::SetFocus(box_);
        }
    }
    void ProcessMessages() noexcept override { PumpPendingMessages(); }

    CaptureResult Readiness() noexcept override {
        if (::GetFocus() != box_ || ::GetForegroundWindow() != ::GetAncestor(box_, GA_ROOT)) {
            return CaptureResult::LostFocus;
        }
        for (const int modifier : {VK_CONTROL, VK_MENU, VK_LWIN, VK_RWIN}) {
            if (IsDown(modifier)) {
                return CaptureResult::ModifierHeld;
            }
        }
        return CaptureResult::Done;
    }

    void PressDown(std::uint8_t virtualKey) noexcept override { ::keybd_event(virtualKey, 0, 0, 0); }
    void LetGo(std::uint8_t virtualKey) noexcept override {
        awaitedKey_ = virtualKey;
        released_ = false;
        ::keybd_event(virtualKey, 0, KEYEVENTF_KEYUP, 0);
    }

    CaptureResult AwaitRelease(std::uint8_t virtualKey) noexcept override {
        const ULONGLONG end = ::GetTickCount64() + answerLimitMs;
        for (;;) {
            // The characters of a press are posted, and posted messages come before the key's release.
            const bool programEnds = !PumpPendingMessages();
            if (released_ && awaitedKey_ == virtualKey) {
                return CaptureResult::Done;
            }
            if (programEnds || ::GetFocus() != box_ || ::GetForegroundWindow() != ::GetAncestor(box_, GA_ROOT)) {
                return CaptureResult::LostFocus;
            }
            const ULONGLONG now = ::GetTickCount64();
            if (now >= end) {
                return CaptureResult::NoAnswer;
            }
            ::MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        }
    }

    void ForgetDeadKey() noexcept override {
        // A blank completes a waiting mark; a second one is for those that leave another behind.
        const HKL layout = ::GetKeyboardLayout(0);
        const UINT scan = ::MapVirtualKeyExW(VK_SPACE, MAPVK_VK_TO_VSC, layout);
        const BYTE nothingHeld[256] = {};
        wchar_t text[8] = {};
        for (int attempt = 0; attempt < 2; ++attempt) {
            ::ToUnicodeEx(VK_SPACE, scan, nothingHeld, text, static_cast<int>(std::size(text)), 0, layout);
        }
    }

    HeldModifiers Held() noexcept override {
        return {.capsLock = IsDown(VK_CAPITAL),
                .shift = IsDown(VK_SHIFT),
                .rightShift = IsDown(VK_RSHIFT),
                .leftShift = IsDown(VK_LSHIFT)};
    }
    bool IsCapsLockToggled() noexcept override { return (::GetKeyState(VK_CAPITAL) & 1) != 0; }

    std::wstring TakeText() override {
        std::wstring text = WindowText(box_);
        ::SetWindowTextW(box_, L"");
        return text;
    }

  private:
    static constexpr UINT_PTR subclassId = 1;

    static LRESULT CALLBACK SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                         DWORD_PTR self) noexcept {
        if (message == WM_KEYUP || message == WM_SYSKEYUP) {
            reinterpret_cast<SystemKeyboard*>(self)->Released(wParam);
        }
        return ::DefSubclassProc(window, message, wParam, lParam);
    }

    /// The user's own keys come and go in between.
    void Released(WPARAM virtualKey) noexcept { released_ = released_ || virtualKey == awaitedKey_; }

    HWND box_;
    WPARAM awaitedKey_ = 0; ///< the key let go last
    bool released_ = false; ///< whether its release has come
};

} // namespace

CaptureResult GetCommandButtonCaptions(std::uint8_t virtualKey, HWND setupBox, std::size_t slot,
                                       KeyCaptions& captions) {
    SystemKeyboard keyboard(setupBox);
    return CaptureKey(keyboard, virtualKey, slot, captions);
}

CaptureResult LoadDefaultLayout(HWND setupBox, KeyCaptions& captions) {
    SystemKeyboard keyboard(setupBox);
    const CaptureResult result = CaptureAllKeys(keyboard, captions);
    if (result != CaptureResult::Done) {
        // Keys may still be under way; the box that gets the focus next must not take them.
        PumpPendingMessages();
        DropPendingKeys();
    }
    return result;
}

} // namespace vextrel
