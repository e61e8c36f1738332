#pragma once

#include <string_view>

namespace vextrel {

/// The text without the blanks around it (blanks alone: not tabs, not line breaks).
[[nodiscard]] constexpr std::wstring_view TrimBlanks(std::wstring_view text) noexcept {
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

} // namespace vextrel
