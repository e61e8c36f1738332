#include "core/RandomPlacement.h"

#include "core/KeyGrid.h"

#include <algorithm>
#include <cmath>

namespace vextrel {

namespace {

/// The outer height besides keys and bars: title bar, menu, password box, sliders, gaps and borders.
constexpr double heightBesidesKeysTwips = 400 + 2 * sideMarginTwips + 950;

constexpr double narrowestWidthTwips = 5500;
/// How far the window stays from the screen's top and left edges, and the room it leaves in all.
constexpr double nearEdgeTwips = 400;
constexpr double edgeRoomTwips = 1500;

} // namespace

double KeyUnitTwips(double outerWidthTwips, double twipsPerPixel) noexcept {
    const double unitPx = WholeTwips((outerWidthTwips - widthBesidesKeysTwips) / unitsPerRow / twipsPerPixel);
    return WholeTwips(unitPx * twipsPerPixel);
}

double WindowHeightTwips(double keyWidthTwips, double toolbarHeightTwips, double statusBarHeightTwips) noexcept {
    return toolbarHeightTwips + (keyRowCount * keyWidthTwips + heightBesidesKeysTwips) + statusBarHeightTwips;
}

RandomPlace RandomisePlacement(const RandomPlaceInput& input) noexcept {
    // Half of a narrow screen is less than the narrowest width: the range runs downwards then.
    const double half = input.screenWidthTwips / 2;
    const double smallestUnit = std::ceil(input.smallestKeyTwips / input.twipsPerPixel) * input.twipsPerPixel;
    const double least =
        std::min(widthBesidesKeysTwips + unitsPerRow * smallestUnit, std::max(narrowestWidthTwips, half));
    const double first = std::max(narrowestWidthTwips, least);
    const double targetWidth = WholeTwips((std::max(half, least) - first) * input.widthDraw + first);
    RandomPlace placement;
    placement.keyWidthTwips = KeyUnitTwips(targetWidth, input.twipsPerPixel);
    placement.widthTwips = widthBesidesKeysTwips + unitsPerRow * placement.keyWidthTwips;
    placement.topTwips =
        (input.screenHeightTwips - input.oldHeightTwips - edgeRoomTwips) * input.topDraw + nearEdgeTwips;
    placement.leftTwips =
        (input.screenWidthTwips - placement.widthTwips - edgeRoomTwips) * input.leftDraw + nearEdgeTwips;
    placement.heightTwips =
        WindowHeightTwips(placement.keyWidthTwips, input.toolbarHeightTwips, input.statusBarHeightTwips);
    return placement;
}

Point PlaceInside(Rect workArea, Rect window) noexcept {
    return {std::max(workArea.left, std::min(window.left, workArea.right - window.Width())),
            std::max(workArea.top, std::min(window.top, workArea.bottom - window.Height()))};
}

bool IsWithinReach(Rect workArea, Rect titleBar) noexcept {
    const int width = std::min(titleBar.right, workArea.right) - std::max(titleBar.left, workArea.left);
    const int height = std::min(titleBar.bottom, workArea.bottom) - std::max(titleBar.top, workArea.top);
    return width >= 4 * titleBar.Height() && 2 * height >= titleBar.Height();
}

} // namespace vextrel
