#pragma once

#include "core/Geometry.h"
#include "win32/SystemLook.h"

#include <string_view>

namespace vextrel {

/// What a key looks like.
struct KeyLook {
    std::wstring_view caption; ///< as shown, ampersands single
    bool isCharacterKey = true;
    bool enabled = true;
    bool pushed = false;
    bool lit = false; ///< a modifier in effect
    int dpi = 96;
    int characterHeightPx = 0; ///< of a single character; other captions fit by themselves
};

/// The height for all single characters: at which the widest of them fits a key of one unit.
[[nodiscard]] int CharacterHeightPx(Size key, int dpi, std::wstring_view characters, FontCache& fonts);

/// Draws a key in system colours, so that high-contrast themes hold. A caption of several characters that is too wide
/// shrinks.
void PaintKey(HDC context, const RECT& area, const KeyLook& look, FontCache& fonts);

} // namespace vextrel
