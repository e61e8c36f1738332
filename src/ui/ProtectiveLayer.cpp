#include "ui/ProtectiveLayer.h"

#include "core/Geometry.h"
#include "core/KeyGrid.h"
#include "ui/WindowParts.h"
#include "win32/EventGuard.h"
#include "win32/InputState.h"
#include "win32/TopLevelWindow.h"
#include "win32/Touch.h"

namespace vextrel {

namespace {

constexpr UINT_PTR Timer1 = 1;
constexpr UINT_PTR tmrForegroundCheck = 2;
constexpr UINT foregroundCheckMs = 50;
/// How much too early a tick of the system's may come: its clock counts in steps of 16 ms.
constexpr ULONGLONG earlyMs = 32;

} // namespace

void ProtectiveLayer::Load(HWND mainWindow, LayerEvents& events) {
    events_ = &events;
    Form::Load({.title = L"",
                .style = WS_POPUP,
                // No entry in the taskbar, no place in Alt+Tab, and a click leaves the activation where it is.
                .exStyle = WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST,
                .owner = mainWindow});
    TakeTouchAsMouse(Handle());
    txtSetup_ = CreateSetupBox(Handle(), Dpi());
    ::SetTimer(Handle(), tmrForegroundCheck, foregroundCheckMs, nullptr);
}

void ProtectiveLayer::Place(const RECT& area) noexcept {
    if (const RECT now = OuterArea(Handle()); ::EqualRect(&now, &area) == FALSE) {
        ::SetWindowPos(Handle(), nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                       SWP_NOACTIVATE | SWP_NOZORDER | SWP_NOOWNERZORDER);
    }
}

void ProtectiveLayer::Show(bool show) noexcept {
    if (show != IsVisible()) {
        ::ShowWindow(Handle(), show ? SW_SHOWNA : SW_HIDE);
    }
    if (!show && ::GetCapture() == Handle()) {
        ::ReleaseCapture(); // else the release would still enter a key
    }
}

void ProtectiveLayer::SetAlpha(std::optional<std::uint8_t> alpha) noexcept {
    if (alpha) {
        invisible_ = *alpha == 0;
        SetLayeredTransparency(Handle(), alpha);
        ApplyClickThrough();
    }
}

void ProtectiveLayer::ApplyClickThrough() noexcept {
    // Disabled, too: a modal window may come to lie beneath the layer where the system does not make what a topmost
    // window owns topmost, and has to be clickable there.
    SetClickThrough(Handle(), invisible_ || ::IsWindowEnabled(Handle()) == FALSE);
}

LRESULT ProtectiveLayer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT client{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const auto guarded = [this](const wchar_t* handler, auto&& body) {
        GuardEvent(Handle(), handler, body);
        return LRESULT{0};
    };
    switch (AsLeftButton(message)) {
    case WM_LBUTTONDOWN: return guarded(L"Form_MouseDown", [&] { OnMouseDown(client); });
    case WM_LBUTTONUP: return guarded(L"Form_MouseUp", [&] { OnMouseUp(client); });
    case WM_LBUTTONDBLCLK: return guarded(L"Form_DblClick", [&] { OnDoubleClick(); });
    case WM_MOUSEMOVE: {
        const bool held = (wParam & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON | MK_XBUTTON1 | MK_XBUTTON2)) != 0;
        return guarded(L"Form_MouseMove", [&] { OnMouseMove(client, held); });
    }
    // A dialog that ends on a press, as a file dialog does on a double click, leaves the release to what lies beneath.
    case WM_ENABLE:
        ApplyClickThrough();
        pressedElsewhere_ = wParam != FALSE && IsAnyMouseButtonDown();
        return 0;
    case WM_CAPTURECHANGED: Push(std::nullopt); return 0;
    case WM_MOUSEACTIVATE: guarded(L"Form_MouseActivate", [&] { events_->BringToFront(); }); return MA_NOACTIVATE;
    case WM_SETCURSOR:
        ::SetCursor(events_->ShowsDotPointer() ? DotPointerForDpi(Dpi()) : ::LoadCursorW(nullptr, IDC_ARROW));
        return TRUE;
    case WM_TIMER:
        if (wParam == Timer1) {
            return guarded(L"Timer1_Timer", [&] { OnHoverTick(); });
        }
        return guarded(L"tmrForegroundCheck_Timer", [&] { events_->CheckForeground(); });
    case WM_TABLET_QUERYSYSTEMGESTURESTATUS: return pressesAtOnce;
    // The main window places the layer, on another DPI as well, and ends it.
    case WM_DPICHANGED:
    case WM_CLOSE: return 0;
    default: return DefaultHandler(message, wParam, lParam);
    }
}

