#pragma once

#include "win32/SubclassedWindow.h"

#include <string>

namespace vextrel {

/// Of a window without its frame, from 0, 0.
[[nodiscard]] inline RECT ClientArea(HWND window) noexcept {
    RECT area{};
    ::GetClientRect(window, &area);
    return area;
}

/// Of a window with its frame, on the screen.
[[nodiscard]] inline RECT OuterArea(HWND window) noexcept {
    RECT area{};
    ::GetWindowRect(window, &area);
    return area;
}

inline void SetFont(HWND control, HFONT font, bool redraw) noexcept {
    Tell(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw ? TRUE : FALSE);
}

/// A text on a window of tool tips, as the system wants to be told of it. @param text outlives the result.
[[nodiscard]] TOOLINFOW ToolTipOf(HWND parent, UINT flags, HWND control, wchar_t* text) noexcept;
/// Shows a text on a window of tool tips while the pointer rests on a control.
void AddToolTip(HWND toolTips, HWND control, std::wstring text);

/// Paints into an edit control what it is for, in grey, smaller than usual where it would not fit otherwise.
void PaintCue(HWND box, HFONT usual, std::wstring_view cue) noexcept;

/// The small grey dot that stands in for the pointer, in the size that fits a DPI.
/// @return the system's arrow where it cannot be loaded.
[[nodiscard]] HCURSOR DotPointerForDpi(int dpi) noexcept;

/// Creates the box that receives synthesised keys while a layout is captured: it can take the focus but is never seen.
/// @throws Error with the system's code.
[[nodiscard]] HWND CreateSetupBox(HWND parent, int dpi);

/// The message that the left mouse button has for what any button's tells; every other message as it is.
[[nodiscard]] constexpr UINT AsLeftButton(UINT message) noexcept {
    // Each button has three messages in the same order. The wheel's lies between the middle one's and the extra ones'.
    if (message >= WM_LBUTTONDOWN && message <= WM_MBUTTONDBLCLK) {
        return WM_LBUTTONDOWN + (message - WM_LBUTTONDOWN) % 3;
    }
    const bool extra = message >= WM_XBUTTONDOWN && message <= WM_XBUTTONDBLCLK;
    return extra ? message - WM_XBUTTONDOWN + WM_LBUTTONDOWN : message;
}

} // namespace vextrel
