#pragma once

namespace vextrel {

struct Point {
    int x = 0;
    int y = 0;
};

struct Size {
    int width = 0;
    int height = 0;
};

/// Half-open: right and bottom are the first pixel that no longer belongs to it.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    friend constexpr bool operator==(Rect, Rect) = default;

    [[nodiscard]] constexpr int Width() const noexcept { return right - left; }
    [[nodiscard]] constexpr int Height() const noexcept { return bottom - top; }
    [[nodiscard]] constexpr bool IsEmpty() const noexcept { return right <= left || bottom <= top; }
    [[nodiscard]] constexpr bool Contains(Point p) const noexcept {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
};

/// A twip is 1/1440 inch. Not a whole number at every DPI (168 DPI: 8.57...).
[[nodiscard]] constexpr double TwipsPerPixel(int dpi) noexcept {
    return 1440.0 / dpi;
}

[[nodiscard]] constexpr double TwipsFromPixels(double px, int dpi) noexcept {
    return px * TwipsPerPixel(dpi);
}

/// Rounds to the nearest pixel, halves away from zero, as window placement wants it.
[[nodiscard]] constexpr int PixelsFromTwips(double twips, int dpi) noexcept {
    const double px = twips * dpi / 1440.0;
    return static_cast<int>(px < 0 ? px - 0.5 : px + 0.5);
}

} // namespace vextrel
