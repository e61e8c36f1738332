#pragma once

#include <string_view>

namespace vextrel {

/// What assistive programs say for a key where its caption would be read wrong, or not at all: action keys by what they
/// do, the modifiers among them with their state, punctuation and a blank by name. Which key was entered it never
/// tells.
/// @param lit whether the key is marked as in effect. @return null where the caption can be read as it is.
[[nodiscard]] const wchar_t* SpokenName(int button, std::wstring_view caption, bool lit) noexcept;

} // namespace vextrel
