#include "core/KeyGrid.h"
#include "core/RandomPlacement.h"
#include "core/WindowGeometry.h"

#include "Each.h"

#include <cmath>
#include <vector>

using namespace vextrel;

constexpr double frameTwips = 240; // of a window of current Windows; frame, title bar and menu are 890 high

static const std::vector<std::vector<int>> keyRows{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15},
                                                   {16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 65},
                                                   {30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 29},
                                                   {42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53},
                                                   {57}};

static WindowGeometryInput RandomlySized(double outerTwips, int dpi, int toolbar, int labelText = 0) {
    const int statusBar = PixelsFromTwips(330, dpi);
    const double outerHeight = WindowHeightTwips(KeyUnitTwips(outerTwips, TwipsPerPixel(dpi)),
                                                 TwipsFromPixels(toolbar, dpi), TwipsFromPixels(statusBar, dpi));
    return {outerTwips - frameTwips, outerHeight - 890, frameTwips, dpi, toolbar, statusBar, labelText};
}

/// The window with rows without gap or overlap, all inside the client area, and keys that are hit where they are drawn.
static WindowGeometry SoundGeometry(const WindowGeometryInput& input) {
    const WindowGeometry g = GeometryOfWindow(input);
    const Rect area = g.keyArea;
    const int clientRight = PixelsFromTwips(input.clientWidthTwips, input.dpi);
    EXPECT_TRUE(area.left >= 0 && std::abs(clientRight - area.right - area.left) <= 1);
    EXPECT_TRUE(area.Width() == 15 * g.keyUnitPx && area.Height() == 5 * g.keyHeightPx);
    EXPECT_LT(area.bottom, PixelsFromTwips(input.clientHeightTwips, input.dpi) - input.statusBarHeightPx);
    // The hit test knows whole twips only: where a pixel is none, its edges lie up to a pixel further off.
    const int edge = 1440 % input.dpi == 0 ? 1 : 2;
    const double factor = TwipsPerPixel(input.dpi);
    const auto keyAt = [&](int x, int y) {
        return KeyUnderPoint((x - area.left) * factor, (y - area.top) * factor, area.Width() * factor,
                             area.Height() * factor);
    };
    int top = area.top;
    for (const auto& row : keyRows) {
        int left = row.front() == 57 ? g.keys[57].left : area.left;
        for (const int key : row) {
            const Rect rect = g.keys[static_cast<std::size_t>(key)];
            EXPECT_EQ(rect, (Rect{left, top, std::max(rect.right, left + 1), top + g.keyHeightPx})) << key;
            left = rect.right;
            const int x = (rect.left + rect.right) / 2, y = (rect.top + rect.bottom) / 2;
            EXPECT_TRUE(keyAt(rect.left + edge, y) == key && keyAt(rect.right - 1 - edge, y) == key) << key;
            EXPECT_TRUE(keyAt(x, rect.top + 1) == key && keyAt(x, rect.bottom - 2) == key) << key;
        }
        EXPECT_TRUE(row.front() == 57 || left == area.right);
        top += g.keyHeightPx;
    }
    const Rect box = g.passwordBox, label = g.hoverDelayLabel, slider = g.hoverDelaySlider;
    EXPECT_TRUE(box.top > input.toolbarHeightPx && label.top > box.bottom && area.top > label.bottom);
    EXPECT_TRUE(box.left == area.left && box.right == area.right && label.Width() > 0 && slider.Width() > 0);
    EXPECT_EQ(label, (Rect{area.left, label.top, slider.left, slider.bottom}));
    const int half = area.right - slider.right;
    EXPECT_NEAR(half, slider.right - area.left + 10.0 * input.dpi / 96, 1.5) << "between the halves";
    EXPECT_EQ(g.transparencyLabel, (Rect{half + area.left, label.top, half + label.right, label.bottom}));
    EXPECT_EQ(g.transparencySlider, (Rect{half + slider.left, label.top, area.right, label.bottom}));
    return g;
}

