#pragma once

#include "win32/Windows.h"

#include <tpcshrd.h>

namespace vextrel {

/// What a window answers to WM_TABLET_QUERYSYSTEMGESTURESTATUS so that a finger or pen presses as soon as it is down:
/// the system waits for no longer press, which would be a right click, and takes no stroke for a command.
inline constexpr LRESULT pressesAtOnce = TABLET_DISABLE_PRESSANDHOLD | TABLET_DISABLE_PENTAPFEEDBACK |
                                         TABLET_DISABLE_PENBARRELFEEDBACK | TABLET_DISABLE_FLICKS;

/// Keeps the system from marking where fingers touch a window, which whoever looks on would remember, and from
/// scrolling it: every move comes as one of the mouse. A system that knows neither goes on as it is.
void TakeTouchAsMouse(HWND window) noexcept;

} // namespace vextrel
