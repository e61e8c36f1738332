#pragma once

#include "win32/Windows.h"

namespace vextrel {

/// What a password box has to offer when its context menu opens.
struct BoxMenuState {
    bool masked = true; ///< nothing can be copied, cut or undone then
    bool empty = true;
    bool selected = false;
    bool undoable = false;
};

/// Shows the context menu of a password box and waits for the choice. Its window's menu loop tells that a menu is open.
/// @param screen where, in pixels; -1, -1 when the keyboard asked for it.
/// @return the message to send to the box (WM_UNDO, WM_CUT, WM_COPY, WM_PASTE, WM_CLEAR, or EM_SETSEL for everything);
/// 0 for none.
[[nodiscard]] UINT TrackBoxMenu(HWND box, POINT screen, BoxMenuState state) noexcept;

} // namespace vextrel
