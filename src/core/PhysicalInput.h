#pragma once

#include "core/SecretText.h"
#include "core/TextEdit.h"

#include <optional>
#include <string_view>

namespace vextrel {

inline constexpr wchar_t backspaceCode = 8;

/// Whether a text box hands a typed character to the controller: Backspace, 32 to 126, and 128.
[[nodiscard]] constexpr bool IsForwardedCharacter(wchar_t code) noexcept {
    return code == backspaceCode || (code >= 32 && code <= 126) || code == 128;
}

/// C0, DEL and C1. None of them enters the password from outside (a paste, a character that no key has).
[[nodiscard]] constexpr bool IsControlCharacter(wchar_t c) noexcept {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F);
}
/// What of a text may enter the password: in place, since what is kept may become a piece of it.
void DropControlCharacters(SecretText& text) noexcept;

/// What the password goes through when the plain box changes its text by itself (paste, cut, undo, Delete, a character
/// that was left to it): the same replacement at the same positions, clamped; tabs and line breaks stay out.
/// @param before, after the box's text before and after the change.
/// @return nothing when the texts differ in tabs and line breaks alone, or not at all.
[[nodiscard]] std::optional<Splice> FollowPlainBox(std::wstring_view before, std::wstring_view after,
                                                   std::size_t passwordLength);

} // namespace vextrel
