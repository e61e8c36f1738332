#include "win32/TopLevelWindow.h"

#include "win32/SystemLibrary.h"

#include <wtsapi32.h>

namespace vextrel {

namespace {

void ChangeExStyle(HWND window, LONG_PTR bit, bool on) noexcept {
    const LONG_PTR style = ::GetWindowLongPtrW(window, GWL_EXSTYLE);
    ::SetWindowLongPtrW(window, GWL_EXSTYLE, on ? style | bit : style & ~bit);
}

constexpr UINT inPlace = SWP_NOSIZE | SWP_NOMOVE;
constexpr UINT alone = inPlace | SWP_NOACTIVATE | SWP_NOOWNERZORDER;

} // namespace

bool IsOurs(HWND window) noexcept {
    DWORD process = 0;
    return ::GetWindowThreadProcessId(window, &process) != 0 && process == ::GetCurrentProcessId();
}

MONITORINFO MonitorOf(const RECT& area) noexcept {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor;
}

void ShowAsItIs(HWND window) noexcept {
    ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, inPlace | SWP_SHOWWINDOW);
}

void SetLayeredTransparency(HWND window, std::optional<std::uint8_t> alpha) noexcept {
    if (alpha) {
        ChangeExStyle(window, WS_EX_LAYERED, true);
        // The colour key is passed but has no effect without LWA_COLORKEY.
        ::SetLayeredWindowAttributes(window, RGB(255, 255, 0), *alpha, LWA_ALPHA);
    }
}

void SetClickThrough(HWND window, bool clickThrough) noexcept {
    ChangeExStyle(window, WS_EX_TRANSPARENT, clickThrough);
}

void SetTopmost(HWND window, bool topmost) noexcept {
    ::SetWindowPos(window, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, inPlace);
}

bool IsTopmost(HWND window) noexcept {
    return (::GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

bool IsAbove(HWND upper, HWND lower) noexcept {
    do {
        lower = ::GetWindow(lower, GW_HWNDPREV);
    } while (lower != nullptr && lower != upper);
    return lower != nullptr;
}

void SetTopmostAlone(HWND window, bool topmost) noexcept {
    ::SetWindowPos(window, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, alone);
}

void RaiseAlone(HWND window, bool topmost) noexcept {
    // HWND_NOTOPMOST leaves a window where it is that is in no topmost band already.
    ::SetWindowPos(window, topmost ? HWND_TOPMOST : HWND_TOP, 0, 0, 0, 0, alone);
}

void WatchSession(HWND window, bool watch) noexcept {
    // Not a static import: wtsapi32.dll is none of those that the system always takes from its own folder.
    static const SystemLibrary library(L"wtsapi32.dll");
    const auto begin = library.Find<decltype(&::WTSRegisterSessionNotification)>("WTSRegisterSessionNotification");
    const auto end = library.Find<decltype(&::WTSUnRegisterSessionNotification)>("WTSUnRegisterSessionNotification");
    if (begin != nullptr && end != nullptr) {
        watch ? begin(window, NOTIFY_FOR_THIS_SESSION) : end(window);
    }
}

} // namespace vextrel
