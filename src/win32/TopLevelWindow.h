#pragma once

#include "win32/Windows.h"

#include <cstdint>
#include <optional>

namespace vextrel {

/// Whether a window belongs to this process. None belongs to nobody.
[[nodiscard]] bool IsOurs(HWND window) noexcept;
/// The monitor that shows most of an area, or is nearest to it.
[[nodiscard]] MONITORINFO MonitorOf(const RECT& area) noexcept;
/// Shows and activates a window. To the first window that is shown otherwise, the system does what a shortcut says.
void ShowAsItIs(HWND window) noexcept;

/// Makes a window layered and gives it the alpha. Without an alpha nothing is done at all, style included: a layered
/// window that never got one is invisible. Failures are ignored.
void SetLayeredTransparency(HWND window, std::optional<std::uint8_t> alpha) noexcept;

/// Adds or removes WS_EX_TRANSPARENT: whether the pointer passes through the window to what lies beneath.
void SetClickThrough(HWND window, bool clickThrough) noexcept;

/// Puts a window into the topmost band or takes it out, without moving it.
void SetTopmost(HWND window, bool topmost) noexcept;
[[nodiscard]] bool IsTopmost(HWND window) noexcept;
/// Whether the one top-level window lies above the other.
[[nodiscard]] bool IsAbove(HWND upper, HWND lower) noexcept;
/// Like SetTopmost, without activating anything and without touching its owner and what it owns.
void SetTopmostAlone(HWND window, bool topmost) noexcept;
/// To the top of the topmost band or of the one below it, as alone as that.
void RaiseAlone(HWND window, bool topmost) noexcept;

/// Has the system tell a window when the session is locked, left or taken up (WM_WTSSESSION_CHANGE), or no longer. A
/// system that cannot tells nothing.
void WatchSession(HWND window, bool watch) noexcept;

} // namespace vextrel
