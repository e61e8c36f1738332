#pragma once

#include "win32/Windows.h"

namespace vextrel {

// What keys and buttons are doing just now, whichever messages are still under way.

/// Whether any of them is down.
template <typename... Keys>
[[nodiscard]] bool IsDownNow(Keys... virtualKeys) noexcept {
    return ((::GetAsyncKeyState(virtualKeys) < 0) || ...);
}

/// Either of the two Shift keys.
[[nodiscard]] inline bool IsShiftDownNow() noexcept {
    return IsDownNow(VK_SHIFT, VK_RSHIFT, VK_LSHIFT);
}

[[nodiscard]] inline bool IsAnyMouseButtonDown() noexcept {
    return IsDownNow(VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_XBUTTON1, VK_XBUTTON2);
}

/// The left one, unless the user has swapped them.
[[nodiscard]] inline int PrimaryButton() noexcept {
    return ::GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
}

[[nodiscard]] inline bool IsPrimaryButtonDown() noexcept {
    return IsDownNow(PrimaryButton());
}

// What they were doing when the message that is being handled was made.

[[nodiscard]] inline bool WasDown(int virtualKey) noexcept {
    return ::GetKeyState(virtualKey) < 0;
}

[[nodiscard]] inline bool WasPrimaryButtonDown() noexcept {
    return WasDown(PrimaryButton());
}

/// Now or at that message: Wine's answer for now may be 50 ms old. Neither is moved by what anybody posts.
[[nodiscard]] inline bool IsPrimaryButtonHeld() noexcept {
    return IsPrimaryButtonDown() || WasPrimaryButtonDown();
}

[[nodiscard]] inline bool WasToggled(int virtualKey) noexcept {
    return (::GetKeyState(virtualKey) & 1) != 0;
}

} // namespace vextrel
