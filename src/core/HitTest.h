#pragma once

#include <optional>

namespace vextrel {

/// The key under a point of the protective layer, from the keyboard's physical shape alone (a board of 15 units), not
/// from the buttons' real places. All lengths in twips, measured from the layer's top-left corner.
/// @return the button's number, or nothing off the keys and for an empty layer. Command14 is never reached.
[[nodiscard]] std::optional<int> KeyUnderPoint(double xTwips, double yTwips, double widthTwips,
                                               double heightTwips) noexcept;

} // namespace vextrel
