#include "core/HitTest.h"

#include "core/Numbers.h"
#include "core/KeyTable.h"

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

constexpr int unitsPerRow = 15;
constexpr int rowCount = 5;
constexpr double spaceBegins = 3.8;
constexpr double spaceEnds = 9.8;

/// Edges are known in single precision: points compare with the rounded product, not with the exact one.
double Edge(double units, double unitTwips) noexcept {
    return static_cast<double>(static_cast<float>(units * unitTwips));
}

double WholeTwips(double twips) noexcept {
    return static_cast<double>(RoundHalfEven(twips));
}

/// Which of the equal parts of a length holds the place, counted from 0; nothing outside the length.
std::optional<int> PartAt(double place, double length, int parts) noexcept {
    const double part = place / (length / parts);
    return part >= 0 && part < parts ? std::optional(static_cast<int>(part)) : std::nullopt;
}

std::optional<int> KeyInFirstRow(double x, double width) noexcept {
    const std::optional<int> column = PartAt(x, width, unitsPerRow);
    // Backspace is two units wide; the hidden key that stands before it is never reached.
    return column && *column >= 13 ? keys::backspace : column ? std::optional(*column + 1) : std::nullopt;
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
    const std::optional<int> column = PartAt(x - leftKeyEnds, middleWidth, row.middleUnits);
    return column ? std::optional(row.firstMiddleKey + *column) : std::nullopt;
}

} // namespace

std::optional<int> KeyUnderPoint(double xTwips, double yTwips, double widthTwips, double heightTwips) noexcept {
    if (!(widthTwips > 0 && heightTwips > 0)) {
        return std::nullopt;
    }
    const std::optional<int> row = PartAt(yTwips, heightTwips, rowCount);
    if (!row) {
        return std::nullopt;
    }
    const double unit = WholeTwips(widthTwips / unitsPerRow);
    switch (*row) {
    case 0: return KeyInFirstRow(xTwips, widthTwips);
    case 1: return KeyInFramedRow(secondRow, xTwips, widthTwips, unit);
    case 2: return KeyInFramedRow(thirdRow, xTwips, widthTwips, unit);
    case 3: return KeyInFramedRow(fourthRow, xTwips, widthTwips, unit);
    default:
        return xTwips >= Edge(spaceBegins, unit) && xTwips <= Edge(spaceEnds, unit) ? std::optional(keys::space)
                                                                                    : std::nullopt;
    }
}

} // namespace vextrel
