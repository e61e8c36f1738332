#pragma once

#include <string_view>

namespace vextrel {

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
