#include "protect/HitTest.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vextrel {
namespace {

TEST(HitTest, EdgesBelongToTheOuterKeys) {
    // In a layer of 15 x 5 units of 320 the rows' outer keys end at 1.4 and 13.4, 1.8 and 12.8, 2.2 and 12.2 units, and
    // the space bar lies from 3.8 to 9.8. 0: no key.
    const struct {
        double x, y;
        int key;
    } rows[] = {{0, 0, 1},          {-0.01, 0, 0},     {320, 0, 2},        {4000, 10, 13},    {4160, 10, 15},
                {4768, 10, 15},     {4800, 10, 0},     {100, -0.01, 0},    {100, 1600, 0},    {0, 320, 16},
                {448, 330, 16},     {448.01, 330, 17}, {4287.99, 330, 28}, {4288, 330, 65},   {576, 650, 30},
                {576.01, 650, 31},  {4096, 650, 29},   {704, 970, 42},     {704.01, 970, 43}, {3904, 970, 53},
                {1215.99, 1290, 0}, {1216, 1290, 57},  {3136, 1290, 57},   {3136.01, 1290, 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(KeyUnderPoint(row.x, row.y, 4800, 1600).value_or(0), row.key) << row.x << ", " << row.y;
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
