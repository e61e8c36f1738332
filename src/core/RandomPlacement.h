#pragma once

#include "core/Geometry.h"

namespace vextrel {

/// What the window is and where it may go. Lengths in twips.
struct RandomPlaceInput {
    double screenWidthTwips = 0;
    double screenHeightTwips = 0;
    double oldHeightTwips = 0;     ///< the window's height before this placement: the top follows from it
    double toolbarHeightTwips = 0; ///< 0 when hidden: the window is lower by exactly that
    double statusBarHeightTwips = 0;
    double twipsPerPixel = 15;
    double smallestKeyTwips = 0; ///< what a key unit is at least, as far as the range of widths has room for it
    // Uniform in [0, 1), each drawn after a fresh seed.
    double widthDraw = 0;
    double topDraw = 0;
    double leftDraw = 0;
};

struct RandomPlace {
    double leftTwips = 0;
    double topTwips = 0;
    double widthTwips = 0;
    double heightTwips = 0;
    double keyWidthTwips = 0; ///< one unit, whole pixels
};

/// Room on either side of the keys, in twips.
inline constexpr double sideMarginTwips = 300;
/// The outer width besides the keys: both margins and the borders.
inline constexpr double widthBesidesKeysTwips = 2 * sideMarginTwips + 100;

/// The key unit that an outer window width gives: a fifteenth of the key area, snapped to whole pixels, in twips
/// rounded to a whole one.
[[nodiscard]] double KeyUnitTwips(double outerWidthTwips, double twipsPerPixel) noexcept;

/// The outer height of a window whose keys are keyWidthTwips high.
[[nodiscard]] double WindowHeightTwips(double keyWidthTwips, double toolbarHeightTwips,
                                       double statusBarHeightTwips) noexcept;

/// A random width between 5500 twips and half the screen, the size that follows from it, and a random place at least
/// 400 twips from the top and left edges. The formula stands as it is: nothing is clamped. A smallest key draws the
/// width from the part of its range where the keys are that wide; of a range that has no such part, from its wide end.
[[nodiscard]] RandomPlace RandomisePlacement(const RandomPlaceInput& input) noexcept;

/// The place nearest to a window's own where it reaches out of the work area on no side. What is too large for it
/// begins at its top or left edge.
[[nodiscard]] Point PlaceInside(Rect workArea, Rect window) noexcept;

/// Whether a title bar can be taken hold of: half its height lies in the work area, over a length of four heights.
[[nodiscard]] bool IsWithinReach(Rect workArea, Rect titleBar) noexcept;

} // namespace vextrel