TEST(WindowGeometry, EveryWidthAtEveryDpiIsSoundAndAShortageShrinksTheBoxFirst) {
    for (const int dpi : {96, 120, 144, 168, 192}) {
        SCOPED_TRACE(dpi);
        for (int px = PixelsFromTwips(5500, dpi); px <= 3840 && !HasFailure(); ++px) {
            SCOPED_TRACE(px);
            const int toolbar = px % 2 * 28 * dpi / 96;
            const WindowGeometry g = SoundGeometry(RandomlySized(TwipsFromPixels(px, dpi), dpi, toolbar));
            EXPECT_LE(std::abs(g.keyHeightPx - g.keyUnitPx), 1 + dpi / 96) << "keys look square";
        }
        for (const int toolbar : {0, 28 * dpi / 96}) {
            const Size smallest = MinimumClientSizePx(frameTwips, dpi, toolbar, 22 * dpi / 96);
            const double width = TwipsFromPixels(smallest.width, dpi), height = TwipsFromPixels(smallest.height, dpi);
            WindowGeometryInput input{width, height, frameTwips, dpi, toolbar, 22 * dpi / 96};
            const WindowGeometry low = SoundGeometry(input);
            EXPECT_TRUE(low.keyUnitPx == 16 * dpi / 96 && low.keyHeightPx == 16 * dpi / 96);
            input.clientHeightTwips += 5 * TwipsFromPixels(low.keyHeightPx, dpi) + 75;
            const WindowGeometry taller = SoundGeometry(input);
            EXPECT_TRUE(taller.keyHeightPx == 2 * low.keyHeightPx && taller.keyUnitPx == low.keyUnitPx &&
                        taller.passwordBox.Height() > low.passwordBox.Height());
        }
        // The sliders' labels keep their usual width or their text's, and leave the sliders some.
        const double narrowest = TwipsFromPixels(MinimumClientSizePx(frameTwips, dpi, 0, 0).width, dpi) + frameTwips;
        const std::tuple<double, int, int> labels[] = {
            {10000, 66, 70}, {10000, 90, 90}, {narrowest, 40, 57}, {narrowest, 66, 66}, {narrowest, 300, 95}};
        for (const auto& [width, text96, label96] : labels) {
            const Rect label = SoundGeometry(RandomlySized(width, dpi, 28, text96 * dpi / 96)).hoverDelayLabel;
            EXPECT_NEAR(label.Width() * 96.0 / dpi, label96, 1) << text96;
        }
    }
    EXPECT_EQ(GeometryOfWindow({}).keyArea.Width() + GeometryOfWindow({}).keyHeightPx, 0) << "minimised";
}

TEST(HitTest, EdgesBelongToTheOuterKeysAndAreKnownInSinglePrecision) {
    // In a layer of 15 x 5 units of 320 the rows' outer keys end at 1.4 and 13.4, 1.8 and 12.8, 2.2 and 12.2 units, and
    // the space bar lies from 3.8 to 9.8. 0: no key.
    // 1.4 x 321 = 449.4 and 13.4 x 321 = 4301.4 are less in single precision. A fifteenth of 4807.5 or 4822.5 is
    // rounded to an even unit. One that was rounded up leaves a sliver of no key before row 3's right one.
    const auto keyAt = [](double x, double y, double width) { return KeyUnderPoint(x, y, width, 1600).value_or(0); };
    const std::tuple<double, double, int> rows[] = {
        {0, 0, 1},          {-0.01, 0, 0},     {100, -0.01, 0},    {4800, 10, 0},     {100, 1600, 0},
        {448, 330, 16},     {448.01, 330, 17}, {4287.99, 330, 28}, {4288, 330, 65},   {576, 650, 30},
        {576.01, 650, 31},  {4096, 650, 29},   {704, 970, 42},     {704.01, 970, 43}, {3904, 970, 53},
        {1215.99, 1290, 0}, {1216, 1290, 57},  {3136, 1290, 57},   {3136.01, 1290, 0}};
    for (const auto& [x, y, key] : rows) {
        EXPECT_EQ(keyAt(x, y, 4800), key) << x << ", " << y;
    }
    EXPECT_TRUE(keyAt(449.39999, 330, 4815) == 16 && keyAt(449.399995, 330, 4815) == 17);
    EXPECT_TRUE(keyAt(4301.39995, 330, 4815) == 65 && keyAt(448.5, 330, 4807.5) == 17);
    EXPECT_TRUE(keyAt(3975.1, 330, 4807.5) == 27 && keyAt(450.5, 330, 4822.5) == 16);
    EXPECT_EQ(keyAt(4722.2, 650, 5528.57142), 0);
    for (const double size : {0.0, -100.0, std::nan("")}) {
        EXPECT_FALSE(KeyUnderPoint(0, 0, size, 1600) || KeyUnderPoint(0, 0, 4800, size)) << size;
    }
}

