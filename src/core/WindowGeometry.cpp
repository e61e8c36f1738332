#include "core/WindowGeometry.h"

#include "core/RandomPlacement.h"

#include <algorithm>
#include <span>

namespace vextrel {

namespace {

constexpr int unitsPerRow = 15;
constexpr int keyRows = 5;

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
constexpr double betweenSlidersTwips = 150;

constexpr double smallestKeyTwips = 240;

/// Keys that stand side by side from a first edge on, one unit each.
struct KeyRun {
    int firstKey;
    int count;
    int leftTenths; ///< tenths of a unit from the key area's left edge
};
/// A key of its own width.
struct WideKey {
    int key;
    int leftTenths;
    int rightTenths;
};
struct KeyRow {
    KeyRun run;
    std::array<WideKey, 2> wide; ///< number 0: none
};

constexpr std::array<KeyRow, keyRows> rows{{
    {{1, 13, 0}, {{{keys::backspace, 130, 150}, {}}}},
    {{17, 12, 14}, {{{keys::tab, 0, 14}, {65, 134, 150}}}},
    {{31, 11, 18}, {{{keys::capsLock, 0, 18}, {keys::enter, 128, 150}}}},
    {{43, 10, 22}, {{{keys::leftShift, 0, 22}, {keys::rightShift, 122, 150}}}},
    {{}, {{{keys::space, 38, 98}, {}}}},
}};

void PlaceKeys(WindowLayout& layout) noexcept {
    const int left = layout.keyArea.left;
    // Both neighbours of an edge round the same number, so that neither gap nor overlap can arise.
    const auto edge = [&](int tenths) noexcept { return left + (tenths * layout.keyUnitPx + 5) / 10; };
    int top = layout.keyArea.top;
    for (const KeyRow& row : rows) {
        const int bottom = top + layout.keyHeightPx;
        const auto place = [&](int key, int leftTenths, int rightTenths) noexcept {
            layout.keys[static_cast<std::size_t>(key)] = {edge(leftTenths), top, edge(rightTenths), bottom};
        };
        for (int i = 0; i < row.run.count; ++i) {
            place(row.run.firstKey + i, row.run.leftTenths + 10 * i, row.run.leftTenths + 10 * (i + 1));
        }
        for (const WideKey& wide : row.wide) {
            if (wide.key != 0) {
                place(wide.key, wide.leftTenths, wide.rightTenths);
            }
        }
        top = bottom;
    }
}

/// Two halves of equal width, each a label and its slider, ending flush with the keys on both sides.
void PlaceSliders(WindowLayout& layout, int left, int right, int top, int bottom, int dpi,
                  bool hoverLabelShown) noexcept {
    const int half = std::max(0, (right - left - PixelsFromTwips(betweenSlidersTwips, dpi)) / 2);
    const int label = std::min(PixelsFromTwips(labelWidthTwips, dpi), half / 2);
    layout.hoverDelayLabel = {left, top, left + label, bottom};
    layout.hoverDelaySlider = {hoverLabelShown ? left + label : left, top, left + half, bottom};
    layout.transparencyLabel = {right - half, top, right - half + label, bottom};
    layout.transparencySlider = {right - half + label, top, right, bottom};
}

} // namespace

WindowLayout LayOutWindow(const WindowLayoutInput& input) noexcept {
    const int dpi = input.dpi;
    const int clientWidth = std::max(0, PixelsFromTwips(input.clientWidthTwips, dpi));
    const double unitTwips = KeyUnitTwips(input.clientWidthTwips + input.frameWidthTwips, TwipsPerPixel(dpi));

    WindowLayout layout;
    layout.keyUnitPx = std::clamp(PixelsFromTwips(unitTwips, dpi), 0, clientWidth / unitsPerRow);
    const int keysWidth = unitsPerRow * layout.keyUnitPx;
    const int left = (clientWidth - keysWidth) / 2;
    const int right = left + keysWidth;

    // When room is short (a menu bar of two lines, a window made low), the box gives way before the keys do.
    const int gap = PixelsFromTwips(gapTwips, dpi);
    const int sliderRow = PixelsFromTwips(sliderRowTwips, dpi);
    const int room = PixelsFromTwips(input.clientHeightTwips, dpi) - input.toolbarHeightPx - input.statusBarHeightPx -
                     gapCount * gap - sliderRow;
    const int box = std::clamp(room - keyRows * layout.keyUnitPx, PixelsFromTwips(lowPasswordBoxTwips, dpi),
                               PixelsFromTwips(passwordBoxTwips, dpi));
    layout.keyHeightPx = std::max(0, (room - box) / keyRows);
    const int spare = std::max(0, room - box - keyRows * layout.keyHeightPx);

    int top = input.toolbarHeightPx + gap;
    layout.passwordBox = {left, top, right, top + box};
    top += box + gap;
    PlaceSliders(layout, left, right, top, top + sliderRow, dpi, input.hoverLabelShown);
    top += sliderRow + gap + spare / 2;
    layout.keyArea = {left, top, right, top + keyRows * layout.keyHeightPx};
    PlaceKeys(layout);
    return layout;
}

Size MinimumClientSizePx(double frameWidthTwips, int dpi, int toolbarHeightPx, int statusBarHeightPx) noexcept {
    const int keyPx = PixelsFromTwips(smallestKeyTwips, dpi);
    const int besides = PixelsFromTwips(2 * sideMarginTwips + 100 - frameWidthTwips, dpi);
    const int fixedHeight = gapCount * PixelsFromTwips(gapTwips, dpi) + PixelsFromTwips(sliderRowTwips, dpi) +
                            PixelsFromTwips(lowPasswordBoxTwips, dpi);
    return {unitsPerRow * keyPx + std::max(0, besides),
            keyRows * keyPx + fixedHeight + toolbarHeightPx + statusBarHeightPx};
}

} // namespace vextrel
