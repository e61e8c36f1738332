#include "app/Placement.h"

#include "core/RandomPlacement.h"
#include "ui/WindowParts.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

void Placement::RandomiseFormSizeAndPlacement() {
    const HWND window = form_.Handle();
    const int dpi = form_.Dpi();
    const RECT screen = MonitorOf(window).rcMonitor;
    const RECT old = OuterArea(window);
    const auto twips = [dpi](LONG px) { return TwipsFromPixels(px, dpi); };
    const auto px = [dpi](double length) { return PixelsFromTwips(length, dpi); };

    const RandomPlace placement = RandomisePlacement({
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
    form_.Arrange();
    // The random top follows from the height before: a window that has grown may reach below the screen.
    const RECT work = MonitorOf(window).rcWork;
    const RECT now = OuterArea(window);
    if (now.bottom > work.bottom) {
        ::SetWindowPos(window, nullptr, now.left, std::max(work.top, now.top + work.bottom - now.bottom), 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
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
    const HWND window = form_.Handle();
    if (::MonitorFromWindow(window, MONITOR_DEFAULTTONULL) == nullptr && !::IsIconic(window)) {
        const RECT work = MonitorOf(window).rcWork;
        ::SetWindowPos(window, nullptr, work.left, work.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

} // namespace vextrel
