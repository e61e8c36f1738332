#pragma once

#include "app/Hover.h"
#include "core/Captions.h"
#include "core/KeyTable.h"
#include "core/LayoutFile.h"
#include "core/SlotTable.h"
#include "ui/MainWindow.h"
#include "win32/ClockRandom.h"

namespace vextrel {

/// The captions on the keys: the layout in use, the modifiers that choose between its captions, and the arrangement of
/// the keys.
class CaptionBoard {
  public:
    CaptionBoard(MainWindow& form, Hover& hover)
        : form_(form)
        , hover_(hover) {}

    [[nodiscard]] Layout& CurrentLayout() noexcept { return layout_; }

    [[nodiscard]] const vextrel::Modifiers& Modifiers() const noexcept { return modifiers_; }
    /// Shows the captions anew if anything changes.
    void SetModifiers(const vextrel::Modifiers& modifiers);

    /// 101 is the standard arrangement; 1, 2 and 3 rebuild the key slot table with each refresh.
    [[nodiscard]] std::int16_t KeyboardType() const noexcept { return keyboardType_; }
    void SetKeyboardType(std::int16_t type) noexcept { keyboardType_ = type; }

    /// Shows the captions that layout and modifiers give. For the pointer that rests on a key it is no arrival.
    /// @param shuffle whether a shuffled arrangement is drawn anew.
    void Refresh(bool shuffle = false);

  private:
    MainWindow& form_;
    Hover& hover_;
    Layout layout_;
    vextrel::Modifiers modifiers_;
    std::int16_t keyboardType_ = standardKeyboardType;
    KeySlotTable slots_;
    ClockRandom random_;
};

} // namespace vextrel
