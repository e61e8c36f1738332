#include "core/KeyGrid.h"

#include "core/Numbers.h"

namespace vextrel {

namespace {

/// Edges are known in single precision: points compare with the rounded product, not with the exact one.
double Edge(int tenths, double unitTwips) noexcept {
    return static_cast<double>(static_cast<float>(static_cast<double>(tenths) / tenthsPerUnit * unitTwips));
}

/// Which of the equal parts of a length holds the place, counted from 0; nothing outside the length.
std::optional<int> PartAt(double place, double length, int parts) noexcept {
    const double part = place / (length / parts);
    return part >= 0 && part < parts ? std::optional(static_cast<int>(part)) : std::nullopt;
}

/// Single keys from the left edge on; Backspace, behind them, takes what is left. The hidden key that stands before it
/// is never reached.
std::optional<int> KeyInFirstRow(const KeyRow& row, double x, double width) noexcept {
    const std::optional<int> column = PartAt(x, width, unitsPerRow);
    if (!column) {
        return std::nullopt;
    }
    return *column < row.run.count ? row.run.firstKey + *column : row.right.key;
}

/// A row of outer keys with keys of equal width between them.
std::optional<int> KeyInFramedRow(const KeyRow& row, double x, double width, double unit) noexcept {
    const double leftKeyEnds = Edge(row.left.rightTenths, unit);
    if (x <= leftKeyEnds) {
        return row.left.key;
    }
    if (x >= Edge(row.right.leftTenths, unit)) {
        return row.right.key;
    }
    const double middleWidth = WholeTwips(width - (unitsPerRow - row.run.count) * unit);
    const std::optional<int> column = PartAt(x - leftKeyEnds, middleWidth, row.run.count);
    return column ? std::optional(row.run.firstKey + *column) : std::nullopt;
}

} // namespace

double WholeTwips(double twips) noexcept {
    return static_cast<double>(RoundHalfEven(twips));
}

std::optional<int> KeyUnderPoint(double xTwips, double yTwips, double widthTwips, double heightTwips) noexcept {
    if (!(widthTwips > 0 && heightTwips > 0)) {
        return std::nullopt;
    }
    const std::optional<int> rowNumber = PartAt(yTwips, heightTwips, keyRowCount);
    if (!rowNumber) {
        return std::nullopt;
    }
    const KeyRow& row = keyGrid[static_cast<std::size_t>(*rowNumber)];
    const double unit = WholeTwips(widthTwips / unitsPerRow);
    if (*rowNumber == 0) {
        return KeyInFirstRow(row, xTwips, widthTwips);
    }
    if (row.run.count > 0) {
        return KeyInFramedRow(row, xTwips, widthTwips, unit);
    }
    const bool hit = xTwips >= Edge(row.left.leftTenths, unit) && xTwips <= Edge(row.left.rightTenths, unit);
    return hit ? std::optional(row.left.key) : std::nullopt;
}

} // namespace vextrel
