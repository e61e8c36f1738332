#include "win32/SubclassedWindow.h"

#include "win32/Text.h"

#include <unordered_map>
#include <utility>

namespace vextrel {

namespace {

/// By window: a window procedure gets no other context.
std::unordered_map<HWND, SubclassedWindow*>& Subclassed() noexcept {
    static std::unordered_map<HWND, SubclassedWindow*> windows;
    return windows;
}

} // namespace

void SubclassedWindow::Attach(HWND window) {
    const auto entry = Subclassed().emplace(window, this).first;
    const LONG_PTR previous =
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SubclassedWindow::Procedure));
    if (previous == 0) {
        Subclassed().erase(entry);
        ThrowLastError();
    }
    handle_ = window;
    previous_ = reinterpret_cast<WNDPROC>(previous);
}

void SubclassedWindow::Detach() noexcept {
    if (handle_ != nullptr) {
        ::SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous_));
        Subclassed().erase(std::exchange(handle_, nullptr));
    }
}

LRESULT SubclassedWindow::ToWindow(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    return ::CallWindowProcW(previous_, handle_, message, wParam, lParam);
}

LRESULT CALLBACK SubclassedWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto entry = Subclassed().find(window);
    if (entry == Subclassed().end()) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    SubclassedWindow& self = *entry->second;
    if (message == WM_NCDESTROY) {
        const WNDPROC previous = self.previous_;
        self.Detach();
        return ::CallWindowProcW(previous, window, message, wParam, lParam);
    }
    return self.OnWindowMessage(message, wParam, lParam);
}

} // namespace vextrel
