#include "win32/MoveHook.h"

#include "ui/MainWindow.h"
#include "win32/EventGuard.h"
#include "win32/ProgramState.h"

#include <utility>

namespace vextrel::MoveHook {

namespace {

/// The procedure that was in place before. One variable for both windows: they are of one class, so what the layer's
/// installation overwrites it with is the same procedure.
WNDPROC PreviousWindowProc = nullptr;

/// The window whose moves and sizes count; null before the application object exists.
HWND actingWindow = nullptr;

/// Laying out the window sizes and moves windows itself; that is not to be acted upon again.
bool acting = false;

void Act(HWND window, UINT message, WPARAM wParam) noexcept {
    auto* form = static_cast<MainWindow*>(reinterpret_cast<Form*>(::GetWindowLongPtrW(window, GWLP_USERDATA)));
    if (form == nullptr || std::exchange(acting, true)) {
        return;
    }
    if (message == WM_SIZE && wParam == SIZE_RESTORED) {
        GuardEvent(window, L"Resize", [&] { form->Controller().FormResized(); });
    } else if (message == WM_MOVE) {
        GuardEvent(window, L"FormMove", [&] { form->Controller().FormMoved(); });
    }
    acting = false;
}

LRESULT CALLBACK HookProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const LRESULT result = ::CallWindowProcW(PreviousWindowProc, window, message, wParam, lParam);
    if (window == actingWindow && (message == WM_SIZE || message == WM_MOVE)) {
        Act(window, message, wParam);
    }
    return result;
}

bool IsHooked(HWND window) noexcept {
    return ::GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&HookProcedure);
}

} // namespace

void InstallHook(HWND window) noexcept {
    if (!HooksDisabled && !IsHooked(window)) {
        PreviousWindowProc = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HookProcedure)));
    }
}

void RemoveHook(HWND window) noexcept {
    if (!HooksDisabled && IsHooked(window)) {
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(PreviousWindowProc));
    }
}

void SetActingWindow(HWND mainWindow) noexcept {
    actingWindow = mainWindow;
}

} // namespace vextrel::MoveHook
