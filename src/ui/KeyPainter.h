#pragma once

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
};

/// Draws a key in system colours, so that high-contrast themes hold. A caption that is too wide shrinks.
void PaintKey(HDC context, const RECT& area, const KeyLook& look, FontCache& fonts);

} // namespace vextrel
