#pragma once

#include "core/KeyTable.h"

namespace vextrel {

// The keyboard's shape: a board of five rows, 15 units wide. The hit test of the protective layer, the places of the
// keys in the window and the window's random size all follow from it.

inline constexpr int unitsPerRow = 15;
inline constexpr int keyRowCount = 5;
/// Places in a row are in tenths of a unit from the board's left edge.
inline constexpr int tenthsPerUnit = 10;

/// Keys that stand side by side, one unit each.
struct KeyRun {
    int firstKey;
    int count;
    int leftTenths;
};
/// A key of its own width.
struct WideKey {
    int key; ///< 0: none
    int leftTenths;
    int rightTenths;
};
struct KeyRow {
    KeyRun run;
    WideKey left;
    WideKey right;
};

inline constexpr std::array<KeyRow, keyRowCount> keyGrid{{
    {{1, 13, 0}, {}, {keys::backspace, 130, 150}},
    {{17, 12, 14}, {keys::tab, 0, 14}, {65, 134, 150}},
    {{31, 11, 18}, {keys::capsLock, 0, 18}, {keys::enter, 128, 150}},
    {{43, 10, 22}, {keys::leftShift, 0, 22}, {keys::rightShift, 122, 150}},
    {{}, {keys::space, 38, 98}, {}},
}};

/// Rounds to a whole number of twips, halves to the even one.
[[nodiscard]] double WholeTwips(double twips) noexcept;

/// The key under a point of the protective layer, from the keyboard's shape alone, not from the buttons' real places.
/// All lengths in twips, measured from the layer's top-left corner.
/// @return the button's number, or nothing off the keys and for an empty layer. Command14 is never reached.
[[nodiscard]] std::optional<int> KeyUnderPoint(double xTwips, double yTwips, double widthTwips,
                                               double heightTwips) noexcept;

} // namespace vextrel
