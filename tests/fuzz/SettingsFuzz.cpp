// Values as anyone may have written them into the settings file or into the question for the layer's opacity.

#include "Fuzz.h"

#include "core/LayerOpacity.h"
#include "core/Numbers.h"
#include "core/OptionValues.h"

#include <algorithm>
#include <cmath>
#include <regex>

namespace vextrel::fuzz {

void Run(Bytes input) {
    const std::wstring text = input.TextUpTo(L'\n');
    static const std::wregex form(L" *[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+) *");
    const bool numeric = std::regex_match(text, form);
    Require(IsNumeric(text) == numeric, "a number is blanks, a sign, digits with at most one point, blanks");
    const std::optional<std::int64_t> number = ParseNumber(text);
    Require(numeric || !number, "what is not numeric has no value");
    // As far as the C library reads numbers exactly enough to compare.
    if (numeric && text.find_first_not_of(L' ') + 18 > text.find_last_not_of(L' ')) {
        Require(number == std::llrintl(std::wcstold(text.c_str(), nullptr)), "numbers round halves to even");
    }
    const auto fits = [&number](std::int64_t least, std::int64_t most) {
        return number && *number >= least && *number <= most ? number : std::nullopt;
    };
    Require(ParseTransparency(text) == (numeric ? fits(0, 256) : 252), "0 to 256, and no number is the standard one");
    const auto interval = fits(-32768, 32767);
    Require(ParseHoverInterval(text) == (interval && *interval < 1 ? 2000 : interval), "16 bits, and below 1 is 2000");
    Require(ParseAmount(text) == fits(1, 32767).value_or(0), "amounts have 15 bits");
    Require(ParseLayerAnswer(text) == fits(INT32_MIN, INT32_MAX), "answers have 32 bits");
    const auto boolean = ParseBoolean(text);
    Require(boolean ? text == BooleanText(*boolean) : text != L"True" && text != L"False", "only True and False");
    const InputMode mode = ParseInputMode(text);
    Require(mode == InputMode::Standard || text == InputModeText(mode), "other modes only by their own names");
    const int position = HoverSliderPosition(static_cast<std::int32_t>(fits(INT32_MIN, INT32_MAX).value_or(0)));
    const std::int64_t shown = std::clamp<std::int64_t>(fits(INT32_MIN, INT32_MAX).value_or(0), 500, 2000);
    Require(position % 100 == 0 && std::abs(position - shown) <= 50, "the slider shows the nearest step");
}

} // namespace vextrel::fuzz
