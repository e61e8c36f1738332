#pragma once

#include "core/KeyTable.h"
#include "core/SecretText.h"

#include <cstdint>

namespace vextrel {

/// Caret and selection of a box, as it reports them.
struct BoxSelection {
    std::int16_t start = 0;
    std::int16_t length = 0;
};

enum class PasswordBoxView { Masked, Plain };

/// What the masked box shows for each unit of the password.
inline constexpr wchar_t maskCharacter = L'*';

/// One replacement: the characters in the range give way to the text. It is wiped when it goes, since its text is or
/// may be a piece of the password; there is no move, which could leave characters behind.
struct Splice {
    TextRange range;
    std::wstring text;
    ~Splice();
};

/// What one key does to the visible box and to the password. Splices rather than whole texts, so that no key press
/// makes a copy of what is already there.
struct TextEdit {
    std::optional<Splice> box;
    std::optional<Splice> password;
    /// Where the caret stands afterwards; nothing is selected then.
    std::int16_t caret = 0;
};

/// The visible box before an edit.
struct BoxState {
    PasswordBoxView view = PasswordBoxView::Masked;
    BoxSelection selection;
    std::size_t length = 0;           ///< of the box's text, in UTF-16 units
    wchar_t characterBeforeCaret = 0; ///< of the box's text; 0 at its start
    std::size_t passwordLength = 0;
};

/// Caret and selection are added up in 16 bits before anything else happens. @throws Error "Overflow" when
/// start + length + 1, the position behind the selection counted from 1, does not fit.
void CheckSelection(BoxSelection selection);

/// Enters text at the caret in place of the selection: into the password as it is; into the box as it is in the plain
/// view, as one "*" per unit in the masked view. Positions behind the password's end are clamped to it.
/// @throws Error "Overflow" when a 16-bit position would not hold; nothing is to be changed then.
[[nodiscard]] TextEdit EnterText(const BoxState& box, std::wstring_view text);

/// Enters text that stays out of the password (line breaks and tabs of the plain view).
/// @throws Error "Overflow" as EnterText.
[[nodiscard]] TextEdit EnterIntoBoxOnly(const BoxState& box, std::wstring_view text);

/// Backspace. Over a selection it clears the box's text but deliberately leaves the password alone; behind a line
/// feed it removes the pair of characters, which are not in the password. @throws Error "Overflow" as CheckSelection.
[[nodiscard]] TextEdit EraseBackwards(const BoxState& box);

/// Delete in the masked view: the selection, or else the character behind the caret, leaves box and password; the
/// caret stays. An empty edit when there is nothing to remove.
[[nodiscard]] TextEdit EraseForwards(const BoxState& box);

/// Makes a password follow an edit. @throws Error "Overflow"; nothing is changed then.
void ApplyToPassword(const TextEdit& edit, SecretText& password);

/// What a key press leads to.
struct KeyPressOutcome {
    std::optional<TextEdit> edit; ///< what the visible box and the password go through
    Modifiers modifiers;          ///< as they are afterwards
    bool showLeftover = false;    ///< the message box with the text "asdf"
};

/// The one rule that turns a press of an on-screen key into an edit.
/// @param button 1 to 65. @param caption as the button carries it.
/// @throws Error "Overflow" when caret and selection do not add up in 16 bits.
[[nodiscard]] KeyPressOutcome PressKey(int button, std::wstring_view caption, const BoxState& box, Modifiers modifiers);

} // namespace vextrel
