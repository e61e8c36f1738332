#include "win32/Form.h"

#include "win32/EventGuard.h"
#include "win32/Gate.h"
#include "win32/ScreenCapture.h"
#include "win32/Text.h"
#include "win32/resources.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vextrel {

Form::~Form() {
    // What was derived from it is gone already, OnMessage with it.
    const HWND window = handle_;
    Forget();
    ::DestroyWindow(window);
}

int Form::Dpi() const noexcept {
    if (toldDpi_ != 0) {
        return static_cast<int>(toldDpi_);
    }
    const UINT dpi = handle_ != nullptr ? ::GetDpiForWindow(handle_) : ::GetDpiForSystem();
    return dpi != 0 ? static_cast<int>(dpi) : USER_DEFAULT_SCREEN_DPI;
}

ATOM Form::RegisterFormClass() noexcept {
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = &Form::WindowProc;
    description.hInstance = instance;
    description.hIcon = ::LoadIconW(instance, MAKEINTRESOURCEW(IDI_VEXTREL));
    description.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_3DFACE + 1));
    description.lpszClassName = className;
    return ::RegisterClassExW(&description);
}

void Form::Load(const CreateArgs& args) {
    if (IsLoaded()) {
        return;
    }
    static const ATOM registered = RegisterFormClass();
    if (registered == 0) {
        ThrowLastError();
    }
    unloading_ = false;
    toldDpi_ = 0;
    // Room first: nothing may throw while the window is being created.
    loaded_.reserve(loaded_.size() + 1);
    const HWND window =
        ::CreateWindowExW(args.exStyle, className, args.title, args.style, args.leftPx, args.topPx, args.widthPx,
                          args.heightPx, args.owner, args.menu, ::GetModuleHandleW(nullptr), this);
    if (window == nullptr) {
        ThrowLastError();
    }
    Gate::Admit(window);
    ExcludeFromCapture(window);
}

void Form::RunOnUnload() noexcept {
    if (!std::exchange(unloading_, true)) {
        OnUnload();
    }
}

void Form::Unload() noexcept {
    if (!IsLoaded() || unloading_) {
        return;
    }
    RunOnUnload();
    ::DestroyWindow(handle_);
    Forget();
}

void Form::Forget() noexcept {
    Gate::Forget(std::exchange(handle_, nullptr));
    std::erase(loaded_, this);
}

Form* Form::Find(HWND window) noexcept {
    const auto found = std::ranges::find(loaded_, window, &Form::handle_);
    return found != loaded_.end() ? *found : nullptr;
}

bool Form::PassesGate(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    if (!Gate::LetsThrough(GatedWindow::Form, message, wParam)) {
        return false;
    }
    if (!Gate::IsOpen() && Gate::IsSentFromOutside() && IsTakenLater(message)) {
        // What the others carry is of no use to us, and may be a pointer.
        const bool isOfUse = message == WM_CLOSE || message == WM_SYSCOMMAND || message == WM_WTSSESSION_CHANGE;
        ::PostMessageW(handle_, message, isOfUse ? wParam : 0, isOfUse ? lParam : 0);
        return false;
    }
    Gate::OnMenu(message, wParam);
    return true;
}

LRESULT CALLBACK Form::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE && Find(window) == nullptr) {
        auto* form = static_cast<Form*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        form->handle_ = window;
        loaded_.push_back(form);
    }
    Form* const form = Find(window);
    if (form == nullptr) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    if (message != WM_NCCREATE && !form->PassesGate(message, wParam, lParam)) {
        return 0;
    }
    if (message == WM_DESTROY) {
        // An owner that goes takes what it owns with it; such a form has not been unloaded by anyone yet.
        form->RunOnUnload();
    }
    if (message == WM_NCDESTROY) {
        form->Forget();
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    if (message == WM_DPICHANGED) {
        form->toldDpi_ = LOWORD(wParam);
    }
    std::optional<LRESULT> result;
    // The forms guard their handlers one by one, each under its own name; this one catches what none of them covers.
    GuardEvent(window, className, [&] { result = form->OnMessage(message, wParam, lParam); });
    return result ? *result : ::DefWindowProcW(window, message, wParam, lParam);
}

} // namespace vextrel
