#pragma once

namespace vextrel {

// What keys and buttons are doing just now, whichever messages are still under way.

[[nodiscard]] bool IsDownNow(int virtualKey) noexcept;
/// Either of the two Shift keys.
[[nodiscard]] bool IsShiftDownNow() noexcept;
[[nodiscard]] bool IsAnyMouseButtonDown() noexcept;
/// The left one, unless the user has swapped them.
[[nodiscard]] bool IsPrimaryButtonDown() noexcept;

// What they were doing when the message that is being handled was made.

[[nodiscard]] bool WasDown(int virtualKey) noexcept;
[[nodiscard]] bool WasToggled(int virtualKey) noexcept;

} // namespace vextrel
