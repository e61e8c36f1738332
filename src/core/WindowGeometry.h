#pragma once

#include "core/Geometry.h"
#include "core/KeyTable.h"

namespace vextrel {

struct WindowGeometryInput {
    double clientWidthTwips = 0;
    double clientHeightTwips = 0;
    double frameWidthTwips = 0; ///< outer width less client width: the key unit derives from the outer width
    int dpi = 96;
    int toolbarHeightPx = 0; ///< 0 when hidden
    int statusBarHeightPx = 0;
    int labelTextPx = 0; ///< of the sliders' labels, the longer text
};

/// Where everything in the window goes, in pixels of the client area. No two rectangles overlap; the key rows have no
/// gaps; everything lies inside the client area as long as that is at least MinimumClientSizePx.
struct WindowGeometry {
    Rect passwordBox; ///< of txtPassword and txtText alike
    Rect hoverDelayLabel;
    Rect hoverDelaySlider;
    Rect transparencyLabel;
    Rect transparencySlider;
    Rect keyArea; ///< what the protective layer covers
    /// By button number, 1 to 65; empty for the hidden ones.
    std::array<Rect, keyButtonCount + 1> keys{};
    int keyUnitPx = 0;
    int keyHeightPx = 0;
};

/// Lays out the window: below the toolbar the password box, below it the two sliders with their labels side by side,
/// then the key rows of KeyGrid.h. Edges are snapped to whole pixels.
[[nodiscard]] WindowGeometry GeometryOfWindow(const WindowGeometryInput& input) noexcept;

/// The client area below which the window should not shrink: its keys are 16 pixels wide and high at 96 DPI, and as
/// large on other screens, with the usual margins.
[[nodiscard]] Size MinimumClientSizePx(double frameWidthTwips, int dpi, int toolbarHeightPx,
                                       int statusBarHeightPx) noexcept;

} // namespace vextrel
