#pragma once

#include "win32/handles.h"

#include <algorithm>
#include <map>

namespace vextrel {

/// Whether the user has switched a high-contrast theme on.
[[nodiscard]] bool IsHighContrast() noexcept;

/// Whether pictures drawn for light grounds have to be redrawn in the system's text colours: high contrast, or a dark
/// ground.
[[nodiscard]] bool PicturesFollowTextColour() noexcept;

/// The height of the message font's characters, without leading, at 96 DPI and as Windows has it unless the user wants
/// larger text: what lengths at 96 DPI are made for.
inline constexpr int usualFontHeight96 = 12;

/// Calls a function with a screen context in which a font is selected.
template <typename Use>
void WithFont(HFONT font, Use use) {
    const HDC screen = ::GetDC(nullptr);
    {
        const SelectScope selected(screen, font);
        use(screen);
    }
    ::ReleaseDC(nullptr, screen);
}

/// In pixels, of the characters without leading, as was asked for when the font was made.
[[nodiscard]] int CharacterHeightOf(HFONT font) noexcept;

/// The system's message font in the sizes that the window needs, kept for as long as the DPI stays.
class FontCache {
  public:
    /// The message font as the user has set it, for this DPI.
    [[nodiscard]] HFONT MessageFont(int dpi) { return Get(dpi, 0); }
    /// The same face at a height in pixels (of the characters, without leading).
    [[nodiscard]] HFONT Sized(int dpi, int heightPx) { return Get(dpi, std::max(heightPx, 1)); }
    /// A face with one width for all characters at that height, in which I, l, | and 1, O and 0 differ.
    [[nodiscard]] HFONT FixedPitch(int dpi, int heightPx) { return Get(dpi, -std::max(heightPx, 1)); }
    void Clear() noexcept { fonts_.clear(); }

  private:
    [[nodiscard]] HFONT Get(int dpi, int heightPx);
    std::map<std::pair<int, int>, UniqueFont> fonts_; ///< by DPI and height; 0: the user's own, below 0: of fixed pitch
};

} // namespace vextrel
