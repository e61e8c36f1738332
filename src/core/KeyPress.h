#pragma once

#include "core/TextEdit.h"

#include <optional>
#include <string_view>

namespace vextrel {

/// The modifiers that an on-screen key press reads and changes.
struct PressModifiers {
    bool shiftIsDown = false;
    bool capsLockIsDown = false;
    /// Set by the first click of a Shift key and never cleared again: from then on every character entered with an
    /// on-screen key releases Shift. Deliberate.
    bool shiftLatched = false;
    friend constexpr bool operator==(PressModifiers, PressModifiers) = default;
};

/// What a key press leads to.
struct KeyPressOutcome {
    std::optional<TextEdit> edit; ///< what the visible box and the password go through
    PressModifiers modifiers;     ///< as they are afterwards
    bool refreshCaptions = false; ///< the captions have to be shown anew
    bool showLeftover = false;    ///< the message box with the text "asdf"
    friend bool operator==(const KeyPressOutcome&, const KeyPressOutcome&) = default;
};

/// What a character key enters: the caption, "&&" as "&"; a blank for "space" and for an empty caption.
/// @return a part of the caption or a constant.
[[nodiscard]] std::wstring_view TextOfCaption(std::wstring_view caption) noexcept;

/// The one rule that turns a press of an on-screen key into an edit.
/// @param button 1 to 65. @param caption as the button carries it.
/// @throws Error "Overflow" when caret and selection do not add up in 16 bits.
[[nodiscard]] KeyPressOutcome PressKey(int button, std::wstring_view caption, const BoxState& box,
                                       PressModifiers modifiers);

} // namespace vextrel
