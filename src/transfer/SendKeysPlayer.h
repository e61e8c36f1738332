#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vextrel {

/// Turns commands of the send-keys language (SendKeysParser.h) into key strokes for whatever window has the keyboard
/// focus. Messages are processed after every stroke, so the caller runs it as an operation.
class SendKeysPlayer {
  public:
    /// Plays a command from left to right. What stands before an error is played, modifiers that are still held are
    /// released, and then the error is raised.
    /// @throws Error from "Vextrel.cSendKeys".
    void SendKeys(std::wstring_view command);

    /// Presses and releases a key. @param text a key name of the language, else the key of its first character.
    /// @param count how often; 0 or less plays nothing.
    /// @throws Error "Key ... could not be interpreted." from "Vextrel.cSendKeys".
    void KeyPress(std::wstring_view text, std::int32_t count);

    void KeyDown(std::uint8_t virtualKey) noexcept;
    void KeyUp(std::uint8_t virtualKey) noexcept;

    /// The virtual-key code of a text's first character in the active keyboard layout, without the shift state that the
    /// character needs. @return nothing for an empty text and for a character that no key gives.
    [[nodiscard]] static std::optional<std::uint8_t> KeyCode(std::wstring_view text) noexcept;

  private:
    void Repeat(std::uint8_t virtualKey, std::int32_t count) noexcept;
    void Play(std::wstring_view command, std::vector<std::uint8_t>& held);
};

} // namespace vextrel
