#pragma once

#include <algorithm>

namespace vextrel {

// How high the text on a key is, in pixels of the characters without leading.

/// What it is to be, where the key is wide enough. Single characters are read one by one and want to be large; the
/// words on the action keys are landmarks. On small keys both take more of the height, to remain readable.
[[nodiscard]] constexpr int WantedTextHeight(int keyHeightPx, int dpi, bool isSingleCharacter) noexcept {
    const auto share = [&](int usual, int most, int readable96) {
        return std::max(usual, std::min(most, (readable96 * dpi + 48) / 96));
    };
    return isSingleCharacter ? share(keyHeightPx / 2, keyHeightPx * 3 / 4, 13)
                             : share(keyHeightPx * 2 / 5, keyHeightPx * 3 / 5, 11);
}

/// The largest height, from the wanted one downwards, at which a text, or the widest of several, fits.
/// @param widthAt gives the width in pixels for a height.
template <typename WidthAt>
[[nodiscard]] int FittingTextHeight(int wantedPx, int roomPx, const WidthAt& widthAt) {
    constexpr int smallestPx = 6;
    int heightPx = std::max(wantedPx, smallestPx);
    while (heightPx > smallestPx && widthAt(heightPx) > std::max(1, roomPx)) {
        --heightPx;
    }
    return heightPx;
}

} // namespace vextrel
