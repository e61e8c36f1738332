#pragma once

#include "core/KeyTable.h"

#include <functional>

namespace vextrel {

/// Which button shows which slot. In the standard arrangement that never changes; the shuffled arrangements
/// (KeyboardType 1, 2 and 3) are complete but no command of the window selects them.
class KeySlotTable {
  public:
    /// The standard arrangement.
    KeySlotTable() { Rebuild(false, {}); }

    /// Rebuilds the rows in slot order. In a shuffling pass each row's sort key is the decimal text of
    /// round(u x 1000 + 1) for a u in [0, 1) drawn from `draw` (which reseeds before every draw, as its owner decides),
    /// and the rows are then sorted ascending by it as text: "1000" sorts before "2", and many equal keys are
    /// possible. @param draw may be empty when no shuffling is asked for.
    void Rebuild(bool shuffle, const std::function<double()>& draw);

    /// The button that shows a slot. @param slot 0 to 46.
    [[nodiscard]] int ButtonOfSlot(std::size_t slot) const noexcept;

  private:
    /// Each with its sort key, which is empty in the standard arrangement.
    std::array<std::pair<std::wstring, int>, characterKeyCount> buttons_;
};

/// KeyboardType of the standard arrangement.
inline constexpr int standardKeyboardType = 101;
[[nodiscard]] constexpr bool IsShuffledKeyboardType(int keyboardType) noexcept {
    return keyboardType >= 1 && keyboardType <= 3;
}

/// What a physically typed character enters while input is scrambled: the caption (ampersands undoubled) that the
/// on-screen key at the character's standard position shows. A blank gives a blank; a character on none of the keys
/// gives the empty string.
/// @param captionOfButton the caption that a button shows now, as displayed ("&&" for an ampersand).
[[nodiscard]] std::wstring ScrambledInput(wchar_t typed, const std::function<std::wstring(int)>& captionOfButton);

} // namespace vextrel