std::optional<int> ProtectiveLayer::KeyAt(POINT client) const noexcept {
    const RECT area = ClientArea(Handle());
    // A captured mouse reports points outside, too; the rule takes its outer keys to reach any distance.
    if (::PtInRect(&area, client) == FALSE) {
        return std::nullopt;
    }
    const double twips = TwipsPerPixel(Dpi());
    return KeyUnderPoint(client.x * twips, client.y * twips, area.right * twips, area.bottom * twips);
}

void ProtectiveLayer::Push(std::optional<int> key) noexcept {
    const std::optional<int> before = std::exchange(pressedKey_, key);
    if (before && before != key) {
        events_->PushKey(*before, false);
    }
    if (key) {
        events_->PushKey(*key, true);
    }
}

void ProtectiveLayer::OnMouseDown(POINT client) {
    pressedElsewhere_ = false;
    ::SetCapture(Handle());
    Push(KeyAt(client));
}

void ProtectiveLayer::OnMouseMove(POINT client, bool buttonHeld) {
    pressedElsewhere_ = pressedElsewhere_ && buttonHeld;
    if (events_->CurrentInputMode() == InputMode::Standard && !buttonHeld) {
        return;
    }
    const std::optional<int> key = KeyAt(client);
    if (!key) {
        events_->MouseMoveInForm();
        return;
    }
    events_->ButtonMouseMove(*key);
    if (pressedKey_ && pressedKey_ != key) {
        Push(key);
    }
}

void ProtectiveLayer::OnMouseUp(POINT client) {
    const std::optional<int> key = std::exchange(pressedElsewhere_, false) ? std::nullopt : KeyAt(client);
    // Before the click, which may open a dialog: no key stays pushed beneath it. Giving up the capture comes back as
    // WM_CAPTURECHANGED and releases the remembered key.
    if (::GetCapture() == Handle()) {
        ::ReleaseCapture();
    }
    Push(std::nullopt);
    if (key) {
        events_->ButtonClick(*key);
        events_->PushKey(*key, false);
    }
}

void ProtectiveLayer::OnDoubleClick() {
    pressedElsewhere_ = false;
    ::SetCapture(Handle());
    if (POINT pointer{}; ::GetCursorPos(&pointer) != FALSE) {
        ::ScreenToClient(Handle(), &pointer);
        pressedKey_.reset();
        if (const std::optional<int> key = KeyAt(pointer)) {
            events_->FlashKey(*key);
        }
    }
}

void ProtectiveLayer::Obey(HoverEntry::TimerOrder order, UINT intervalMs) noexcept {
    using enum HoverEntry::TimerOrder;
    if (order == Restart || (order == Run && hoverIntervalMs_ != intervalMs)) {
        hoverIntervalMs_ = intervalMs;
        hoverDueMs_ = ::GetTickCount64() + intervalMs;
        ::SetTimer(Handle(), Timer1, intervalMs, nullptr);
    } else if (order == Stop) {
        StopHoverTimer();
    }
}

void ProtectiveLayer::StopHoverTimer() noexcept {
    hoverIntervalMs_ = 0;
    ::KillTimer(Handle(), Timer1);
}

void ProtectiveLayer::OnHoverTick() {
    // Anybody can post a tick.
    const ULONGLONG now = ::GetTickCount64();
    POINT pointer{};
    if (!events_->IsHoverEntryEnabled() || now + earlyMs < hoverDueMs_ || ::GetCursorPos(&pointer) == FALSE) {
        return;
    }
    hoverDueMs_ = now + hoverIntervalMs_;
    // Hidden with the minimised window, the layer keeps its place. Edges included on all four sides.
    if (const RECT area = OuterArea(Handle()); IsVisible() && pointer.x >= area.left && pointer.x <= area.right &&
                                               pointer.y >= area.top && pointer.y <= area.bottom) {
        events_->Timer();
    } else {
        StopHoverTimer();
        events_->ClearCurrentButton();
    }
}

} // namespace vextrel
