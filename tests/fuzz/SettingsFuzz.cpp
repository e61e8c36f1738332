// Values as anyone may have written them into the settings file, and the layer command with any opacities and answers.

#include "Fuzz.h"

#include "core/LayerOpacity.h"
#include "core/Numbers.h"
#include "core/OptionValues.h"

#include <algorithm>
#include <cmath>

namespace vextrel::fuzz {

namespace {

/// How far the C library reads numbers exactly enough to compare.
constexpr std::ptrdiff_t comparedDigits = 18;

bool LooksNumeric(const std::wstring& text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring::npos) {
        return false;
    }
    std::wstring digits = text.substr(first, text.find_last_not_of(L' ') - first + 1);
    if (digits.front() == L'+' || digits.front() == L'-') {
        digits.erase(0, 1);
    }
    if (const std::size_t point = digits.find(L'.'); point != std::wstring::npos) {
        digits.erase(point, 1);
    }
    return !digits.empty() && digits.find_first_not_of(L"0123456789") == std::wstring::npos;
}

std::ptrdiff_t DigitCount(const std::wstring& text) {
    return std::count_if(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

template <typename Wanted>
bool FitsOrNothing(std::optional<Wanted> read, std::optional<std::int64_t> number, std::int64_t least,
                   std::int64_t most) {
    return read.has_value() == (number && *number >= least && *number <= most) && (!read || *read == *number);
}

void RequireNumbersReadWell(const std::wstring& text) {
    const bool numeric = IsNumeric(text);
    Require(numeric == LooksNumeric(text), "a number is blanks, a sign, digits with at most one point, blanks");
    const std::optional<std::int64_t> number = ParseNumber(text);
    Require(numeric || !number, "what is not numeric has no value");
    if (numeric && DigitCount(text) <= comparedDigits) {
        Require(number == std::llrintl(std::wcstold(text.c_str(), nullptr)), "numbers round halves to even");
    }
    if (numeric) {
        Require(FitsOrNothing(ParseTransparency(text), number, 0, 256), "opacities from 0 to 256 are taken");
    } else {
        Require(ParseTransparency(text) == 252, "what is no number is the standard opacity");
    }
    const std::optional<std::int32_t> interval = ParseHoverInterval(text);
    Require(interval.has_value() == (number && *number >= -32768 && *number <= 32767), "intervals have 16 bits");
    Require(!interval || *interval == (*number < 1 ? 2000 : *number), "intervals below 1 are 2000");
    Require(ParseAmount(text) == (number && *number > 0 && *number <= 32767 ? *number : 0),
            "amounts have 15 bits or are 0");
    Require(FitsOrNothing(ParseLayerAnswer(text), number, -2147483648LL, 2147483647), "answers have 32 bits");
}

void RequireNamesReadWell(const std::wstring& text) {
    const auto boolean = ParseBoolean(text);
    Require(boolean ? text == BooleanText(*boolean) : text != L"True" && text != L"False", "only True and False");
    Require(IsOnUnlessFalse(text) == (boolean != false), "on unless False");
    const InputMode mode = ParseInputMode(text);
    Require(mode == InputMode::Standard || text == InputModeText(mode), "other modes only by their own names");
    const auto dragDrop = ParseDragDropMode(text);
    Require(!dragDrop || text == DragDropModeText(*dragDrop), "transfer modes only by their own names");
    const std::int32_t layout = ParseKeyboardLayout(text);
    Require(layout == (text == L"Default" ? 0 : text == L"Config" ? 1 : 409), "layouts only by their own names");
}

void RequireSlidersInStep(std::int16_t transparency, std::int32_t interval) {
    Require(AlphaForKeyboard(transparency).has_value() == (transparency >= 0 && transparency <= 256), "0 to 256 apply");
    Require(AlphaForLayer(transparency).has_value() == (transparency >= 0 && transparency <= 255), "0 to 255 apply");
    const int percent = TransparencySliderPercent(transparency);
    Require(percent >= 20 && percent <= 100, "the opacity shows on the slider");
    Require(TransparencySliderPercent(TransparencyOfPercent(percent)) == percent, "the slider keeps its position");
    const int position = HoverSliderPosition(interval);
    Require(position >= 500 && position <= 2000 && position % 100 == 0, "the interval shows on a step of the slider");
    Require(std::abs(position - std::clamp(interval, 500, 2000)) <= 50, "and on the nearest one");
}

/// The layer command over and over, as one user may give it in one run of the program.
void RequireLayerCommandsWell(Bytes& input) {
    auto cover = input.Byte() % 2 == 0 ? defaultCoverTransparency : input.Number<std::int16_t>();
    const std::int16_t first = cover;
    LayerCommandState state;
    while (!input.IsAtEnd()) {
        const LayerCommandOutcome outcome = RunLayerCommand(state, cover);
        std::int32_t wanted = defaultCoverTransparency;
        if (cover == defaultCoverTransparency) {
            wanted = state.lastTyped < 2 ? 100 : state.lastTyped > 32767 ? cover : state.lastTyped;
        }
        Require(outcome.coverTransparency == wanted, "away from the standard opacity, or back to it");
        Require(first == 0 || outcome.state.firstSeen == first, "the first opacity is remembered for good");
        const bool differs = outcome.coverTransparency != outcome.state.firstSeen;
        Require(outcome.marked == differs, "marked and asked while it differs from the first");
        Require(outcome.state.lastTyped == state.lastTyped, "only an answer changes what was typed");
        state = outcome.state;
        cover = outcome.coverTransparency;
        if (outcome.marked) {
            const auto answer = ParseLayerAnswer(input.TextUpTo(L'\n'));
            const LayerCommandState answered = TakeLayerAnswer(state, answer);
            Require(answered.lastTyped == answer.value_or(state.lastTyped), "no answer changes nothing");
            const auto opacity = LayerOpacity(answered);
            Require(opacity.has_value() == (answered.lastTyped >= -32768 && answered.lastTyped <= 32767) &&
                        opacity.value_or(0) == (opacity ? answered.lastTyped : 0),
                    "the typed opacity is set as it is");
            state = answered;
            cover = opacity.value_or(cover);
        } else {
            input.Byte();
        }
    }
}

} // namespace

void Run(Bytes input) {
    const std::wstring text = input.TextUpTo(L'\n');
    RequireNumbersReadWell(text);
    RequireNamesReadWell(text);
    const auto transparency = input.Number<std::int16_t>();
    RequireSlidersInStep(transparency, input.Number<std::int32_t>());
    RequireLayerCommandsWell(input);
}

} // namespace vextrel::fuzz
