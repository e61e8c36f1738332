#pragma once

#include "win32/Windows.h"

#include <array>

namespace vextrel {

/// The height in pixels that the status bar's font wants: the control would size itself only at the bottom of its
/// parent.
[[nodiscard]] int StatusBarHeightFor(HFONT font, int dpi) noexcept;

/// Shows three texts, each in a pane with room for it; what room is left, or missing, the panes share.
/// @param font the status bar's.
void ShowStatusTexts(HWND statusBar, HFONT font, int dpi, const std::array<const wchar_t*, 3>& texts) noexcept;

} // namespace vextrel
