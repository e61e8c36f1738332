#pragma once

#include "win32/Windows.h"

namespace vextrel::MoveHook {

/// Puts the hook procedure in place of a form's window procedure. The main window's moves and size changes then reach
/// the controller; the layer is hooked alike, though nothing of it is acted upon. Nothing happens when the program is
/// built with HooksDisabled.
void InstallHook(HWND window) noexcept;
/// Puts the previous procedure back. Harmless for a window that is not hooked.
void RemoveHook(HWND window) noexcept;

/// Tells the hook which window to act for, from when the application object exists until it goes (null).
void SetActingWindow(HWND mainWindow) noexcept;

} // namespace vextrel::MoveHook
