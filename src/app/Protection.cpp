#include "app/Protection.h"

#include "core/RandomPlacement.h"
#include "core/ids.h"
#include "ui/DotPointer.h"
#include "win32/InputState.h"
#include "win32/Text.h"
#include "win32/WindowStyle.h"

#include <algorithm>

namespace vextrel {

namespace {

constexpr std::int16_t visibleCoverTransparency = 100;

constexpr const wchar_t* hideMouseTitle = L"Hide mouse - turn it into grey dot?";
constexpr const wchar_t* hideMouseQuestion =
    L"Click OK if you want your mouse to become a small grey dot when using this on screen keyboard.\r\n"
    L"(This is designed to fool malicious screen capture programs and is only available in the password mask view "
    L"mode.)\r\n\r\n"
    L"This will not affect any other programs, and can be undone by going to Mouse Mode - Standard.";

MONITORINFO MonitorOf(HWND window) noexcept {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor;
}

/// What a control holds, as one text that can be compared: an edit's text, a slider's position, "False" for a button.
/// Anything else matches nothing.
bool HoldsText(HWND control, std::wstring_view text) {
    wchar_t className[64]{};
    ::GetClassNameW(control, className, static_cast<int>(std::size(className)));
    if (::lstrcmpiW(className, WC_EDITW) == 0) {
        SecretText held;
        held.SetSize(static_cast<std::size_t>(
            ::SendMessageW(control, WM_GETTEXT, SecretText::capacity + 1, reinterpret_cast<LPARAM>(held.Buffer()))));
        return held.View() == text;
    }
    if (::lstrcmpiW(className, TRACKBAR_CLASSW) == 0) {
        return std::to_wstring(::SendMessageW(control, TBM_GETPOS, 0, 0)) == text;
    }
    return ::lstrcmpiW(className, WC_BUTTONW) == 0 && text == L"False";
}

} // namespace

void Protection::SetCoverTransparency(std::int16_t value) noexcept {
    coverTransparency_ = value;
    cover_.SetAlpha(AlphaForLayer(value));
}

void Protection::ResetFormCover() noexcept {
    cover_.Place(form_.KeyAreaOnScreen());
    cover_.Show(true);
}

RECT Protection::FormMove() noexcept {
    const RECT area = form_.KeyAreaOnScreen();
    // A layer that is hidden just now, while the window is being restored, has to lie right when it comes back.
    if (form_.IsVisible() && !::IsIconic(form_.Handle())) {
        cover_.Place(area);
    }
    RECT firstKey{};
    ::GetWindowRect(form_.Key(1).Handle(), &firstKey);
    return firstKey;
}

void Protection::RandomiseFormSizeAndPlacement() {
    const HWND window = form_.Handle();
    const int dpi = form_.Dpi();
    const RECT screen = MonitorOf(window).rcMonitor;
    RECT old{};
    ::GetWindowRect(window, &old);
    const auto twips = [dpi](LONG px) { return TwipsFromPixels(px, dpi); };
    const auto px = [dpi](double length) { return PixelsFromTwips(length, dpi); };

    const Placement placement = RandomisePlacement({
        .screenWidthTwips = twips(screen.right - screen.left),
        .screenHeightTwips = twips(screen.bottom - screen.top),
        .oldHeightTwips = twips(old.bottom - old.top),
        .toolbarHeightTwips = twips(form_.ToolbarHeightPx()),
        .statusBarHeightTwips = twips(form_.StatusBarHeightPx()),
        .twipsPerPixel = TwipsPerPixel(dpi),
        .widthDraw = random_.Draw(),
        .topDraw = random_.Draw(),
        .leftDraw = random_.Draw(),
    });
    ::SetWindowPos(window, nullptr, screen.left + px(placement.leftTwips), screen.top + px(placement.topTwips),
                   px(placement.widthTwips), px(placement.heightTwips), SWP_NOZORDER | SWP_NOACTIVATE);
    // The toolbar may need another number of rows at the new width.
    FitHeight();
    form_.LayOut();
    RaiseAboveLowerEdge();
}

void Protection::RaiseAboveLowerEdge() noexcept {
    const RECT work = MonitorOf(form_.Handle()).rcWork;
    RECT outer{};
    ::GetWindowRect(form_.Handle(), &outer);
    if (outer.bottom > work.bottom) {
        ::SetWindowPos(form_.Handle(), nullptr, outer.left, std::max(work.top, outer.top + work.bottom - outer.bottom),
                       0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void Protection::FitHeight() {
    const HWND window = form_.Handle();
    const int dpi = form_.Dpi();
    RECT outer{};
    ::GetWindowRect(window, &outer);
    const double keyWidthTwips = KeyUnitTwips(TwipsFromPixels(outer.right - outer.left, dpi), TwipsPerPixel(dpi));
    const double heightTwips = WindowHeightTwips(keyWidthTwips, TwipsFromPixels(form_.ToolbarHeightPx(), dpi),
                                                 TwipsFromPixels(form_.StatusBarHeightPx(), dpi));
    ::SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left, PixelsFromTwips(heightTwips, dpi),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Protection::AreTopmost(bool topmost) const noexcept {
    return IsTopmost(form_.Handle()) == topmost && IsTopmost(cover_.Handle()) == topmost;
}

void Protection::KeepTogether(bool topmost) noexcept {
    const HWND windows[] = {form_.Handle(), cover_.Handle()};
    const auto place = [&] {
        for (const HWND window : windows) {
            SetTopmostAlone(window, topmost);
        }
    };
    place();
    if (!AreTopmost(topmost)) {
        // Wine puts an owner right behind what it owns; behind the only topmost window it is not topmost itself.
        ::SetWindowLongPtrW(cover_.Handle(), GWLP_HWNDPARENT, 0);
        place();
        ::SetWindowLongPtrW(cover_.Handle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(form_.Handle()));
    }
}

void Protection::ReturnToVisiblePlace() noexcept {
    if (::MonitorFromWindow(form_.Handle(), MONITOR_DEFAULTTONULL) != nullptr || ::IsIconic(form_.Handle())) {
        return;
    }
    const RECT work = MonitorOf(form_.Handle()).rcWork;
    ::SetWindowPos(form_.Handle(), nullptr, work.left, work.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Protection::SetPointerHidden(bool hidden) noexcept {
    mouseHidden_ = hidden;
    pointerOverKeys_ = true;
    RenewPointer();
}

bool Protection::HideMouse() {
    if (!mayAsk_ || !form_.IsVisible()) {
        SetPointerHidden(true);
        return true;
    }
    const int answer = ShowMessageBox(operations_, hideMouseQuestion, hideMouseTitle, MB_OKCANCEL | MB_ICONQUESTION);
    SetPointerHidden(answer == IDOK);
    return answer == IDOK;
}

bool Protection::ShowMouse() noexcept {
    SetPointerHidden(false);
    return false;
}

void Protection::PointerOverKeys(bool over) noexcept {
    const bool changes = mouseHidden_ && over != pointerOverKeys_;
    pointerOverKeys_ = over;
    if (changes) {
        RenewPointer();
    }
}

void Protection::KeepLayerAbove() noexcept {
    // Windows keeps what a window owns above it. Wine may raise the window alone when it comes to the front, and the
    // clicks would reach the keys without the layer.
    if (cover_.IsVisible() && !IsAbove(cover_.Handle(), form_.Handle())) {
        RaiseAlone(cover_.Handle(), IsTopmost(form_.Handle()));
    }
}

void Protection::CheckForeground(bool layerMarked) {
    const HWND front = ::GetForegroundWindow();
    if (front == form_.Handle() || front == cover_.Handle()) {
        KeepLayerAbove();
        if (away_) {
            ComeBack(layerMarked);
        }
        return;
    }
    DWORD process = 0;
    ::GetWindowThreadProcessId(front, &process);
    if (front == nullptr || process == ::GetCurrentProcessId()) {
        return; // while the foreground changes hands, or a window of our own: neither away nor back
    }
    if (!away_) {
        SetCoverTransparency(0);
    }
    away_ = true;
}

bool Protection::FocusIsWanted() const {
    if (IsAnyMouseButtonDown()) {
        return false;
    }
    SecretText masked;
    SecretText plain;
    form_.txtPassword().ReadText(masked);
    form_.txtText().ReadText(plain);
    const HWND active = form_.ActiveControl();
    // Told apart by what they hold, not by which they are. Deliberate.
    return !HoldsText(active, masked.View()) && !HoldsText(active, plain.View());
}

void Protection::ComeBack(bool layerMarked) {
    if (FocusIsWanted()) {
        form_.FocusVisibleBox();
    }
    SetCoverTransparency(layerMarked ? visibleCoverTransparency : defaultCoverTransparency_);
    away_ = false;
}

} // namespace vextrel
