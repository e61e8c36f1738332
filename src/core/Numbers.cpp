#include "core/Numbers.h"

#include "core/CaptionText.h"
#include "core/Error.h"

#include <algorithm>
#include <cmath>

namespace vextrel {

namespace {

constexpr bool IsDigit(wchar_t c) noexcept {
    return c >= L'0' && c <= L'9';
}

struct NumberParts {
    bool negative = false;
    std::wstring_view whole;    ///< digits
    std::wstring_view fraction; ///< digits; one of the two may be missing
};

std::optional<NumberParts> SplitNumber(std::wstring_view text) noexcept {
    text = TrimBlanks(text);
    NumberParts parts{.negative = text.starts_with(L'-'), .whole = {}, .fraction = {}};
    if (parts.negative || text.starts_with(L'+')) {
        text.remove_prefix(1);
    }
    const std::size_t point = text.find(L'.');
    parts.whole = text.substr(0, point);
    if (point != std::wstring_view::npos) {
        parts.fraction = text.substr(point + 1);
    }
    if (!std::ranges::all_of(parts.whole, IsDigit) || !std::ranges::all_of(parts.fraction, IsDigit) ||
        (parts.whole.empty() && parts.fraction.empty())) {
        return std::nullopt;
    }
    return parts;
}

} // namespace

std::int64_t RoundHalfEven(double value) noexcept {
    const double below = std::floor(value);
    const double rest = value - below;
    const auto whole = static_cast<std::int64_t>(below);
    return rest > 0.5 || (rest == 0.5 && whole % 2 != 0) ? whole + 1 : whole;
}

std::int16_t ToInt16(std::int64_t value) {
    const std::optional<std::int16_t> narrow = Narrowed<std::int16_t>(value);
    return narrow ? *narrow : throw Error(ErrorNumber::Overflow);
}

bool IsNumeric(std::wstring_view text) noexcept {
    return SplitNumber(text).has_value();
}

std::optional<std::int64_t> ParseNumber(std::wstring_view text) noexcept {
    const std::optional<NumberParts> parts = SplitNumber(text);
    if (!parts) {
        return std::nullopt;
    }
    // Digits are gathered by hand rather than through a double, which would round 16-digit numbers a second time.
    constexpr std::int64_t largest = INT64_MAX;
    std::int64_t whole = 0;
    for (const wchar_t c : parts->whole) {
        const std::int64_t digit = c - L'0';
        if (whole > (largest - digit) / 10) {
            return std::nullopt;
        }
        whole = whole * 10 + digit;
    }
    // Above a half is rounded up always, exactly a half only to an even result.
    const std::wstring_view fraction = parts->fraction.substr(0, parts->fraction.find_last_not_of(L'0') + 1);
    if (fraction > L"5" || (fraction == L"5" && whole % 2 != 0)) {
        if (whole == largest) {
            return std::nullopt;
        }
        ++whole;
    }
    return parts->negative ? -whole : whole;
}

} // namespace vextrel
