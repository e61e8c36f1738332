#pragma once

#include <string_view>

namespace vextrel {

/// The text without the blanks around it (blanks alone: not tabs, not line breaks).
[[nodiscard]] constexpr std::wstring_view TrimBlanks(std::wstring_view text) noexcept {
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

// What a caption on a button means.

/// How a button carries a lone ampersand: a single one would be taken as the mark of an access key.
inline constexpr std::wstring_view shownAmpersand = L"&&";

/// A button's caption as it is read: "&" for "&&". @return a part of the caption.
[[nodiscard]] constexpr std::wstring_view TextShownOnKey(std::wstring_view caption) noexcept {
    return caption == shownAmpersand ? caption.substr(1) : caption;
}

/// What a character key enters: its caption as it is read; a blank for "space" and for an empty caption.
/// @return a part of the caption or a constant.
[[nodiscard]] constexpr std::wstring_view TextOfCaption(std::wstring_view caption) noexcept {
    return caption.empty() || caption == L"space" ? L" " : TextShownOnKey(caption);
}

/// Whether a key with this caption enters a blank: it shows nothing and is called "space" when spoken.
[[nodiscard]] constexpr bool EntersBlank(std::wstring_view caption) noexcept {
    return TextOfCaption(caption) == L" ";
}

} // namespace vextrel
