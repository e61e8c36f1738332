#pragma once

namespace vextrel {

// What the buttons of the mouse are doing just now, whichever messages are still under way.

[[nodiscard]] bool IsAnyMouseButtonDown() noexcept;
/// The left one, unless the user has swapped them.
[[nodiscard]] bool IsPrimaryButtonDown() noexcept;

} // namespace vextrel
