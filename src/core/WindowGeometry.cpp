#include "core/WindowGeometry.h"

#include "core/KeyGrid.h"
#include "core/RandomPlacement.h"

#include <algorithm>

namespace vextrel {

namespace {

// Heights and gaps. With these, a randomly sized window on current Windows has square keys: of its fixed 1950 twips of
// height, title bar, menu and borders take about 890.
constexpr double gapTwips = 75;
constexpr double passwordBoxTwips = 375;
/// Holds a line of the system's font and the box's borders, and no more.
constexpr double lowPasswordBoxTwips = 300;
constexpr double sliderRowTwips = 300;
constexpr int gapCount = 4; ///< above the box, above the sliders, above and below the keys

/// Room for a short caption in the system's font. Labels don't grow with the window: their text doesn't either.
constexpr double labelWidthTwips = 1050;
/// What a text that needs more room leaves to its slider.
constexpr double smallestSliderTwips = 300;
constexpr double betweenSlidersTwips = 150;

constexpr double smallestKeyTwips = 240;

void PlaceKeys(WindowGeometry& geometry) noexcept {
    const int left = geometry.keyArea.left;
    // Both neighbours of an edge round the same number, so that neither gap nor overlap can arise.
    const auto edge = [&](int tenths) noexcept {
        return left + (tenths * geometry.keyUnitPx + tenthsPerUnit / 2) / tenthsPerUnit;
    };
    int top = geometry.keyArea.top;
    for (const KeyRow& row : keyGrid) {
        const int bottom = top + geometry.keyHeightPx;
        const auto place = [&](int key, int leftTenths, int rightTenths) noexcept {
            geometry.keys[static_cast<std::size_t>(key)] = {edge(leftTenths), top, edge(rightTenths), bottom};
        };
        for (int i = 0; i < row.run.count; ++i) {
            const int from = row.run.leftTenths + tenthsPerUnit * i;
            place(row.run.firstKey + i, from, from + tenthsPerUnit);
        }
        for (const WideKey& wide : {row.left, row.right}) {
            if (wide.key != 0) {
                place(wide.key, wide.leftTenths, wide.rightTenths);
            }
        }
        top = bottom;
    }
}

/// Two halves of equal width, each a label and its slider, ending flush with the keys on both sides.
void PlaceSliders(WindowGeometry& geometry, int left, int right, int top, int bottom, int dpi,
                  int labelTextPx) noexcept {
    const int half = std::max(0, (right - left - PixelsFromTwips(betweenSlidersTwips, dpi)) / 2);
    const int usual = std::min(PixelsFromTwips(labelWidthTwips, dpi), half / 2);
    const int label = std::max(usual, std::min(labelTextPx, half - PixelsFromTwips(smallestSliderTwips, dpi)));
    geometry.hoverDelayLabel = {left, top, left + label, bottom};
    geometry.hoverDelaySlider = {left + label, top, left + half, bottom};
    geometry.transparencyLabel = {right - half, top, right - half + label, bottom};
    geometry.transparencySlider = {right - half + label, top, right, bottom};
}

} // namespace

WindowGeometry GeometryOfWindow(const WindowGeometryInput& input) noexcept {
    const int dpi = input.dpi;
    const int clientWidth = std::max(0, PixelsFromTwips(input.clientWidthTwips, dpi));
    const double unitTwips = KeyUnitTwips(input.clientWidthTwips + input.frameWidthTwips, TwipsPerPixel(dpi));

    WindowGeometry geometry;
    geometry.keyUnitPx = std::clamp(PixelsFromTwips(unitTwips, dpi), 0, clientWidth / unitsPerRow);
    const int keysWidth = unitsPerRow * geometry.keyUnitPx;
    const int left = (clientWidth - keysWidth) / 2;
    const int right = left + keysWidth;

    // When room is short (a menu bar of two lines, a window made low), the box gives way before the keys do.
    const int gap = PixelsFromTwips(gapTwips, dpi);
    const int sliderRow = PixelsFromTwips(sliderRowTwips, dpi);
    const int room = PixelsFromTwips(input.clientHeightTwips, dpi) - input.toolbarHeightPx - input.statusBarHeightPx -
                     gapCount * gap - sliderRow;
    const int box = std::clamp(room - keyRowCount * geometry.keyUnitPx, PixelsFromTwips(lowPasswordBoxTwips, dpi),
                               PixelsFromTwips(passwordBoxTwips, dpi));
    geometry.keyHeightPx = std::max(0, (room - box) / keyRowCount);
    const int spare = std::max(0, room - box - keyRowCount * geometry.keyHeightPx);

    int top = input.toolbarHeightPx + gap;
    geometry.passwordBox = {left, top, right, top + box};
    top += box + gap;
    PlaceSliders(geometry, left, right, top, top + sliderRow, dpi, input.labelTextPx);
    top += sliderRow + gap + spare / 2;
    geometry.keyArea = {left, top, right, top + keyRowCount * geometry.keyHeightPx};
    PlaceKeys(geometry);
    return geometry;
}

Size MinimumClientSizePx(double frameWidthTwips, int dpi, int toolbarHeightPx, int statusBarHeightPx) noexcept {
    const int keyPx = PixelsFromTwips(smallestKeyTwips, dpi);
    const int besides = PixelsFromTwips(widthBesidesKeysTwips - frameWidthTwips, dpi);
    const int fixedHeight = gapCount * PixelsFromTwips(gapTwips, dpi) + PixelsFromTwips(sliderRowTwips, dpi) +
                            PixelsFromTwips(lowPasswordBoxTwips, dpi);
    return {unitsPerRow * keyPx + std::max(0, besides),
            keyRowCount * keyPx + fixedHeight + toolbarHeightPx + statusBarHeightPx};
}

} // namespace vextrel
