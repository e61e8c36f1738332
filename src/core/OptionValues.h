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

/// The layout identifier that "Keyboard Layout" stands for; English (409) when it is not recognised.
[[nodiscard]] std::int32_t ParseKeyboardLayout(std::wstring_view text) noexcept;

/// 252 (99 percent of 255) when the text is not numeric; nothing when the number is outside 0..256, however far.
[[nodiscard]] std::optional<std::int16_t> ParseTransparency(std::wstring_view text) noexcept;

/// In milliseconds. Below 1 gives 2000; nothing when the text is not numeric or the number beyond 16 bits.
[[nodiscard]] std::optional<std::int32_t> ParseHoverInterval(std::wstring_view text) noexcept;

/// The alpha that the main window gets for its opacity; 256 is applied as 255. Nothing outside 0..256.
[[nodiscard]] std::optional<std::uint8_t> AlphaForKeyboard(std::int16_t transparency) noexcept;
/// The alpha that the layer gets. Nothing outside 0..255.
[[nodiscard]] std::optional<std::uint8_t> AlphaForLayer(std::int16_t transparency) noexcept;

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

/// The answer to the question for a new layer opacity: any text; nothing when it is no number of 32 bits.
[[nodiscard]] std::optional<std::int32_t> ParseLayerAnswer(std::wstring_view text) noexcept;

/// What the protective-layer command of the View menu remembers between uses.
struct LayerCommandState {
    std::int16_t firstSeen = 0; ///< the layer's opacity at the first use; 0 = not yet seen
    std::int32_t lastTyped = 0; ///< the last number typed into its question
    friend constexpr bool operator==(LayerCommandState, LayerCommandState) = default;
};
struct LayerCommandOutcome {
    LayerCommandState state;
    std::int16_t coverTransparency = 0; ///< to be set at once
    bool marked = false;                ///< the menu item's check mark
    bool ask = false;                   ///< ask for a new value afterwards
    friend constexpr bool operator==(LayerCommandOutcome, LayerCommandOutcome) = default;
};
/// The command up to its question: from any other opacity to the default one, from the default one to the last typed
/// (if 2 or more) or else to 100. Back at the first opacity ever seen, the mark goes and nothing is asked. A typed
/// number beyond 16 bits cannot be set: the opacity stays.
[[nodiscard]] LayerCommandOutcome RunLayerCommand(LayerCommandState state, std::int16_t coverTransparency,
                                                  std::int16_t defaultCoverTransparency) noexcept;
/// The answer to the question (nothing when it was cancelled or is no number): what is remembered from now on.
[[nodiscard]] LayerCommandState TakeLayerAnswer(LayerCommandState state, std::optional<std::int32_t> answer) noexcept;
/// The opacity to set after the question, answered or not: the remembered number, whether or not it makes sense as an
/// opacity; nothing when it does not fit 16 bits.
[[nodiscard]] std::optional<std::int16_t> LayerOpacity(LayerCommandState state) noexcept;

} // namespace vextrel
