#pragma once

#include "core/SecretText.h"
#include "core/TextEdit.h"

#include <string_view>

namespace vextrel {

/// What the password becomes when the mask is switched on over a plain box: what stands before the first line break,
/// each tab turned into a carriage return and line feed. (A tab typed in the plain view thus becomes two characters of
/// the password. Deliberate.)
void ReadPlainBox(std::wstring_view plainText, SecretText& password);

/// The part of the password that the next drag or injection carries: the selected characters, cut at the password's
/// end, or all of it when nothing is selected.
/// @throws Error "Overflow" when start + 1 + length exceeds 16 bits.
[[nodiscard]] TextRange DetermineSelectedRange(BoxSelection selection, std::size_t passwordLength);

/// What a drag takes along, decided when it starts.
struct TransferPlan {
    TextRange carried;
    std::int16_t savedCaret = 0;
    friend constexpr bool operator==(TransferPlan, TransferPlan) = default;
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
