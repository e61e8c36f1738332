#include "ui/KeyButton.h"

#include "keyboard/Captions.h"
#include "ui/KeyPainter.h"
#include "ui/ids.h"
#include "win32/EventGuard.h"
#include "win32/Text.h"

#include <algorithm>

namespace vextrel {

KeyButton::~KeyButton() {
    if (handle_ != nullptr) {
        ::RemoveWindowSubclass(handle_, &KeyButton::SubclassProc, 0);
    }
}

void KeyButton::Create(HWND parent, int number, KeyboardEvents* const& events, FontCache& fonts) {
    number_ = number;
    events_ = &events;
    fonts_ = &fonts;
    const DWORD style = WS_CHILD | BS_PUSHBUTTON | WS_CLIPSIBLINGS | (IsKeyShown(number) ? WS_VISIBLE : 0U);
    const auto id = static_cast<INT_PTR>(ids::firstKey + number - 1);
    handle_ = ::CreateWindowExW(WS_EX_NOPARENTNOTIFY, WC_BUTTONW, L"", style, 0, 0, 0, 0, parent,
                                reinterpret_cast<HMENU>(id), ::GetModuleHandleW(nullptr), nullptr);
    if (handle_ == nullptr ||
        ::SetWindowSubclass(handle_, &KeyButton::SubclassProc, 0, reinterpret_cast<DWORD_PTR>(this)) == FALSE) {
        ThrowLastError();
    }
}

void KeyButton::SetCaption(const std::wstring& caption) {
    if (caption != caption_) {
        caption_ = caption;
        ::SetWindowTextW(handle_, caption.c_str());
        ::InvalidateRect(handle_, nullptr, FALSE);
    }
}

void KeyButton::SetLit(bool lit) noexcept {
    if (lit != lit_) {
        lit_ = lit;
        ::InvalidateRect(handle_, nullptr, FALSE);
    }
}

void KeyButton::SetPushed(bool pushed) noexcept {
    if (pushed != pushed_) {
        pushed_ = pushed;
        ::InvalidateRect(handle_, nullptr, FALSE);
    }
}

LRESULT CALLBACK KeyButton::SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                         DWORD_PTR self) noexcept {
    auto* button = reinterpret_cast<KeyButton*>(self);
    if (message == WM_NCDESTROY) {
        ::RemoveWindowSubclass(window, &KeyButton::SubclassProc, 0);
        button->handle_ = nullptr;
        return ::DefSubclassProc(window, message, wParam, lParam);
    }
    LRESULT result = 0;
    GuardEvent(::GetParent(window), L"KeyButton", [&] { result = button->OnMessage(message, wParam, lParam); });
    return result;
}

LRESULT KeyButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_PAINT: {
        const PaintScope paint(handle_);
        Paint(paint.Context());
        return 0;
    }
    case WM_PRINTCLIENT: Paint(reinterpret_cast<HDC>(wParam)); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_ENABLE: ::InvalidateRect(handle_, nullptr, FALSE); return 0;
    case WM_SETTEXT:
        // From outside, too: what a key enters is what it shows.
        caption_ = lParam != 0 ? reinterpret_cast<const wchar_t*>(lParam) : L"";
        ::InvalidateRect(handle_, nullptr, FALSE);
        return ::DefWindowProcW(handle_, message, wParam, lParam);
    case BM_SETSTATE: SetPushed(wParam != 0); return 0;
    case BM_GETSTATE: return pushed_ ? BST_PUSHED : 0;
    case BM_CLICK: (*events_)->ButtonClick(number_); return 0;
    // Any mouse button works a key, and a double click is two clicks.
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_XBUTTONDOWN:
    case WM_XBUTTONDBLCLK: OnButtonDown(); return 0;
    case WM_MOUSEMOVE: OnMouseMove(point); return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
    case WM_XBUTTONUP: OnButtonUp(point); return 0;
    case WM_CAPTURECHANGED: SetPushed(false); return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: return 0;
    // Neither dialog navigation nor access keys reach a key: its "&" is a character.
    case WM_GETDLGCODE: return DLGC_STATIC | DLGC_WANTCHARS;
    default: return ::DefSubclassProc(handle_, message, wParam, lParam);
    }
}

void KeyButton::OnButtonDown() noexcept {
    ::SetCapture(handle_);
    SetPushed(true);
}

void KeyButton::OnMouseMove(POINT point) noexcept {
    if (::GetCapture() == handle_) {
        RECT area{};
        ::GetClientRect(handle_, &area);
        SetPushed(::PtInRect(&area, point) != FALSE);
    }
    GuardEvent(::GetParent(handle_), L"Command_MouseMove", [&] { (*events_)->ButtonMouseMove(number_); });
}

void KeyButton::OnButtonUp(POINT point) noexcept {
    if (::GetCapture() != handle_) {
        return;
    }
    RECT area{};
    ::GetClientRect(handle_, &area);
    ::ReleaseCapture();
    SetPushed(false);
    GuardEvent(::GetParent(handle_), L"ButtonMouseUp ", [&] { (*events_)->ButtonMouseUp(number_); });
    if (::PtInRect(&area, point) != FALSE) {
        (*events_)->ButtonClick(number_);
    }
}

void KeyButton::Paint(HDC context) {
    RECT area{};
    ::GetClientRect(handle_, &area);
    const KeyLook look{
        .caption = SpokenNameOfKey(number_, caption_) == L"space" ? std::wstring() : TextShownOnKey(caption_),
        .isCharacterKey = IsCharacterKey(number_),
        .enabled = ::IsWindowEnabled(handle_) != FALSE,
        .pushed = pushed_,
        .lit = lit_,
        .dpi = static_cast<int>(::GetDpiForWindow(handle_)),
    };
    PaintKey(context, area, look, *fonts_);
}

} // namespace vextrel
