#pragma once

#include <array>
#include <cstdint>

namespace vextrel {

/// Virtual-key codes of the 47 character keys of a US keyboard, in slot order.
[[nodiscard]] const std::array<std::uint8_t, 47>& CaptureKeyCodes() noexcept;

/// Modifier keys that are held at the moment ("down now").
struct HeldModifiers {
    bool capsLock = false;
    bool shift = false;
    bool rightShift = false;
    bool leftShift = false;
};

/// How the two presses of a captured key are read.
struct CaptureOrder {
    bool plainGivesLower = true; ///< false: a modifier already in effect inverts the result
    bool focusTwice = false;     ///< the plain press gives the box the focus twice when no modifier is held
    friend constexpr bool operator==(CaptureOrder, CaptureOrder) = default;
};

[[nodiscard]] CaptureOrder ChooseCaptureOrder(HeldModifiers held) noexcept;

/// Identifiers of the layouts that can be switched to.
enum class LayoutId : std::int32_t {
    Default = 0,   ///< captured from the system's active keyboard layout
    LastSaved = 1, ///< the last imported one, from the settings file
    Import = 2,    ///< a file that the user picks
    English = 409, ///< "00000409" read as a decimal number, deliberately not the hexadecimal layout code
};

} // namespace vextrel
