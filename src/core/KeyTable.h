#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace vextrel {

// The keys: which buttons there are, what each is for, and the captions that a layout gives them. A key button is known
// by its number: 31 is Command31.

inline constexpr int keyButtonCount = 65;
inline constexpr int characterKeyCount = 47;
/// Character keys per row, first row to fourth.
inline constexpr std::array<int, 4> keysPerRow{13, 13, 11, 10};

namespace keys {
inline constexpr int backspace = 15;
inline constexpr int tab = 16;
inline constexpr int enter = 29;
inline constexpr int capsLock = 30;
inline constexpr int leftShift = 42;
inline constexpr int rightShift = 53;
inline constexpr int space = 57;
/// A leftover that shows a message box with the text "asdf". It is kept on purpose.
inline constexpr int messageLeftover = 58;
} // namespace keys

/// Command54 to Command56: do nothing.
[[nodiscard]] constexpr bool IsInertKey(int button) noexcept {
    return button >= 54 && button <= 56;
}

/// Whether the button is part of the keyboard. The others (Command14, 54 to 56, 58 to 64) exist hidden.
[[nodiscard]] constexpr bool IsKeyShown(int button) noexcept {
    return button >= 1 && button <= keyButtonCount && button != 14 && !IsInertKey(button) &&
           !(button >= 58 && button <= 64);
}

/// Character keys and the space bar, as opposed to action keys.
[[nodiscard]] constexpr bool IsCharacterKey(int button) noexcept {
    return button != keys::backspace && button != keys::tab && button != keys::enter && button != keys::capsLock &&
           button != keys::leftShift && button != keys::rightShift;
}

/// The captions of one character key.
struct KeyCaption {
    std::wstring lower;
    std::wstring upper;
    std::wstring altGr;
    friend bool operator==(const KeyCaption&, const KeyCaption&) = default;
};

/// Sets the lower and upper captions of all 47 keys to the US English arrangement and touches nothing else.
void LoadEnglishLayout(class KeyCaptions& captions);

/// The captions of the 47 character keys in slot order: rows of 13, 13, 11 and 10. There is room for 49 slots.
class KeyCaptions {
  public:
    static constexpr std::size_t slotCount = 49;

    /// Starts as the built-in English layout, so that a layout with gaps never leaves a blank key.
    KeyCaptions() { LoadEnglishLayout(*this); }

    /// @throws Error "Subscript out of range" for slot 49 and above.
    [[nodiscard]] const KeyCaption& At(std::size_t slot) const;
    [[nodiscard]] KeyCaption& At(std::size_t slot) { return const_cast<KeyCaption&>(std::as_const(*this).At(slot)); }
    friend bool operator==(const KeyCaptions&, const KeyCaptions&) = default;

  private:
    std::array<KeyCaption, slotCount> slots_;
};

/// The slot of a key. @param row 1 to 4. @param key 1 to the row's number of keys.
[[nodiscard]] std::size_t SlotOf(int row, int key) noexcept;

/// The button that shows a slot in the standard arrangement. @param slot 0 to 46.
[[nodiscard]] int StandardButtonOfSlot(std::size_t slot) noexcept;

/// The slot whose key has the character in the standard arrangement, as its lower or its upper one.
[[nodiscard]] std::optional<std::size_t> StandardSlotOfCharacter(wchar_t character) noexcept;

/// The other character on the same key of the standard arrangement, in either direction; a character on none of the
/// keys is its own counterpart.
[[nodiscard]] wchar_t ShiftCounterpart(wchar_t character) noexcept;

enum class ActionKey : std::size_t { Backspace, Tab, CapsLock, Enter, Shift };
/// Captions of the action keys, indexed by ActionKey.
using ActionKeyCaptions = std::array<std::wstring, 5>;
inline const ActionKeyCaptions defaultActionKeyCaptions{L"bksp", L"tab", L"cap", L"ent", L"shft"};

/// The modifiers of the on-screen keyboard: which captions the keys show, and what becomes of Shift.
struct Modifiers {
    bool shiftIsDown = false;
    bool capsLockIsDown = false;
    bool altGrIsDown = false;
    /// Set by the first click of a Shift key and never cleared again (docs/architecture.md, oddities).
    bool shiftLatched = false;
    bool shiftIsPhysical = false; ///< the physical keys set it last, no click of a Shift key
    friend constexpr bool operator==(Modifiers, Modifiers) = default;
};

/// The modifier keys of the physical keyboard. Shift is either of the two.
struct PhysicalModifiers {
    bool capsLock = false;
    bool shift = false;
};

/// ShiftIsDown follows the physical keys: in effect when exactly one of Caps Lock (toggled) and Shift (held) is.
[[nodiscard]] constexpr bool FoldedShift(PhysicalModifiers modifiers) noexcept {
    return modifiers.capsLock != modifiers.shift;
}

} // namespace vextrel
