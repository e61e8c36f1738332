#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vextrel {

// How opaque the protective layer is (CoverTransparency): everything that decides it.

/// From the start on: not seen, and yet it takes the clicks.
inline constexpr std::int16_t defaultCoverTransparency = 5;
/// Made visible, as long as no other opacity was typed; and in a build that cannot bring it back from another one.
inline constexpr std::int16_t visibleCoverTransparency = 100;
/// While another program is in front: clicks fall through.
inline constexpr std::int16_t coverTransparencyAway = 0;

/// The alpha that the layer gets. Nothing outside 0..255: the layer keeps the one it has.
[[nodiscard]] std::optional<std::uint8_t> AlphaForLayer(std::int16_t transparency) noexcept;

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
    bool marked = false;                ///< the menu item's check mark; a new value is asked for afterwards
    bool stuck = false;                 ///< it has changed nothing, and will not
    friend constexpr bool operator==(LayerCommandOutcome, LayerCommandOutcome) = default;
};
/// The command up to its question: from any other opacity to the default one, from the default one to the last typed
/// (if 2 or more) or else to 100. Back at the first opacity ever seen, the mark goes and nothing is asked. A typed
/// number beyond 16 bits cannot be set: the opacity stays.
[[nodiscard]] LayerCommandOutcome RunLayerCommand(LayerCommandState state, std::int16_t coverTransparency) noexcept;
/// The answer to the question (nothing when it was cancelled or is no number): what is remembered from now on.
[[nodiscard]] LayerCommandState TakeLayerAnswer(LayerCommandState state, std::optional<std::int32_t> answer) noexcept;
/// The opacity to set after the question, answered or not: the remembered number, whether or not it makes sense as an
/// opacity; nothing when it does not fit 16 bits.
[[nodiscard]] std::optional<std::int16_t> LayerOpacity(LayerCommandState state) noexcept;

} // namespace vextrel
