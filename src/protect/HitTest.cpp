#include "protect/HitTest.h"

#include "base/Numbers.h"
#include "keyboard/KeyTable.h"

#include <cmath>

namespace vextrel {

namespace {

/// A row of outer keys with keys of equal width between them. Edges in units from the left.
struct FramedRow {
    double leftKeyEnds;
    double rightKeyBegins;
    int leftKey;
    int rightKey;
    int middleUnits; ///< also the number of keys in the middle
    int firstMiddleKey;
};
constexpr FramedRow secondRow{1.4, 13.4, keys::tab, 65, 12, 17};
constexpr FramedRow thirdRow{1.8, 12.8, keys::capsLock, keys::enter, 11, 31};
constexpr FramedRow fourthRow{2.2, 12.2, keys::leftShift, keys::rightShift, 10, 43};

constexpr double unitsPerRow = 15;
constexpr double rowCount = 5;
constexpr double spaceBegins = 3.8;
constexpr double spaceEnds = 9.8;

/// Edges are known in single precision: points compare with the rounded product, not with the exact one.
double Edge(double units, double unitTwips) noexcept {
    return static_cast<double>(static_cast<float>(units * unitTwips));
}

double WholeTwips(double twips) noexcept {
    return static_cast<double>(RoundHalfEven(twips));
}

std::optional<int> KeyInFirstRow(double x, double width) noexcept {
    const double column = std::floor(x / (width / unitsPerRow)) + 1;
    if (column >= 1 && column <= 13) {
        return static_cast<int>(column);
    }
    // Backspace is two units wide; the hidden key that stands before it is never reached.
    return column == 14 || column == 15 ? std::optional(keys::backspace) : std::nullopt;
}

std::optional<int> KeyInFramedRow(const FramedRow& row, double x, double width, double unit) noexcept {
    const double leftKeyEnds = Edge(row.leftKeyEnds, unit);
    if (x <= leftKeyEnds) {
        return row.leftKey;
    }
    if (x >= Edge(row.rightKeyBegins, unit)) {
        return row.rightKey;
    }
    const double middleWidth = WholeTwips(width - (unitsPerRow - row.middleUnits) * unit);
    const double column = std::floor((x - leftKeyEnds) / (middleWidth / row.middleUnits)) + 1;
    if (column >= 1 && column <= row.middleUnits) {
        return row.firstMiddleKey + static_cast<int>(column) - 1;
    }
    return std::nullopt;
}

} // namespace

std::optional<int> KeyUnderPoint(double xTwips, double yTwips, double widthTwips, double heightTwips) noexcept {
    if (!(widthTwips > 0 && heightTwips > 0)) {
        return std::nullopt;
    }
    const double row = std::floor(yTwips / (heightTwips / rowCount)) + 1;
    const double unit = WholeTwips(widthTwips / unitsPerRow);
    if (row == 1) {
        return KeyInFirstRow(xTwips, widthTwips);
    }
    if (row == 2) {
        return KeyInFramedRow(secondRow, xTwips, widthTwips, unit);
    }
    if (row == 3) {
        return KeyInFramedRow(thirdRow, xTwips, widthTwips, unit);
    }
    if (row == 4) {
        return KeyInFramedRow(fourthRow, xTwips, widthTwips, unit);
    }
    if (row == 5 && xTwips >= Edge(spaceBegins, unit) && xTwips <= Edge(spaceEnds, unit)) {
        return keys::space;
    }
    return std::nullopt;
}

} // namespace vextrel
