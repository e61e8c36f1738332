#include "core/KeyGrid.h"

#include "core/Geometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vextrel {
namespace {

// The rule once more, in another way: each key as the interval that it owns, asked one after the other. Nothing is
// floored, so that a slip in the columns' arithmetic shows.

struct Interval {
    int key;
    double begins;
    double ends;
};

/// Keys of equal width side by side.
void AddColumns(std::vector<Interval>& row, int firstKey, int count, double left, double width) {
    for (int column = 0; column < count; ++column) {
        row.push_back({firstKey + column, left + column * width, left + (column + 1) * width});
    }
}

std::vector<std::vector<Interval>> KeysOfLayer(double width) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double unit = std::nearbyint(width / 15); // halves to even
    const auto edge = [unit](double units) {
        const volatile float rounded = static_cast<float>(units * unit);
        return static_cast<double>(rounded);
    };
    const auto above = [infinity](double x) { return std::nextafter(x, infinity); };
    std::vector<std::vector<Interval>> rows(5);
    AddColumns(rows[0], 1, 13, 0, width / 15);
    rows[0].push_back({15, 13 * (width / 15), 15 * (width / 15)});
    const struct {
        double left, right;
        int columns, leftKey, rightKey, firstKey;
    } framed[] = {{1.4, 13.4, 12, 16, 65, 17}, {1.8, 12.8, 11, 30, 29, 31}, {2.2, 12.2, 10, 42, 53, 43}};
    for (std::size_t i = 0; i < std::size(framed); ++i) {
        const auto& f = framed[i];
        // The outer keys come first, since a point on two keys is theirs.
        rows[i + 1] = {{f.leftKey, -infinity, above(edge(f.left))}, {f.rightKey, edge(f.right), infinity}};
        const double middle = std::nearbyint(width - (15 - f.columns) * unit);
        AddColumns(rows[i + 1], f.firstKey, f.columns, edge(f.left), middle / f.columns);
    }
    rows[4] = {{57, edge(3.8), above(edge(9.8))}};
    return rows;
}

int KeyAt(const std::vector<Interval>& row, double x) {
    const auto key =
        std::find_if(row.begin(), row.end(), [x](const Interval& i) { return x >= i.begins && x < i.ends; });
    return key == row.end() ? 0 : key->key;
}

void ExpectRule(double width, double height, double step, double yStep) {
    const std::vector<std::vector<Interval>> rows = KeysOfLayer(width);
    for (double y = -yStep; y <= height + yStep; y += yStep) {
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) {
            const auto index = static_cast<double>(&r - rows.data());
            return y >= index * (height / 5) && y < (index + 1) * (height / 5);
        });
        for (double x = -step; x <= width + step; x += step) {
            ASSERT_EQ(KeyUnderPoint(x, y, width, height).value_or(0), row == rows.end() ? 0 : KeyAt(*row, x))
                << x << ", " << y << " of " << width << " x " << height;
        }
    }
}

TEST(HitTest, EveryPixelOfManyLayersIsTheKeysOfTheRule) {
    const struct {
        int dpi, unit, keyHeight; // pixels
    } layers[] = {{96, 16, 16},  {96, 21, 19},  {96, 61, 40},  {120, 27, 28},
                  {144, 32, 30}, {144, 61, 33}, {168, 43, 39}, {192, 61, 41}};
    for (const auto& layer : layers) {
        const double pixel = TwipsPerPixel(layer.dpi);
        ExpectRule(15 * layer.unit * pixel, 5 * layer.keyHeight * pixel, pixel, pixel);
    }
    // Widths that are no multiple of a unit, among them some whose fifteenth is a half; every half twip.
    for (const double width : {5497.5, 6007.0, 7222.5, 7237.5, 9999.99, 14401.0}) {
        ExpectRule(width, 1500, 0.5, 150);
    }
}

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
