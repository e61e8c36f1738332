#include "core/WindowGeometry.h"

#include "core/KeyGrid.h"
#include "core/RandomPlacement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <tuple>
#include <vector>

namespace vextrel {
namespace {

constexpr int everyDpi[] = {96, 120, 144, 168, 192};
/// What a window of current Windows has beside its client area.
constexpr double frameTwips = 240;
constexpr double frameMenuAndTitleTwips = 890;

const std::vector<std::vector<int>> keyRows{
    {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15},
    {16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 65},
    {30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 29},
    {42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53},
    {57},
};

const Rect& KeyRect(const WindowGeometry& layout, int key) {
    return layout.keys[static_cast<std::size_t>(key)];
}

WindowGeometryInput RandomlySized(double outerWidthTwips, int dpi, bool toolbar = true) {
    WindowGeometryInput input;
    input.dpi = dpi;
    input.frameWidthTwips = frameTwips;
    input.clientWidthTwips = outerWidthTwips - frameTwips;
    input.toolbarHeightPx = toolbar ? PixelsFromTwips(420, dpi) : 0;
    input.statusBarHeightPx = PixelsFromTwips(330, dpi);
    input.clientHeightTwips =
        WindowHeightTwips(KeyUnitTwips(outerWidthTwips, TwipsPerPixel(dpi)),
                          TwipsFromPixels(input.toolbarHeightPx, dpi), TwipsFromPixels(input.statusBarHeightPx, dpi)) -
        frameMenuAndTitleTwips;
    return input;
}

/// Rows without gap or overlap, everything one below the other inside the client area, left and right edges aligned.
void ExpectSound(const WindowGeometry& l, const WindowGeometryInput& input) {
    const Rect client{0, 0, PixelsFromTwips(input.clientWidthTwips, input.dpi),
                      PixelsFromTwips(input.clientHeightTwips, input.dpi)};
    const int unit = l.keyUnitPx;
    const Rect area = l.keyArea;
    ASSERT_EQ(area.Width(), 15 * unit);
    ASSERT_EQ(area.Height(), 5 * l.keyHeightPx);
    ASSERT_LE(std::abs(client.right - area.right - area.left), 1);

    int top = area.top;
    for (const auto& row : keyRows) {
        int left = row.front() == 57 ? KeyRect(l, 57).left : area.left;
        for (const int key : row) {
            const Rect rect = KeyRect(l, key);
            ASSERT_EQ(rect, (Rect{left, top, rect.right, top + l.keyHeightPx})) << key;
            ASSERT_GT(rect.Width(), 0) << key;
            left = rect.right;
        }
        if (row.front() != 57) {
            ASSERT_EQ(left, area.right);
        }
        top += l.keyHeightPx;
    }
    const std::tuple<int, double, double> edges[] = {{17, 1.4, 2.4}, {65, 13.4, 15},   {29, 12.8, 15},
                                                     {42, 0, 2.2},   {52, 11.2, 12.2}, {57, 3.8, 9.8}};
    for (const auto& [key, leftUnits, rightUnits] : edges) {
        ASSERT_LE(std::abs(KeyRect(l, key).left - area.left - leftUnits * unit), 0.5 + 1e-9) << key;
        ASSERT_LE(std::abs(KeyRect(l, key).right - area.left - rightUnits * unit), 0.5 + 1e-9) << key;
    }
    for (int key = 1; key <= keyButtonCount; ++key) {
        ASSERT_EQ(KeyRect(l, key).IsEmpty(), !IsKeyShown(key)) << key;
    }

    ASSERT_GE(area.left, 0);
    ASSERT_LE(area.right, client.right);
    ASSERT_GT(l.passwordBox.top, input.toolbarHeightPx);
    ASSERT_GT(l.hoverDelayLabel.top, l.passwordBox.bottom);
    ASSERT_GT(area.top, l.hoverDelayLabel.bottom);
    ASSERT_LT(area.bottom, client.bottom - input.statusBarHeightPx);
    ASSERT_EQ(l.passwordBox.left, area.left);
    ASSERT_EQ(l.passwordBox.right, area.right);
    const Rect* sliderRow[] = {&l.hoverDelayLabel, &l.hoverDelaySlider, &l.transparencyLabel, &l.transparencySlider};
    int left = area.left;
    for (const Rect* rect : sliderRow) {
        ASSERT_GE(rect->left, left);
        ASSERT_FALSE(rect->IsEmpty());
        ASSERT_EQ(rect->top, l.hoverDelayLabel.top);
        ASSERT_EQ(rect->bottom, l.hoverDelayLabel.bottom);
        left = rect->right;
    }
    ASSERT_EQ(left, area.right);
    ASSERT_EQ(l.hoverDelaySlider.Width(), l.transparencySlider.Width());
    ASSERT_EQ(l.hoverDelayLabel.Width(), l.transparencyLabel.Width());
}

TEST(WindowGeometry, EveryWidthAtEveryDpiIsSound) {
    for (const int dpi : everyDpi) {
        const double widest = TwipsFromPixels(3840, dpi);
        for (double width = 5500; width <= widest; width += TwipsPerPixel(dpi)) {
            const WindowGeometryInput input = RandomlySized(width, dpi, std::fmod(width, 2) < 1);
            const WindowGeometry layout = GeometryOfWindow(input);
            ExpectSound(layout, input);
            ASSERT_FALSE(HasFatalFailure()) << width << " twips at " << dpi;
            // What random sizing leaves is room for keys that look square.
            ASSERT_LE(std::abs(layout.keyHeightPx - layout.keyUnitPx), 1 + dpi / 96) << width << " twips at " << dpi;
        }
    }
}

TEST(WindowGeometry, TheHitTestFindsTheKeyThatIsDrawnThere) {
    for (const int dpi : everyDpi) {
        const double factor = TwipsPerPixel(dpi);
        // The hit test knows whole twips only: where a pixel is none, its edges lie up to a pixel further off.
        const int edge = 1440 % dpi == 0 ? 1 : 2;
        for (double width = 5500; width <= TwipsFromPixels(3840, dpi); width += 15 * factor) {
            const WindowGeometry layout = GeometryOfWindow(RandomlySized(width, dpi));
            const Rect area = layout.keyArea;
            for (const auto& row : keyRows) {
                for (const int key : row) {
                    const Rect rect = KeyRect(layout, key);
                    const int middle = (rect.top + rect.bottom) / 2;
                    for (int x = rect.left + edge; x < rect.right - edge; ++x) {
                        ASSERT_EQ(KeyUnderPoint((x - area.left) * factor, (middle - area.top) * factor,
                                                area.Width() * factor, area.Height() * factor),
                                  key)
                            << "pixel " << x - rect.left << " of " << rect.Width() << ", unit " << layout.keyUnitPx
                            << " at " << dpi;
                    }
                    const int centre = (rect.left + rect.right) / 2;
                    for (const int y : {rect.top + 1, rect.bottom - 2}) {
                        ASSERT_EQ(KeyUnderPoint((centre - area.left) * factor, (y - area.top) * factor,
                                                area.Width() * factor, area.Height() * factor),
                                  key);
                    }
                }
            }
        }
    }
}

TEST(WindowGeometry, TheSmallestWindowKeepsEverythingAndAShortageShrinksTheBoxFirst) {
    for (const int dpi : everyDpi) {
        for (const int toolbar : {0, 28 * dpi / 96}) {
            WindowGeometryInput input;
            input.dpi = dpi;
            input.frameWidthTwips = frameTwips;
            input.toolbarHeightPx = toolbar;
            input.statusBarHeightPx = 22 * dpi / 96;
            const Size smallest = MinimumClientSizePx(frameTwips, dpi, toolbar, input.statusBarHeightPx);
            input.clientWidthTwips = TwipsFromPixels(smallest.width, dpi);
            input.clientHeightTwips = TwipsFromPixels(smallest.height, dpi);
            const WindowGeometry layout = GeometryOfWindow(input);
            ExpectSound(layout, input);
            EXPECT_EQ(layout.keyUnitPx, 16 * dpi / 96) << dpi;
            EXPECT_EQ(layout.keyHeightPx, 16 * dpi / 96) << dpi;

            input.clientHeightTwips += 5 * TwipsFromPixels(layout.keyHeightPx, dpi) + 75;
            const WindowGeometry taller = GeometryOfWindow(input);
            ExpectSound(taller, input);
            EXPECT_EQ(taller.keyHeightPx, 2 * layout.keyHeightPx);
            EXPECT_EQ(taller.keyUnitPx, layout.keyUnitPx);
            EXPECT_GT(taller.passwordBox.Height(), layout.passwordBox.Height());
        }
    }
    // The sliders' labels keep their usual width where their text fits, and their text else.
    const struct {
        bool smallest;
        int text96, label96;
    } labels[] = {{false, 66, 70}, {false, 90, 90}, {true, 40, 57}, {true, 66, 66}, {true, 300, 95}};
    for (const auto& row : labels) {
        for (const int dpi : {96, 144, 192}) {
            const int narrowest = MinimumClientSizePx(frameTwips, dpi, 0, 0).width;
            WindowGeometryInput input =
                RandomlySized(row.smallest ? TwipsFromPixels(narrowest, dpi) + frameTwips : 10000, dpi);
            input.labelTextPx = row.text96 * dpi / 96;
            const WindowGeometry layout = GeometryOfWindow(input);
            ExpectSound(layout, input);
            EXPECT_NEAR(layout.hoverDelayLabel.Width() * 96 / dpi, row.label96, 1) << dpi;
        }
    }
    // A window that is being minimised has no room at all.
    const WindowGeometry none = GeometryOfWindow({});
    EXPECT_EQ(none.keyUnitPx, 0);
    EXPECT_EQ(none.keyHeightPx, 0);
}

} // namespace
} // namespace vextrel
