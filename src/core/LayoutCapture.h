#pragma once

#include "core/KeyTable.h"

#include <cstdint>

namespace vextrel {

// Capture of a keyboard layout: every character key is pressed once plain and once with Shift, and what arrives in a
// text box that takes part in nothing else, the setup box, becomes its captions. No key may reach another program.

/// Virtual-key codes of the 47 character keys of a US keyboard, in slot order.
inline constexpr std::array<std::uint8_t, characterKeyCount> captureKeyCodes{
    192, 49, 50, 51, 52, 53, 54, 55,  56,  57,  48,  189, 187, // grave accent, digits, minus, equals
    81,  87, 69, 82, 84, 89, 85, 73,  79,  80,  219, 221, 220, // Q to P, brackets, backslash
    65,  83, 68, 70, 71, 72, 74, 75,  76,  186, 222,           // A to L, semicolon, quote
    90,  88, 67, 86, 66, 78, 77, 188, 190, 191,                // Z to M, comma, period, slash
};

enum class CaptureResult {
    Done,
    LostFocus,    ///< the setup box, or its window, is not where keys would arrive
    ModifierHeld, ///< the user holds Ctrl, Alt or a Windows key, with which a press would be a command, or Shift
    NoAnswer,     ///< a pressed key did not come to the setup box in time
};

/// The keyboard and the setup box as the capture sees them. Nothing here throws but TakeText.
class CaptureDevice {
  public:
    virtual void GiveFocus() noexcept = 0;
    /// Lets the messages that wait be processed.
    virtual void ProcessMessages() noexcept = 0;
    /// Whether a key that was pressed now would arrive in the setup box and do nothing but write.
    /// @return Done if so, else what is in the way.
    [[nodiscard]] virtual CaptureResult Readiness() noexcept = 0;
    virtual void PressDown(std::uint8_t virtualKey) noexcept = 0;
    virtual void LetGo(std::uint8_t virtualKey) noexcept = 0;
    /// Waits, with a limit, until the setup box has taken the key's release, and so everything that it had typed.
    [[nodiscard]] virtual CaptureResult AwaitRelease(std::uint8_t virtualKey) noexcept = 0;
    /// Forgets a dead key that waits for the next character.
    virtual void ForgetDeadKey() noexcept = 0;
    /// The modifiers that the user holds; Caps Lock, too, held and not toggled.
    [[nodiscard]] virtual PhysicalModifiers Held() noexcept = 0;
    [[nodiscard]] virtual bool IsCapsLockToggled() noexcept = 0;
    /// What the setup box holds; it is empty afterwards.
    [[nodiscard]] virtual std::wstring TakeText() = 0;

  protected:
    ~CaptureDevice() = default;
};

/// Captures the two captions of one slot. Both change together, and only if the result is Done. A modifier already in
/// effect inverts what the presses give. The plain press gives the box the focus twice when no modifier is held.
/// @throws Error "Subscript out of range" for slot 49 and above, before any key is pressed.
[[nodiscard]] CaptureResult GetCommandButtonCaptions(CaptureDevice& device, std::uint8_t virtualKey, std::size_t slot,
                                                     KeyCaptions& captions);

/// Captures slots 0 to 46 in order. What stops it leaves the slots not yet captured as they were. Keys that it pressed
/// are released and a Caps Lock that it switched off is on again, however it ends.
[[nodiscard]] CaptureResult CaptureAllKeys(CaptureDevice& device, KeyCaptions& captions);

} // namespace vextrel
