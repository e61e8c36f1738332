#include "ui/Operations.h"

namespace vextrel {

Operations::Scope::Scope(Operations& operations, Kind kind) noexcept
    : operations_(operations)
    , kind_(kind) {
    ++operations_.depth_;
    if (kind_ == Kind::Transfer) {
        ++operations_.transfers_;
    }
    if (kind_ == Kind::Modal) {
        ++operations_.modals_;
        systemWindows_.emplace();
        operations_.DisableLayer();
    }
}

Operations::Scope::~Scope() {
    if (kind_ == Kind::Modal) {
        operations_.EnableLayer();
        --operations_.modals_;
    }
    if (kind_ == Kind::Transfer) {
        --operations_.transfers_;
    }
    if (--operations_.depth_ == 0 && operations_.closePending_) {
        operations_.closePending_ = false;
        ::PostMessageW(operations_.mainWindow_, WM_CLOSE, 0, 0);
    }
    if (kind_ == Kind::Transfer && operations_.transfers_ == 0 && operations_.afterTransfer_) {
        operations_.afterTransfer_();
    }
}

void Operations::SetWindows(HWND mainWindow, HWND layer) noexcept {
    mainWindow_ = mainWindow;
    layer_ = layer;
}

bool Operations::RequestClose() noexcept {
    if (depth_ == 0) {
        return true;
    }
    closePending_ = true;
    EndOpenDialogs();
    return false;
}

void Operations::DisableLayer() noexcept {
    if (layerDisabled_++ == 0 && layer_ != nullptr) {
        ::EnableWindow(layer_, FALSE);
    }
}

void Operations::EnableLayer() noexcept {
    if (--layerDisabled_ == 0 && layer_ != nullptr) {
        ::EnableWindow(layer_, TRUE);
    }
}

void Operations::EndOpenDialogs() noexcept {
    if (modals_ == 0) {
        return;
    }
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM self) -> BOOL {
            const auto& operations = *reinterpret_cast<const Operations*>(self);
            if (window == operations.mainWindow_ || window == operations.layer_ || !::IsWindowVisible(window) ||
                !::IsWindowEnabled(window)) {
                return TRUE;
            }
            // A question with Yes and No alone has no Cancel; its No is as harmless.
            const bool asksYesOrNo = ::GetDlgItem(window, IDNO) != nullptr && ::GetDlgItem(window, IDCANCEL) == nullptr;
            ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(asksYesOrNo ? IDNO : IDCANCEL), 0);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(this));
}

int ShowMessageBox(Operations& operations, const wchar_t* text, const wchar_t* title, UINT style) {
    const Operations::Scope modal(operations, Operations::Kind::Modal);
    return ::MessageBoxW(operations.MainWindow(), text, title, style);
}

} // namespace vextrel
