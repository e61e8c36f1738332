#include "win32/ScreenCapture.h"

namespace vextrel {

namespace {

/// What is in force. Not an object that is handed on: a hook's procedure gets no context, and every window of the
/// program asks, dialogs of the system included.
struct {
    bool inForce = false;
    bool watchesSystemWindows = false;
    int scopes = 0; ///< that stand now; one watch serves all of them
    UniqueHook watch;
} exclusion;

/// Sees the messages to the windows of this thread, whoever made them. Before a window is shown, its place changes,
/// however it is shown; tool tips and menus get no other notice.
LRESULT CALLBACK BeforeMessage(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION) {
        const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        const bool appears = (message.message == WM_SHOWWINDOW && message.wParam != FALSE) ||
                             (message.message == WM_WINDOWPOSCHANGING &&
                              (reinterpret_cast<const WINDOWPOS*>(message.lParam)->flags & SWP_SHOWWINDOW) != 0);
        if (appears && ::GetAncestor(message.hwnd, GA_PARENT) == ::GetDesktopWindow()) {
            ExcludeFromCapture(message.hwnd);
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

CaptureState CaptureStateOf(HWND window) noexcept {
    DWORD affinity = WDA_NONE;
    if (::GetWindowDisplayAffinity(window, &affinity) == FALSE || affinity == WDA_NONE) {
        return CaptureState::Shown;
    }
    return affinity == WDA_MONITOR ? CaptureState::Black : CaptureState::Excluded;
}

void ExcludeFromCapture(HWND window) noexcept {
    if (!exclusion.inForce || CaptureStateOf(window) != CaptureState::Shown) {
        return;
    }
    // A system that does not know the first value takes it for the second or refuses it.
    if (::SetWindowDisplayAffinity(window, WDA_EXCLUDEFROMCAPTURE) == FALSE ||
        CaptureStateOf(window) == CaptureState::Shown) {
        ::SetWindowDisplayAffinity(window, WDA_MONITOR);
    }
}

CaptureExclusion::CaptureExclusion(bool systemWindowsToo) noexcept {
    exclusion.inForce = true;
    exclusion.watchesSystemWindows = systemWindowsToo;
}

CaptureExclusion::~CaptureExclusion() {
    exclusion.inForce = false;
    exclusion.watchesSystemWindows = false;
}

SystemWindowsScope::SystemWindowsScope() noexcept {
    if (exclusion.scopes++ == 0 && exclusion.watchesSystemWindows) {
        exclusion.watch.Reset(::SetWindowsHookExW(WH_CALLWNDPROC, &BeforeMessage, nullptr, ::GetCurrentThreadId()));
    }
}

SystemWindowsScope::~SystemWindowsScope() {
    if (--exclusion.scopes == 0) {
        exclusion.watch.Reset();
    }
}

} // namespace vextrel
