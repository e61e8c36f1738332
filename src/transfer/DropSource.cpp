#include "transfer/DropSource.h"

#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

/// For the answer of a window of another program; one that takes longer is asked again.
constexpr UINT answerLimitMs = 200;
constexpr DWORD restMs = 20;

/// How often in a row the button is seen up, an answer limit and a rest apart, before it counts as up.
constexpr int timesSeenUp = 2;

HWND WindowUnderPointer() noexcept {
    POINT pointer{};
    ::GetCursorPos(&pointer);
    return ::WindowFromPoint(pointer);
}

bool Answers(HWND window) noexcept {
    DWORD_PTR answer = 0;
    return window == nullptr || IsOurs(window) ||
           ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, answerLimitMs, &answer) != 0;
}

/// Lets our windows paint and the hint follow, but keeps from OLE the messages that would make it ask the window under
/// the pointer. @return false when the drag is to end: Escape was pressed, or the program ends.
bool PumpOwnWindows() noexcept {
    bool goesOn = true;
    MSG message{};
    while (goesOn && ::PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE) != FALSE) {
        goesOn = message.message != WM_QUIT && (message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE);
    }
    if (message.message == WM_QUIT) {
        ::PostQuitMessage(static_cast<int>(message.wParam)); // for the outer loop
        return false;
    }
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM) -> BOOL {
            MSG own{};
            for (const UINT kind : {UINT{WM_PAINT}, UINT{WM_TIMER}}) {
                if (::IsWindowVisible(window) && ::PeekMessageW(&own, window, kind, kind, PM_REMOVE) != FALSE &&
                    own.message == kind) {
                    ::DispatchMessageW(&own);
                }
            }
            return TRUE;
        },
        0);
    return goesOn;
}

} // namespace

HRESULT DropSource::QueryContinueDrag(BOOL escapePressed, DWORD keyState) noexcept {
    // The button itself, not what messages say of it, which anybody can post.
    const bool down = IsPrimaryButtonDown();
    seenDown_ = seenDown_ || down || WasPrimaryButtonDown();
    if (escapePressed != FALSE) {
        return DRAGDROP_S_CANCEL;
    }
    if ((keyState & MK_LBUTTON) != 0) {
        return keepFromHung_ ? RestOverHungWindow() : S_OK;
    }
    if (!seenDown_) {
        return DRAGDROP_S_CANCEL;
    }
    if (down) {
        return S_OK;
    }
    released_ = true;
    DWORD process = 0;
    ::GetWindowThreadProcessId(WindowUnderPointer(), &process);
    data_.Open(process);
    return DRAGDROP_S_DROP;
}

HRESULT DropSource::RestOverHungWindow() noexcept {
    // The button's state may be some 50 ms old (under Wine it is): believed too early that it has gone up, the password
    // would go to whatever the pointer merely crosses.
    for (int seenUp = 0;;) {
        const HWND window = WindowUnderPointer();
        if (window == answering_ || Answers(window)) {
            answering_ = window;
            return S_OK;
        }
        if (!PumpOwnWindows()) {
            return DRAGDROP_S_CANCEL;
        }
        seenUp = IsPrimaryButtonDown() ? 0 : seenUp + 1;
        if (seenUp == timesSeenUp) {
            released_ = true;
            return DRAGDROP_S_CANCEL;
        }
        ::MsgWaitForMultipleObjectsEx(0, nullptr, restMs, QS_ALLINPUT, 0);
    }
}

} // namespace vextrel
