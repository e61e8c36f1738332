#include "core/OptionValues.h"

#include "core/Numbers.h"

#include <algorithm>

namespace vextrel {

namespace {

constexpr std::int16_t mostOpaqueAlpha = 255;
/// One above the largest alpha, deliberately.
constexpr std::int16_t largestKeyboardTransparency = 256;
constexpr std::int32_t shortIntervalReplacementMs = 2000;

} // namespace

std::optional<bool> ParseBoolean(std::wstring_view text) noexcept {
    const bool isTrue = text == BooleanText(true);
    return isTrue || text == BooleanText(false) ? std::optional(isTrue) : std::nullopt;
}

const wchar_t* BooleanText(bool value) noexcept {
    return value ? L"True" : L"False";
}

InputMode ParseInputMode(std::wstring_view text) noexcept {
    for (const InputMode mode : {InputMode::Hover, InputMode::HiddenMouseAndHover}) {
        if (text == InputModeText(mode)) {
            return mode;
        }
    }
    return InputMode::Standard;
}

const wchar_t* InputModeText(InputMode mode) noexcept {
    switch (mode) {
    case InputMode::Hover: return L"Hover Entry Mode";
    case InputMode::HiddenMouseAndHover: return L"Hover Entry and Hide Mouse";
    case InputMode::Standard: break;
    }
    return L"Standard Mode";
}

std::optional<DragDropMode> ParseDragDropMode(std::wstring_view text) noexcept {
    for (const DragDropMode mode : {DragDropMode::DragDrop, DragDropMode::Inject}) {
        if (text == DragDropModeText(mode)) {
            return mode;
        }
    }
    return std::nullopt;
}

const wchar_t* DragDropModeText(DragDropMode mode) noexcept {
    return mode == DragDropMode::Inject ? L"Inject" : L"Drag Drop";
}

std::int32_t ParseKeyboardLayout(std::wstring_view text) noexcept {
    const LayoutId other = text == L"Config" ? LayoutId::LastSaved : LayoutId::English;
    return static_cast<std::int32_t>(text == L"Default" ? LayoutId::Default : other);
}

std::optional<std::int16_t> ParseTransparency(std::wstring_view text) noexcept {
    if (!IsNumeric(text)) {
        return TransparencyOfPercent(99);
    }
    const std::optional<std::int64_t> number = ParseNumber(text);
    if (!number || *number < 0 || *number > largestKeyboardTransparency) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(*number);
}

std::optional<std::int32_t> ParseHoverInterval(std::wstring_view text) noexcept {
    const std::optional<std::int64_t> number = ParseNumber(text);
    if (!number || !Narrowed<std::int16_t>(*number)) {
        return std::nullopt;
    }
    return *number < 1 ? shortIntervalReplacementMs : static_cast<std::int32_t>(*number);
}

int ParseAmount(std::wstring_view text) noexcept {
    const std::optional<std::int64_t> number = ParseNumber(text);
    return number && Narrowed<std::int16_t>(*number) && *number > 0 ? static_cast<int>(*number) : 0;
}

std::optional<std::uint8_t> AlphaForKeyboard(std::int16_t transparency) noexcept {
    return Narrowed<std::uint8_t>(transparency == largestKeyboardTransparency ? mostOpaqueAlpha : transparency);
}

int HoverSliderPosition(std::int32_t intervalMs) noexcept {
    const std::int32_t shown = std::clamp(intervalMs, hoverSliderMinMs, hoverSliderMaxMs);
    return (shown + hoverSliderStepMs / 2) / hoverSliderStepMs * hoverSliderStepMs;
}

int TransparencySliderPercent(std::int16_t transparency) noexcept {
    const auto percent = static_cast<int>(RoundHalfEven(transparency * 100.0 / mostOpaqueAlpha));
    return std::clamp(percent, transparencySliderMinPercent, transparencySliderMaxPercent);
}

std::int16_t TransparencyOfPercent(int percent) noexcept {
    const int shown = std::clamp(percent, transparencySliderMinPercent, transparencySliderMaxPercent);
    // Whole numbers up to the division, so that what lies half-way is exactly half-way.
    return static_cast<std::int16_t>(RoundHalfEven(shown * mostOpaqueAlpha / 100.0));
}

std::wstring SecondsText(int milliseconds) {
    std::wstring fraction = std::to_wstring(1000 + milliseconds % 1000).substr(1);
    while (fraction.size() > 1 && fraction.back() == L'0') {
        fraction.pop_back();
    }
    return std::to_wstring(milliseconds / 1000) + L"." + fraction + L" s";
}

} // namespace vextrel
