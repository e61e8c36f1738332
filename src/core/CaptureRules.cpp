#include "core/CaptureRules.h"

namespace vextrel {

const std::array<std::uint8_t, 47>& CaptureKeyCodes() noexcept {
    static constexpr std::array<std::uint8_t, 47> codes{
        192, 49, 50, 51, 52, 53, 54, 55,  56,  57,  48,  189, 187, // grave accent, digits, minus, equals
        81,  87, 69, 82, 84, 89, 85, 73,  79,  80,  219, 221, 220, // Q to P, brackets, backslash
        65,  83, 68, 70, 71, 72, 74, 75,  76,  186, 222,           // A to L, semicolon, quote
        90,  88, 67, 86, 66, 78, 77, 188, 190, 191,                // Z to M, comma, period, slash
    };
    return codes;
}

CaptureOrder ChooseCaptureOrder(HeldModifiers held) noexcept {
    const bool shift = held.shift || held.rightShift || held.leftShift;
    if (!shift && !held.capsLock) {
        return {.plainGivesLower = true, .focusTwice = true};
    }
    // Shift and Caps Lock together cancel each other out.
    return {.plainGivesLower = shift && held.capsLock, .focusTwice = false};
}

} // namespace vextrel
