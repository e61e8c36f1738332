#pragma once

namespace vextrel {

/// Whether the user has switched a high-contrast theme on.
[[nodiscard]] bool IsHighContrast() noexcept;

/// Whether pictures drawn for light grounds have to be redrawn in the system's text colours: high contrast, or a dark
/// ground.
[[nodiscard]] bool PicturesFollowTextColour() noexcept;

} // namespace vextrel
