#include "core/LayerOpacity.h"

#include "core/Numbers.h"

namespace vextrel {

std::optional<std::uint8_t> AlphaForLayer(std::int16_t transparency) noexcept {
    return Narrowed<std::uint8_t>(transparency);
}

std::optional<std::int32_t> ParseLayerAnswer(std::wstring_view text) noexcept {
    const std::optional<std::int64_t> number = ParseNumber(text);
    return number ? Narrowed<std::int32_t>(*number) : std::nullopt;
}

LayerCommandOutcome RunLayerCommand(LayerCommandState state, std::int16_t coverTransparency) noexcept {
    if (state.firstSeen == 0) {
        state.firstSeen = coverTransparency;
    }
    // A typed opacity below this would leave the layer as good as invisible.
    constexpr std::int32_t smallestRememberedOpacity = 2;
    std::int16_t opacity = visibleCoverTransparency;
    if (coverTransparency != defaultCoverTransparency) {
        opacity = defaultCoverTransparency;
    } else if (state.lastTyped >= smallestRememberedOpacity) {
        opacity = LayerOpacity(state).value_or(coverTransparency);
    }
    const bool marked = opacity != state.firstSeen;
    return {.state = state,
            .coverTransparency = opacity,
            .marked = marked,
            .stuck = !marked && opacity == coverTransparency};
}

LayerCommandState TakeLayerAnswer(LayerCommandState state, std::optional<std::int32_t> answer) noexcept {
    state.lastTyped = answer.value_or(state.lastTyped);
    return state;
}

std::optional<std::int16_t> LayerOpacity(LayerCommandState state) noexcept {
    return Narrowed<std::int16_t>(state.lastTyped);
}

} // namespace vextrel