TEST(RandomPlacement, SizesAndPlacesFollowTheFormula) {
    // Half-way: 9250 / 15 / 15 = 41.1 pixels. 30.5, 31.5 and 37.5 pixels are 30, 32 and 38; 322.5 twips are 322. Of a
    // narrow screen the range runs downwards. A smallest key is at most the widest that there is.
    constexpr double huge = 32767 * 15;
    const std::tuple<double, double, double, double, double> rows[] = {
        {28800, 12, 0, 690.0 / 8900, 360}, {9600, 15, huge, 0.5, 315}, {28800, 12, 450, 0, 456},
        {28800, 12, 0, 870.0 / 8900, 384}, {28800, 15, huge, 0, 915},  {28800, 7.5, 0, 0, 322},
        {28800, 15, 0, 0.99999, 915},      {9600, 15, 0, 0.5, 300},    {28800, 15, 300, 0, 315},
        {28800, 15, 450, 0.5, 675},        {28800, 15, 0, 0, 315},     {9600, 15, 0, 1, 270}};
    for (const auto& [screen, twipsPerPixel, smallestKey, widthDraw, keyWidth] : rows) {
        SCOPED_TRACE(testing::Message() << screen << ", " << smallestKey << ", " << widthDraw);
        const RandomPlace place =
            RandomisePlacement({screen, 16200, 4000, 420, 330, twipsPerPixel, smallestKey, widthDraw, 0.25, 0.75});
        const double width = 700 + 15 * keyWidth;
        EXPECT_EQ(place.keyWidthTwips, keyWidth);
        EXPECT_TRUE(KeyUnitTwips(width, twipsPerPixel) == keyWidth && place.widthTwips == width &&
                    place.heightTwips == 420 + 5 * keyWidth + 1950 + 330);
        EXPECT_DOUBLE_EQ(place.topTwips, 400 + (16200 - 4000 - 1500) * 0.25);
        EXPECT_DOUBLE_EQ(place.leftTwips, 400 + (screen - width - 1500) * 0.75);
    }
}

TEST(RandomPlacement, AWindowOfAnySizeGetsItsTitleBarIntoTheWorkArea) {
    constexpr Rect work{3440, 40, 4464, 728}; // of a small monitor beside a wide one; taskbar above and below
    const auto place = [&](Rect window) {
        const Point at = PlaceInside(work, window);
        return std::to_wstring(at.x) + L" " + std::to_wstring(at.y);
    };
    // Filling it; below it on the left, above it on the right; too high, too wide.
    EXPECT_EQ(OfEach(place, work, Rect{3300, 500, 3800, 800}, Rect{4000, -70, 4500, 230}, Rect{3500, -200, 4000, 700},
                     Rect{3000, 100, 5000, 400}),
              L"3440 40|3440 428|3964 40|3500 40|3440 100|");
    const std::tuple<int, int, bool> places[] = {{1840, -10, true},  {100, -11, false},  {-520, 1030, true},
                                                 {100, 1031, false}, {-521, 100, false}, {1841, 100, false}};
    for (const auto& [x, y, reached] : places) {
        EXPECT_EQ(IsWithinReach({0, 0, 1920, 1040}, {x, y, x + 600, y + 20}), reached) << x << ", " << y;
    }
}
