#include "ui/KeyCapture.h"

#include <utility>

namespace vextrel {

void KeyCapture::Take(HWND key) noexcept {
    // First: the loss of an older capture comes back meanwhile and is that key's.
    ::SetCapture(::GetParent(key));
    key_ = key;
}

bool KeyCapture::IsFor(HWND key) const noexcept {
    return key_ == key && ::GetCapture() == ::GetParent(key);
}

bool KeyCapture::Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (key_ == nullptr) {
        return false;
    }
    if (message == WM_CAPTURECHANGED) {
        ::SendMessageW(std::exchange(key_, nullptr), message, wParam, lParam);
        return true;
    }
    const bool ofPointer = message >= WM_MOUSEFIRST && message <= WM_XBUTTONDBLCLK && message != WM_MOUSEWHEEL;
    if (!ofPointer || !IsFor(key_)) {
        return false;
    }
    POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ::MapWindowPoints(window, key_, &point, 1);
    ::SendMessageW(key_, message, wParam, MAKELPARAM(point.x, point.y));
    return true;
}

} // namespace vextrel
