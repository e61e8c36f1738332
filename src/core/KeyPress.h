#pragma once

#include "core/KeyTable.h"
#include "core/TextEdit.h"

#include <optional>
#include <string_view>

namespace vextrel {

/// What a key press leads to.
struct KeyPressOutcome {
    std::optional<TextEdit> edit; ///< what the visible box and the password go through
    Modifiers modifiers;          ///< as they are afterwards
    bool showLeftover = false;    ///< the message box with the text "asdf"
    friend bool operator==(const KeyPressOutcome&, const KeyPressOutcome&) = default;
};

/// The one rule that turns a press of an on-screen key into an edit.
/// @param button 1 to 65. @param caption as the button carries it.
/// @throws Error "Overflow" when caret and selection do not add up in 16 bits.
[[nodiscard]] KeyPressOutcome PressKey(int button, std::wstring_view caption, const BoxState& box, Modifiers modifiers);

} // namespace vextrel
