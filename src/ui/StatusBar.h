#pragma once

#include "win32/Windows.h"

#include <array>
#include <string>

namespace vextrel {

/// The height in pixels that the status bar's font wants: the control would size itself only at the bottom of its
/// parent.
[[nodiscard]] int StatusBarHeightFor(HFONT font, int dpi) noexcept;

/// Shows three texts, each in a pane with room for it; what room is left the panes share. Where room is missing the
/// texts become brief, and the longest ends in dots if that is not enough. @param font the status bar's.
void ShowStatusTexts(HWND statusBar, HFONT font, int dpi, std::array<std::wstring, 3> texts);

} // namespace vextrel
