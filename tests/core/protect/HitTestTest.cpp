#include "protect/HitTest.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vextrel {
namespace {

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
    // What lies between row 2's outer keys is 3847.5 there, hence 3848: its last key begins at 3975.33, not at 3974.88.
    EXPECT_EQ(KeyUnderPoint(3975.1, 330, 4807.5, 1600), 27);
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
