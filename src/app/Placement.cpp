#include "app/Placement.h"

#include "core/RandomPlacement.h"
#include "ui/WindowParts.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

Rect RectOf(const RECT& area) noexcept {
    return {area.left, area.top, area.right, area.bottom};
}

} // namespace

void Placement::RandomiseFormSizeAndPlacement() {
    const HWND window = form_.Handle();
    const int dpi = form_.Dpi();
    const RECT old = OuterArea(window);
    const MONITORINFO monitor = MonitorOf(old);
    const RECT& screen = monitor.rcMonitor;
    const auto twips = [dpi](LONG px) { return TwipsFromPixels(px, dpi); };
    const auto px = [dpi](double length) { return PixelsFromTwips(length, dpi); };

    const RandomPlace placement = RandomisePlacement({
        .screenWidthTwips = twips(screen.right - screen.left),
        .screenHeightTwips = twips(screen.bottom - screen.top),
        .oldHeightTwips = twips(old.bottom - old.top),
        .toolbarHeightTwips = twips(form_.ToolbarHeightPx()),
        .statusBarHeightTwips = twips(form_.StatusBarHeightPx()),
        .twipsPerPixel = TwipsPerPixel(dpi),
        .smallestKeyTwips = TwipsFromPixels(program_.smallestKeyPx, USER_DEFAULT_SCREEN_DPI),
        .widthDraw = random_.Draw(),
        .topDraw = random_.Draw(),
        .leftDraw = random_.Draw(),
    });
    ::SetWindowPos(window, nullptr, screen.left + px(placement.leftTwips), screen.top + px(placement.topTwips),
                   px(placement.widthTwips), px(placement.heightTwips), SWP_NOZORDER | SWP_NOACTIVATE);
    // The toolbar may need another number of rows at the new width.
    FitHeight();
    form_.Arrange();
    // The random top follows from the height before: a window that has grown may reach below the screen, one that was
    // taller than its screen above it.
    MoveInto(monitor.rcWork);
}

void Placement::TakeWidestSize() {
    const RECT screen = MonitorOf(OuterArea(form_.Handle())).rcMonitor;
    ::SetWindowPos(form_.Handle(), nullptr, 0, 0, (screen.right - screen.left) / 2, screen.bottom - screen.top,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    FitHeight();
}

void Placement::FitHeight() {
    const HWND window = form_.Handle();
    const int dpi = form_.Dpi();
    const RECT outer = OuterArea(window);
    const double keyWidthTwips = KeyUnitTwips(TwipsFromPixels(outer.right - outer.left, dpi), TwipsPerPixel(dpi));
    const double heightTwips = WindowHeightTwips(keyWidthTwips, TwipsFromPixels(form_.ToolbarHeightPx(), dpi),
                                                 TwipsFromPixels(form_.StatusBarHeightPx(), dpi));
    ::SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left, PixelsFromTwips(heightTwips, dpi),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Placement::ReturnToVisiblePlace() noexcept {
    RECT titleBar = OuterArea(form_.Handle());
    titleBar.bottom = titleBar.top + ::GetSystemMetricsForDpi(SM_CYCAPTION, static_cast<UINT>(form_.Dpi()));
    const RECT work = MonitorOf(titleBar).rcWork;
    if (!::IsIconic(form_.Handle()) && !IsWithinReach(RectOf(work), RectOf(titleBar))) {
        MoveInto(work);
    }
}

void Placement::MoveInto(const RECT& workArea) noexcept {
    const Point place = PlaceInside(RectOf(workArea), RectOf(OuterArea(form_.Handle())));
    ::SetWindowPos(form_.Handle(), nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace vextrel
