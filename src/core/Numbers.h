#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace vextrel {

/// Rounds to the nearest whole number, halves to the even neighbour (2.5 gives 2, 3.5 gives 4), independent of the
/// floating-point environment.
/// @param value any finite number whose result fits 64 bits.
[[nodiscard]] std::int64_t RoundHalfEven(double value) noexcept;

/// Narrows to 16 bits signed, the range of caret positions, opacities and selection lengths.
/// @throws Error "Overflow" when the value does not fit.
[[nodiscard]] std::int16_t ToInt16(std::int64_t value);

/// @return nothing when the value does not fit.
template <class Integer>
[[nodiscard]] constexpr std::optional<Integer> Narrowed(std::int64_t value) noexcept {
    return std::in_range<Integer>(value) ? std::optional(static_cast<Integer>(value)) : std::nullopt;
}

/// Whether the text is a number as users write it into the settings file, of any size: optional blanks around, an
/// optional sign, decimal digits with an optional fraction.
[[nodiscard]] bool IsNumeric(std::wstring_view text) noexcept;

/// Reads such a number, rounded to the nearest whole number, halves to even.
/// @return nothing when the text is not numeric, or the number lies outside 64 bits.
[[nodiscard]] std::optional<std::int64_t> ParseNumber(std::wstring_view text) noexcept;

} // namespace vextrel
