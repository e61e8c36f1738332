#pragma once

namespace vextrel {

/// The modifiers of the on-screen keyboard: which captions the keys show, and what becomes of Shift.
struct Modifiers {
    bool shiftIsDown = false;
    bool capsLockIsDown = false;
    bool altGrIsDown = false;
    /// Set by the first click of a Shift key and never cleared again (docs/architecture.md, oddities).
    bool shiftLatched = false;
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
