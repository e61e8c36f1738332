#pragma once

#include "core/TextEdit.h"

namespace vextrel {

// What may enter the password, how it goes along with the plain box, and what of it a transfer takes out.

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

/// What the password becomes when the mask is switched on over a plain box: what stands before the first line break,
/// each tab turned into a carriage return and line feed. (A tab typed in the plain view thus becomes two characters of
/// the password. Deliberate.)
void ReadPlainBox(std::wstring_view plainText, SecretText& password);

/// What the user should know of a box that does not show the password as it is, in a few words; empty when it does.
[[nodiscard]] std::wstring_view RemarkOnMaskedBox(std::size_t boxLength, std::size_t passwordLength) noexcept;
[[nodiscard]] std::wstring_view RemarkOnPlainBox(std::wstring_view text, std::wstring_view password) noexcept;

/// What the password goes through when the plain box changes its text by itself (paste, cut, undo, Delete, a character
/// that was left to it): the same replacement at the same positions, clamped; tabs and line breaks stay out.
/// @param before, after the box's text before and after the change.
/// @return nothing when the texts differ in tabs and line breaks alone, or not at all.
[[nodiscard]] std::optional<Splice> FollowPlainBox(std::wstring_view before, std::wstring_view after,
                                                   std::size_t passwordLength);

/// The part of the password that the next drag or injection carries: the selected characters, cut at the password's
/// end, or all of it when nothing is selected.
/// @throws Error "Overflow" when start + 1 + length exceeds 16 bits.
[[nodiscard]] TextRange DetermineSelectedRange(BoxSelection selection, std::size_t passwordLength);

/// What a drag takes along, decided when it starts.
struct TransferPlan {
    TextRange carried;
    std::int16_t savedCaret = 0;
};

/// @throws Error "Overflow" as DetermineSelectedRange.
[[nodiscard]] TransferPlan PlanTransfer(BoxSelection selection, std::size_t passwordLength);

/// How the transfer ended.
enum class TransferEnd {
    HandedOver,
    NothingHandedOver, ///< Escape, or a target that refused the drop: nothing is taken away
};

/// Whether what was carried leaves the password (and the box shows what remains). If not, box and password stay.
[[nodiscard]] constexpr bool TakesAway(TransferEnd end, bool keepPasswordAfterDragDrop) noexcept {
    return end == TransferEnd::HandedOver && !keepPasswordAfterDragDrop;
}

} // namespace vextrel
