#pragma once

#include "win32/Windows.h"

namespace vextrel {

/// The pages of the maker's site that the program can open.
enum class WebPage { Homepage, Donate };

/// Opens a page in the user's browser. Whether that works is not looked at.
/// @param owner the main window, for messages that the system may show.
void OpenWebPage(HWND owner, WebPage page);

} // namespace vextrel
