#include "ui/Operations.h"

namespace vextrel {

namespace {

/// A layer that takes no input lets the mouse through: a modal window may come to lie beneath it where the system does
/// not make what a topmost window owns topmost, too.
void LetInputThrough(HWND layer, bool through) noexcept {
    ::EnableWindow(layer, through ? FALSE : TRUE);
    const LONG_PTR style = ::GetWindowLongPtrW(layer, GWL_EXSTYLE);
    ::SetWindowLongPtrW(layer, GWL_EXSTYLE, through ? style | WS_EX_TRANSPARENT : style & ~WS_EX_TRANSPARENT);
}

} // namespace

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

HWND Operations::DialogOwner(HWND concerned) const noexcept {
    const HWND root = ::GetAncestor(concerned, GA_ROOT);
    return root == layer_ && layer_ != nullptr ? mainWindow_ : root;
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
        LetInputThrough(layer_, true);
    }
}

void Operations::EnableLayer() noexcept {
    if (--layerDisabled_ == 0 && layer_ != nullptr) {
        LetInputThrough(layer_, false);
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
