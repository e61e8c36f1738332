#include "win32/SubclassedControl.h"

#include "win32/Text.h"

namespace vextrel {

SubclassedControl::~SubclassedControl() {
    if (handle_ != nullptr) {
        Detach();
    }
}

void SubclassedControl::Attach(HWND control) {
    if (control == nullptr) {
        ThrowLastError();
    }
    handle_ = control;
    ::SetWindowLongPtrW(control, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    control_ = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SubclassedControl::Procedure)));
}

WNDPROC SubclassedControl::Detach() noexcept {
    ::SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(control_));
    ::SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    handle_ = nullptr;
    return control_;
}

LRESULT SubclassedControl::ToControl(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ::CallWindowProcW(control_, handle_, message, wParam, lParam);
}

LRESULT CALLBACK SubclassedControl::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* self = reinterpret_cast<SubclassedControl*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_NCDESTROY) {
        return ::CallWindowProcW(self->Detach(), window, message, wParam, lParam);
    }
    return self->OnControlMessage(message, wParam, lParam);
}

} // namespace vextrel
