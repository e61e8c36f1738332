#include "ui/KeyButton.h"

#include "core/CaptionText.h"
#include "core/KeyTable.h"
#include "core/SpokenName.h"
#include "core/ids.h"
#include "ui/KeyPainter.h"
#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/EventGuard.h"
#include "win32/Touch.h"

namespace vextrel {

void KeyCapture::Take(KeyButton& key) noexcept {
    // First: the loss of an older capture comes back meanwhile and is that key's.
    ::SetCapture(::GetParent(key.Handle()));
    key_ = &key;
}

bool KeyCapture::IsFor(const KeyButton& key) const noexcept {
    return key_ == &key && ::GetCapture() == ::GetParent(key.Handle());
}

bool KeyCapture::Route(HWND window, std::span<KeyButton> keys, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (key_ == nullptr) {
        return false;
    }
    if (message == WM_CAPTURECHANGED) {
        std::exchange(key_, nullptr)->OnWindowMessage(message, wParam, lParam);
        return true;
    }
    const bool ofPointer = message >= WM_MOUSEFIRST && message <= WM_XBUTTONDBLCLK && message != WM_MOUSEWHEEL;
    if (!ofPointer || !IsFor(*key_)) {
        return false;
    }
    POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const HWND child = ::ChildWindowFromPointEx(window, point, CWP_SKIPINVISIBLE);
    if (const auto under = std::ranges::find(keys, child, &KeyButton::Handle); under != keys.end() && &*under != key_) {
        std::exchange(key_, &*under)->SetPushed(false);
    }
    ::MapWindowPoints(window, key_->Handle(), &point, 1);
    key_->OnWindowMessage(message, wParam, MAKELPARAM(point.x, point.y));
    return true;
}

void KeyButton::Create(HWND parent, int number, KeyEvents& events, FontCache& fonts, KeyCapture& capture) {
    number_ = number;
    events_ = &events;
    fonts_ = &fonts;
    capture_ = &capture;
    Attach(CreateControl(parent, {.windowClass = WC_BUTTONW,
                                  .style = BS_PUSHBUTTON | WS_CLIPSIBLINGS | (IsKeyShown(number) ? WS_VISIBLE : 0U),
                                  .id = ids::firstKey + number - 1}));
    TakeTouchAsMouse(Handle());
}

void KeyButton::SetCaption(const std::wstring& caption) {
    if (caption != caption_) {
        caption_ = caption;
        // Beneath the gate, to where the window keeps its text.
        ::DefWindowProcW(Handle(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(caption.c_str()));
        ::InvalidateRect(Handle(), nullptr, FALSE);
    }
    Name(); // an empty caption from the start on, too
}

void KeyButton::SetLit(bool lit) noexcept {
    Change(lit_, lit);
    Name();
}

void KeyButton::Name() noexcept {
    // Names are constants: the same one stands at the same place.
    if (const wchar_t* name = SpokenName(number_, caption_, lit_); std::exchange(spokenName_, name) != name) {
        SetAccessibleNames({{Handle(), name}});
    }
}

LRESULT KeyButton::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    LRESULT result = 0;
    GuardEvent(::GetParent(Handle()), L"KeyButton", [&] { result = OnMessage(message, wParam, lParam); });
    return result;
}

LRESULT KeyButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (AsLeftButton(message)) {
    case WM_PAINT: {
        const PaintScope paint(Handle());
        Paint(paint.Context());
        return 0;
    }
    case WM_PRINTCLIENT: Paint(reinterpret_cast<HDC>(wParam)); return 0;
    case WM_ERASEBKGND: return 1;
    // Nothing surrounds it. To find that out by itself takes the system longer than to move it.
    case WM_NCCALCSIZE: return 0;
    case WM_ENABLE: ::InvalidateRect(Handle(), nullptr, FALSE); return 0;
    case WM_SETTEXT:
        // From outside, too: what a key enters is what it shows.
        caption_ = lParam != 0 ? reinterpret_cast<const wchar_t*>(lParam) : L"";
        ::InvalidateRect(Handle(), nullptr, FALSE);
        Name();
        return ::DefWindowProcW(Handle(), message, wParam, lParam);
    case BM_SETSTATE: SetPushed(wParam != 0); return 0;
    case BM_GETSTATE: return pushed_ ? BST_PUSHED : 0;
    case BM_CLICK: events_->ButtonClick(number_); return 0;
    // Any mouse button works a key, and a double click is two clicks.
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        capture_->Take(*this);
        SetPushed(true);
        return 0;
    case WM_MOUSEMOVE: OnMouseMove(point); return 0;
    case WM_LBUTTONUP: OnButtonUp(point); return 0;
    case WM_CAPTURECHANGED: SetPushed(false); return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: return 0;
    case WM_TABLET_QUERYSYSTEMGESTURESTATUS: return pressesAtOnce;
    // Neither dialog navigation nor access keys reach a key: its "&" is a character.
    case WM_GETDLGCODE: return DLGC_STATIC | DLGC_WANTCHARS;
    default: return ToWindow(message, wParam, lParam);
    }
}

void KeyButton::OnMouseMove(POINT point) noexcept {
    if (capture_->IsFor(*this)) {
        const RECT area = ClientArea(Handle());
        SetPushed(::PtInRect(&area, point) != FALSE);
    }
    GuardEvent(::GetParent(Handle()), L"Command_MouseMove", [&] { events_->ButtonMouseMove(number_); });
}

void KeyButton::OnButtonUp(POINT point) noexcept {
    if (!capture_->IsFor(*this)) {
        return;
    }
    const RECT area = ClientArea(Handle());
    ::ReleaseCapture(); // the loss of it comes back meanwhile: the key comes up
    GuardEvent(::GetParent(Handle()), L"ButtonMouseUp ", [&] { events_->ButtonMouseUp(number_); });
    if (::PtInRect(&area, point) != FALSE) {
        events_->ButtonClick(number_);
    }
}

void KeyButton::Paint(HDC context) {
    const KeyLook look{
        .caption = EntersBlank(caption_) ? std::wstring_view() : TextShownOnKey(caption_),
        .isCharacterKey = IsCharacterKey(number_),
        .enabled = ::IsWindowEnabled(Handle()) != FALSE,
        .pushed = pushed_,
        .lit = lit_,
        .dpi = dpi_,
        .characterHeightPx = characterHeightPx_,
    };
    PaintKey(context, ClientArea(Handle()), look, *fonts_);
}

} // namespace vextrel
