#pragma once

#include "win32/Windows.h"

namespace vextrel {

/// Has the system tell a window when the session is locked, left or taken up (WM_WTSSESSION_CHANGE), or no longer. A
/// system that cannot tells nothing.
void WatchSession(HWND window, bool watch) noexcept;

} // namespace vextrel
