#include "protect/HitTest.h"

#include "base/Geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

namespace vextrel {
namespace {

// The rule once more, in another way: every key as the interval that it owns, asked one after the other. Nothing is
// divided and nothing floored, so that a slip in the columns' arithmetic shows.

/// Nearest whole number, halves to even, through the processor's own rounding.
double Whole(double value) {
    return std::nearbyint(value);
}

double Single(double value) {
    const volatile float narrowed = static_cast<float>(value);
    return static_cast<double>(narrowed);
}

bool OwnsColumn(double x, double origin, double step, int column) {
    return (x - origin) / step >= column && (x - origin) / step < column + 1;
}

std::optional<int> FramedRow(double x, double w, double leftUnits, double rightUnits, int columns, int leftKey,
                             int rightKey, int firstKey) {
    const double u = Whole(w / 15);
    if (!(x > Single(leftUnits * u))) {
        return leftKey;
    }
    if (!(x < Single(rightUnits * u))) {
        return rightKey;
    }
    const double step = Whole(w - (15 - columns) * u) / columns;
    for (int column = 0; column < columns; ++column) {
        if (OwnsColumn(x, Single(leftUnits * u), step, column)) {
            return firstKey + column;
        }
    }
    return std::nullopt;
}

std::optional<int> BruteForce(double x, double y, double w, double h) {
    int row = 0;
    for (int candidate = 1; candidate <= 5; ++candidate) {
        if (OwnsColumn(y, 0, h / 5, candidate - 1)) {
            row = candidate;
        }
    }
    switch (row) {
    case 1:
        for (int column = 0; column < 15; ++column) {
            if (OwnsColumn(x, 0, w / 15, column)) {
                return column < 13 ? column + 1 : 15;
            }
        }
        return std::nullopt;
    case 2: return FramedRow(x, w, 1.4, 13.4, 12, 16, 65, 17);
    case 3: return FramedRow(x, w, 1.8, 12.8, 11, 30, 29, 31);
    case 4: return FramedRow(x, w, 2.2, 12.2, 10, 42, 53, 43);
    case 5: {
        const double u = Whole(w / 15);
        return x >= Single(3.8 * u) && x <= Single(9.8 * u) ? std::optional(57) : std::nullopt;
    }
    default: return std::nullopt;
    }
}

TEST(HitTest, EveryPixelOfManyLayersGivesTheKeyOfTheRule) {
    struct Layer {
        int dpi, unitPx, keyHeightPx;
    };
    const Layer layers[] = {{96, 16, 16},  {96, 21, 19},  {96, 61, 40},  {120, 27, 28}, {144, 32, 30},
                            {144, 61, 33}, {168, 37, 36}, {168, 43, 39}, {192, 43, 43}, {192, 61, 41}};
    for (const Layer& layer : layers) {
        const double factor = TwipsPerPixel(layer.dpi);
        const double width = 15 * layer.unitPx * factor;
        const double height = 5 * layer.keyHeightPx * factor;
        for (int y = -1; y <= 5 * layer.keyHeightPx; ++y) {
            for (int x = -1; x <= 15 * layer.unitPx; ++x) {
                ASSERT_EQ(KeyUnderPoint(x * factor, y * factor, width, height),
                          BruteForce(x * factor, y * factor, width, height))
                    << x << ", " << y << " at " << layer.dpi << " DPI, unit " << layer.unitPx;
            }
        }
    }
}

TEST(HitTest, WidthsThatAreNoMultipleOfAUnitGiveTheKeyOfTheRule) {
    // Every twip of one line per row, among them widths whose fifteenth is a half.
    for (const double width : {4800.0, 5497.5, 6007.0, 6008.0, 7222.5, 7237.5, 9999.99, 14401.0}) {
        for (int row = 0; row < 5; ++row) {
            for (double x = -1; x <= width + 1; x += 0.5) {
                ASSERT_EQ(KeyUnderPoint(x, row * 300 + 150, width, 1500), BruteForce(x, row * 300 + 150, width, 1500))
                    << x << " of " << width << " in row " << row + 1;
            }
        }
    }
}

TEST(HitTest, EdgesBelongToTheOuterKeys) {
    constexpr double w = 4800; // a unit of 320
    constexpr double h = 1600;
    const struct {
        const char* name;
        double x, y;
        std::optional<int> key;
    } rows[] = {
        {"first pixel", 0, 0, 1},
        {"left of row 1", -0.01, 0, std::nullopt},
        {"second key begins", 320, 0, 2},
        {"thirteenth column", 12.5 * 320, 10, 13},
        {"fourteenth column", 13 * 320, 10, 15},
        {"fifteenth column", 14.9 * 320, 10, 15},
        {"right of row 1", w, 10, std::nullopt},
        {"above", 100, -0.01, std::nullopt},
        {"below", 100, h, std::nullopt},
        {"row 2 begins", 0, 320, 16},
        {"1.4 units", 448, 330, 16},
        {"beyond 1.4 units", 448.01, 330, 17},
        {"before 13.4 units", 4287.99, 330, 28},
        {"13.4 units", 4288, 330, 65},
        {"1.8 units", 576, 650, 30},
        {"beyond 1.8 units", 576.01, 650, 31},
        {"12.8 units", 4096, 650, 29},
        {"2.2 units", 704, 970, 42},
        {"beyond 2.2 units", 704.01, 970, 43},
        {"12.2 units", 3904, 970, 53},
        {"before 3.8 units", 1215.99, 1290, std::nullopt},
        {"3.8 units", 1216, 1290, 57},
        {"9.8 units", 3136, 1290, 57},
        {"beyond 9.8 units", 3136.01, 1290, std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(KeyUnderPoint(row.x, row.y, w, h), row.key) << row.name;
    }
}

TEST(HitTest, EdgesAreKnownInSinglePrecisionAndUnitsInWholeTwips) {
    // 1.4 x 321 = 449.4, in single precision 449.3999938...
    EXPECT_EQ(KeyUnderPoint(449.39999, 330, 4815, 1600), 16);
    EXPECT_EQ(KeyUnderPoint(449.399995, 330, 4815, 1600), 17);
    // 13.4 x 321 = 4301.4, in single precision 4301.39990...
    EXPECT_EQ(KeyUnderPoint(4301.39995, 330, 4815, 1600), 65);
    // A fifteenth of 4807.5 is 320.5, hence 320; of 4822.5 it is 321.5, hence 322.
    EXPECT_EQ(KeyUnderPoint(448.5, 330, 4807.5, 1600), 17);
    EXPECT_EQ(KeyUnderPoint(450.5, 330, 4822.5, 1600), 16);
    // A unit that was rounded up pushes row 3's right key outwards: the sliver before it belongs to no key.
    EXPECT_EQ(KeyUnderPoint(12.8 * 369 - 1, 650, 368.57142857 * 15, 1600), std::nullopt);
}

TEST(HitTest, AnEmptyLayerHasNoKeys) {
    for (const double size : {0.0, -100.0, std::nan("")}) {
        EXPECT_EQ(KeyUnderPoint(0, 0, size, 1600), std::nullopt);
        EXPECT_EQ(KeyUnderPoint(0, 0, 4800, size), std::nullopt);
    }
}

} // namespace
} // namespace vextrel
