#include "transfer/SystemLayout.h"

#include "win32/Gate.h"
#include "win32/InputState.h"
#include "win32/SubclassedWindow.h"
#include "win32/Text.h"
#include "win32/TopLevelWindow.h"

#include <imm.h>

namespace vextrel {

namespace {

/// A key answers within a millisecond or two; a machine that is busy for longer than this ends the capture, because
/// what comes later would end up in the wrong slot.
constexpr ULONGLONG answerLimitMs = 1000;

/// The real keyboard and an edit control, which is watched for as long as this lives.
class SystemKeyboard final : public CaptureDevice, private SubclassedWindow {
  public:
    explicit SystemKeyboard(HWND setupBox) {
        // What an input method composes is no caption, and it would keep the keys to itself.
        ::ImmAssociateContextEx(setupBox, nullptr, 0);
        Attach(setupBox);
    }

    void GiveFocus() noexcept override {
        // Where taking the focus brings a window to the front, it must not be taken from another program.
        if (const HWND front = ::GetForegroundWindow(); front == nullptr || IsOurs(front)) {
            ::SetFocus(Handle());
        }
    }
    void ProcessMessages() noexcept override { PumpPendingMessages(); }

    CaptureResult Readiness() noexcept override {
        if (!HasFocus()) {
            return CaptureResult::LostFocus;
        }
        return IsDownNow(VK_CONTROL, VK_MENU, VK_LWIN, VK_RWIN) ? CaptureResult::ModifierHeld : CaptureResult::Done;
    }

    void PressDown(std::uint8_t virtualKey) noexcept override { ::keybd_event(virtualKey, 0, 0, 0); }
    void LetGo(std::uint8_t virtualKey) noexcept override {
        awaitedKey_ = virtualKey;
        ::keybd_event(virtualKey, 0, KEYEVENTF_KEYUP, 0);
    }

    CaptureResult AwaitRelease(std::uint8_t virtualKey) noexcept override {
        const ULONGLONG end = ::GetTickCount64() + answerLimitMs;
        for (;;) {
            // The characters of a press are posted, and posted messages come before the key's release.
            const bool programEnds = !PumpPendingMessages();
            if (awaitedKey_ != virtualKey) {
                return CaptureResult::Done;
            }
            if (programEnds || !HasFocus()) {
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

    PhysicalModifiers Held() noexcept override {
        return {.capsLock = IsDownNow(VK_CAPITAL), .shift = IsShiftDownNow()};
    }
    bool IsCapsLockToggled() noexcept override { return WasToggled(VK_CAPITAL); }

    std::wstring TakeText() override {
        std::wstring text = WindowText(Handle());
        ToWindow(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
        return text;
    }

  private:
    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept override {
        // The user's own keys come and go in between.
        if ((message == WM_KEYUP || message == WM_SYSKEYUP) && wParam == awaitedKey_) {
            awaitedKey_ = 0;
        }
        return ToWindow(message, wParam, lParam);
    }

    [[nodiscard]] bool HasFocus() const noexcept {
        return ::GetFocus() == Handle() && ::GetForegroundWindow() == ::GetAncestor(Handle(), GA_ROOT);
    }

    WPARAM awaitedKey_ = 0; ///< the key let go last, until its release has come
};

} // namespace

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
