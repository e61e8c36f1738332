#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vextrel {

// The texts of the settings file and what they mean. Comparisons are exact and case-sensitive; what is not recognised
// gives nothing, and the option stays as it was unless said otherwise.

namespace settings {
inline constexpr const wchar_t* section = L"Settings";
inline constexpr const wchar_t* saveSettings = L"Save Settings in INI";
inline constexpr const wchar_t* viewToolbar = L"View Toolbar";
inline constexpr const wchar_t* keyboardLayout = L"Keyboard Layout";
inline constexpr const wchar_t* importedLayoutName = L"Imported Layout Name";
inline constexpr const wchar_t* mouseMode = L"MouseMode";
inline constexpr const wchar_t* dragDropMode = L"Drag Drop Mode";
inline constexpr const wchar_t* viewPasswordMask = L"View Password Mask";
inline constexpr const wchar_t* beepOnHover = L"Beep on Hover";
inline constexpr const wchar_t* keepPassword = L"Keep Password after Drag Drop";
inline constexpr const wchar_t* transparency = L"Transparency";
inline constexpr const wchar_t* hoverTimerInterval = L"Hover Timer Interval";
inline constexpr const wchar_t* toolbarVisible = L"Toolbar Visible";
// Read at the start and never written; no command of the program sets them.
inline constexpr const wchar_t* hardenProcess = L"Harden Process";
inline constexpr const wchar_t* allowScreenCapture = L"Allow Screen Capture";
inline constexpr const wchar_t* answerOtherPrograms = L"Answer Other Programs";
inline constexpr const wchar_t* smallestKey = L"Smallest Key";
inline constexpr const wchar_t* clearAfterMinutes = L"Clear after Minutes";
} // namespace settings

/// Named as it is stored.
enum class InputMode : std::int16_t { Standard = 1, Hover = 2, HiddenMouseAndHover = 3 };
enum class DragDropMode : std::int16_t { DragDrop = 0, Inject = 1 };

/// "True" and "False".
[[nodiscard]] std::optional<bool> ParseBoolean(std::wstring_view text) noexcept;
[[nodiscard]] const wchar_t* BooleanText(bool value) noexcept;

/// Switches that are on unless the file says "False".
[[nodiscard]] constexpr bool IsOnUnlessFalse(std::wstring_view text) noexcept {
    return text != L"False";
}

/// What is not recognised is the standard mode.
[[nodiscard]] InputMode ParseInputMode(std::wstring_view text) noexcept;
[[nodiscard]] const wchar_t* InputModeText(InputMode mode) noexcept;

[[nodiscard]] std::optional<DragDropMode> ParseDragDropMode(std::wstring_view text) noexcept;
[[nodiscard]] const wchar_t* DragDropModeText(DragDropMode mode) noexcept;

/// Identifiers of the layouts that can be switched to.
enum class LayoutId : std::int32_t {
    Default = 0,   ///< captured from the system's active keyboard layout
    LastSaved = 1, ///< the last imported one, from the settings file
    Import = 2,    ///< a file that the user picks
    English = 409, ///< "00000409" read as a decimal number, deliberately not the hexadecimal layout code
};

/// The layout identifier that "Keyboard Layout" stands for; English (409) when it is not recognised.
[[nodiscard]] std::int32_t ParseKeyboardLayout(std::wstring_view text) noexcept;

/// 252 (99 percent of 255) when the text is not numeric; nothing when the number is outside 0..256, however far.
[[nodiscard]] std::optional<std::int16_t> ParseTransparency(std::wstring_view text) noexcept;

/// In milliseconds. Below 1 gives 2000; nothing when the text is not numeric or the number beyond 16 bits.
[[nodiscard]] std::optional<std::int32_t> ParseHoverInterval(std::wstring_view text) noexcept;

/// A width or a time; 0, which asks for nothing, when it is not numeric or the number beyond 15 bits.
[[nodiscard]] int ParseAmount(std::wstring_view text) noexcept;

/// The alpha that the main window gets for its opacity; 256 is applied as 255. Nothing outside 0..256.
[[nodiscard]] std::optional<std::uint8_t> AlphaForKeyboard(std::int16_t transparency) noexcept;

// The sliders.

inline constexpr int hoverSliderMinMs = 500;
inline constexpr int hoverSliderMaxMs = 2000;
inline constexpr int hoverSliderStepMs = 100;
inline constexpr int transparencySliderMinPercent = 20;
inline constexpr int transparencySliderMaxPercent = 100;

/// The delay slider's position (milliseconds) for an interval: its nearest step, of two equally near ones the longer;
/// an interval outside shows at the nearer end.
[[nodiscard]] int HoverSliderPosition(std::int32_t intervalMs) noexcept;
/// The opacity slider's position (percent) nearest to an alpha; no alpha lies half-way between two. One outside shows
/// at the nearer end.
[[nodiscard]] int TransparencySliderPercent(std::int16_t transparency) noexcept;
/// percent / 100 x 255, rounded to the nearest, halves to even (50 percent: 127.5 gives 128). A percentage outside the
/// slider's range counts as the nearer end.
[[nodiscard]] std::int16_t TransparencyOfPercent(int percent) noexcept;

/// Seconds with at least one decimal: "2.0 s", "1.25 s".
[[nodiscard]] std::wstring SecondsText(int milliseconds);
/// "80%".
[[nodiscard]] inline std::wstring PercentText(int percent) {
    return std::to_wstring(percent) + L"%";
}

} // namespace vextrel
