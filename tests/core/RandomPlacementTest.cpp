#include "core/RandomPlacement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>
#include <tuple>
#include <vector>

namespace vextrel {
namespace {

RandomPlaceInput FullHd() {
    RandomPlaceInput input;
    input.screenWidthTwips = 1920 * 15;
    input.screenHeightTwips = 1080 * 15;
    input.oldHeightTwips = 4000;
    input.toolbarHeightTwips = 420;
    input.statusBarHeightTwips = 330;
    return input;
}

double Covariance(const std::vector<double>& a, const std::vector<double>& b) {
    const auto n = static_cast<double>(a.size());
    const auto mean = [n](const std::vector<double>& x) { return std::accumulate(x.begin(), x.end(), 0.0) / n; };
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0) / n - mean(a) * mean(b);
}

double Correlation(const std::vector<double>& a, const std::vector<double>& b) {
    return Covariance(a, b) / std::sqrt(Covariance(a, a) * Covariance(b, b));
}

TEST(RandomPlacement, SizesAndPlacesFollowTheFormula) {
    const struct {
        const char* name;
        double screenWidth, twipsPerPixel, widthDraw, topDraw, leftDraw;
        RandomPlace expected;
    } rows[] = {
        // (5500 - 700) / 15 / 15 = 21.3 pixels
        {"narrowest, nearest corner", 28800, 15, 0, 0, 0, {400, 400, 5425, 420 + 5 * 315 + 1950 + 330, 315}},
        // 5500 + 8900 / 2 = 9950; 9250 / 15 / 15 = 41.1 pixels
        {"middle", 28800, 15, 0.5, 0.5, 0.5, {9087.5, 5750, 9925, 420 + 5 * 615 + 1950 + 330, 615}},
        // 13700 / 15 / 15 = 60.9 pixels: rounding may pass half the screen's width, which stands.
        {"widest", 28800, 15, 0.99999, 0, 0, {400, 400, 14425, 420 + 5 * 915 + 1950 + 330, 915}},
        {"30.5 pixels are 30", 28800, 12, 690.0 / 8900, 0, 0, {400, 400, 6100, 420 + 5 * 360 + 1950 + 330, 360}},
        {"31.5 pixels are 32", 28800, 12, 870.0 / 8900, 0, 0, {400, 400, 6460, 420 + 5 * 384 + 1950 + 330, 384}},
        {"322.5 twips are 322", 28800, 7.5, 0, 0, 0, {400, 400, 5530, 420 + 5 * 322 + 1950 + 330, 322}},
        {"narrow screen", 9600, 15, 1, 0, 0, {400, 400, 4750, 420 + 5 * 270 + 1950 + 330, 270}},
    };
    for (const auto& row : rows) {
        RandomPlaceInput input = FullHd();
        input.screenWidthTwips = row.screenWidth;
        input.twipsPerPixel = row.twipsPerPixel;
        input.widthDraw = row.widthDraw;
        input.topDraw = row.topDraw;
        input.leftDraw = row.leftDraw;
        const RandomPlace placement = RandomisePlacement(input);
        EXPECT_DOUBLE_EQ(placement.leftTwips, row.expected.leftTwips) << row.name;
        EXPECT_DOUBLE_EQ(placement.topTwips, row.expected.topTwips) << row.name;
        EXPECT_EQ(placement.widthTwips, row.expected.widthTwips) << row.name;
        EXPECT_EQ(placement.heightTwips, row.expected.heightTwips) << row.name;
        EXPECT_EQ(placement.keyWidthTwips, row.expected.keyWidthTwips) << row.name;
        EXPECT_EQ(KeyUnitTwips(placement.widthTwips, row.twipsPerPixel), placement.keyWidthTwips) << row.name;
    }
}

TEST(RandomPlacement, ASmallestKeyMovesTheDrawIntoItsPartOfTheRange) {
    const struct {
        const char* name;
        double screenWidth, twipsPerPixel, smallest, narrowest, middle, widest; // twips; of the key unit
    } rows[] = {
        {"narrower than any", 28800, 15, 300, 315, 615, 915},
        {"30 pixels", 28800, 15, 450, 450, 675, 915},
        {"37.5 pixels are 38", 28800, 12, 450, 456, 684, 912},
        {"wider than the widest", 28800, 15, 32767 * 15, 915, 915, 915},
        {"narrow screen", 9600, 15, 0, 315, 300, 270},
        {"wider than all of a narrow screen's", 9600, 15, 32767 * 15, 315, 315, 315},
    };
    for (const auto& row : rows) {
        RandomPlaceInput input = FullHd();
        input.screenWidthTwips = row.screenWidth;
        input.twipsPerPixel = row.twipsPerPixel;
        input.smallestKeyTwips = row.smallest;
        for (const auto& [draw, expected] : {std::pair(0.0, row.narrowest), {0.5, row.middle}, {0.99999, row.widest}}) {
            input.widthDraw = draw;
            EXPECT_EQ(RandomisePlacement(input).keyWidthTwips, expected) << row.name << ", " << draw;
        }
    }
}

TEST(RandomPlacement, TenThousandDrawsStayInBoundsAndTellNothingAboutEachOther) {
    std::mt19937_64 generator(20260101);
    std::uniform_real_distribution<double> draw(0, 1);
    RandomPlaceInput input = FullHd();
    std::vector<double> widths;
    std::vector<double> lefts; // as a share of the room that the width leaves
    std::vector<double> tops;
    for (int i = 0; i < 10000; ++i) {
        input.widthDraw = draw(generator);
        input.topDraw = draw(generator);
        input.leftDraw = draw(generator);
        const RandomPlace p = RandomisePlacement(input);
        ASSERT_GE(p.widthTwips, 5500 - 15 * 7.5); // the unit is rounded by up to half a pixel
        ASSERT_LE(p.widthTwips, input.screenWidthTwips / 2 + 15 * 7.5);
        ASSERT_EQ(std::fmod(p.keyWidthTwips, 15), 0);
        ASSERT_GE(p.leftTwips, 400);
        ASSERT_LE(p.leftTwips + p.widthTwips, input.screenWidthTwips - 1100);
        ASSERT_GE(p.topTwips, 400);
        ASSERT_LE(p.topTwips + input.oldHeightTwips, input.screenHeightTwips - 1100);
        widths.push_back(p.widthTwips);
        lefts.push_back((p.leftTwips - 400) / (input.screenWidthTwips - p.widthTwips - 1500));
        tops.push_back(p.topTwips);
    }
    EXPECT_LT(std::abs(Correlation(widths, lefts)), 0.05);
    EXPECT_LT(std::abs(Correlation(widths, tops)), 0.05);
    EXPECT_LT(std::abs(Correlation(lefts, tops)), 0.05);
}

TEST(RandomPlacement, AWindowOfAnySizeGetsItsTitleBarIntoTheWorkArea) {
    constexpr Rect work{3440, 40, 4464, 728}; // of a small monitor beside a wide one; taskbar above and below
    const std::tuple<const char*, Rect, Point> rows[] = {
        {"inside", {3500, 100, 4000, 400}, {3500, 100}},   {"fills it", work, {3440, 40}},
        {"below", {3500, 500, 4000, 800}, {3500, 428}},    {"above", {3500, -70, 4000, 230}, {3500, 40}},
        {"left", {3300, 100, 3800, 400}, {3440, 100}},     {"right", {4000, 100, 4500, 400}, {3964, 100}},
        {"too high", {3500, -200, 4000, 700}, {3500, 40}}, {"too wide", {3000, 100, 5000, 400}, {3440, 100}},
    };
    for (const auto& [name, window, expected] : rows) {
        const Point place = PlaceInside(work, window);
        EXPECT_TRUE(place.x == expected.x && place.y == expected.y) << name;
    }
}

TEST(RandomPlacement, ATitleBarIsWithinReachWhereEnoughOfItLies) {
    const std::pair<Point, bool> places[] = {{{100, 100}, true},   {{100, -10}, true},   {{100, -11}, false},
                                             {{100, 1030}, true},  {{100, 1031}, false}, {{-520, 100}, true},
                                             {{-521, 100}, false}, {{1840, 100}, true},  {{1841, 100}, false}};
    for (const auto& [place, expected] : places) {
        const Rect titleBar{place.x, place.y, place.x + 600, place.y + 20};
        EXPECT_EQ(IsWithinReach({0, 0, 1920, 1040}, titleBar), expected) << place.x << ", " << place.y;
    }
}

} // namespace
} // namespace vextrel
