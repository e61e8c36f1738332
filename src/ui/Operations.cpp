#include "ui/Operations.h"

#include "win32/Form.h"

namespace vextrel {

Operations::Scope::Scope(Operations& operations, Kind kind) noexcept
    : operations_(operations)
    , kind_(kind) {
    ++operations_.depth_;
    operations_.flashes_ += kind_ == Kind::Flash ? 1 : 0;
    if (kind_ == Kind::Modal || kind_ == Kind::Menu) {
        systemWindows_.emplace();
    }
    // To disable an owner does not disable what it owns.
    if (kind_ == Kind::Modal && operations_.modals_++ == 0) {
        ::EnableWindow(operations_.layer_, FALSE);
    }
    if (kind_ == Kind::Transfer && operations_.transfers_++ == 0 && operations_.onTransfer_) {
        operations_.onTransfer_();
    }
}

Operations::Scope::~Scope() {
    if (kind_ == Kind::Modal && --operations_.modals_ == 0) {
        ::EnableWindow(operations_.layer_, TRUE);
    }
    operations_.flashes_ -= kind_ == Kind::Flash ? 1 : 0;
    if (--operations_.depth_ == 0 && operations_.closePending_) {
        operations_.closePending_ = false;
        ::PostMessageW(operations_.mainWindow_, WM_CLOSE, 0, 0);
    }
    if (kind_ == Kind::Transfer && --operations_.transfers_ == 0 && operations_.onTransfer_) {
        operations_.onTransfer_();
    }
}

bool Operations::RequestClose() noexcept {
    if (depth_ == 0) {
        return true;
    }
    closePending_ = true;
    ::EndMenu();
    if (modals_ == 0) {
        return false;
    }
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM self) -> BOOL {
            const auto& operations = *reinterpret_cast<const Operations*>(self);
            if (window == operations.mainWindow_ || window == operations.layer_ || !::IsWindowVisible(window) ||
                !::IsWindowEnabled(window)) {
                return TRUE;
            }
            if (Form::Find(window) != nullptr) {
                ::PostMessageW(window, WM_CLOSE, 0, 0);
                return TRUE;
            }
            // A question with Yes and No alone has no Cancel; its No is as harmless.
            const bool asksYesOrNo = ::GetDlgItem(window, IDNO) != nullptr && ::GetDlgItem(window, IDCANCEL) == nullptr;
            ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(asksYesOrNo ? IDNO : IDCANCEL), 0);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(this));
    return false;
}

int ShowMessageBox(Operations& operations, const wchar_t* text, const wchar_t* title, UINT style, HWND owner) {
    const Operations::Scope modal(operations, Operations::Kind::Modal);
    return ::MessageBoxW(owner != nullptr ? owner : operations.MainWindow(), text, title, style);
}

} // namespace vextrel
