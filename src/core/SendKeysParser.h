#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vextrel {

// The send-keys command language. A command is a sequence of
//   character          the key of that character
//   { name }           a named key, or any key text
//   { name count }     the same, count times
//   + ~ %              Shift, Control, Alt held for the next key, brace item or modifier
//   + ( ... )          the same, held for the group
// It is parsed to the end into a list of strokes first; what stood before an error is still played.

namespace virtualkeys {
inline constexpr std::uint8_t shift = 16;
inline constexpr std::uint8_t control = 17;
inline constexpr std::uint8_t alt = 18;
} // namespace virtualkeys

/// Kept small: a long command becomes about as many of these as it has characters.
struct SendKeysStroke {
    enum class Kind : std::uint8_t { ModifierDown, ModifierUp, NamedKey, KeyText };
    Kind kind = Kind::KeyText;
    std::uint8_t virtualKey = 0; ///< of a modifier or a named key
    std::int16_t count = 1;      ///< presses of a key; 0 plays nothing
    std::wstring_view text = {}; ///< KeyText: what KeyCode is asked for when it is played; lies in the parsed command
    friend bool operator==(const SendKeysStroke&, const SendKeysStroke&) = default;
};

struct SendKeysProgram {
    std::vector<SendKeysStroke> strokes;
    /// The error that ended the parsing, as it is raised after the strokes have been played.
    std::optional<std::wstring> error;
};

/// Parses in time linear in the command's length, whatever it holds.
/// @param command must outlive the result.
[[nodiscard]] SendKeysProgram ParseSendKeys(std::wstring_view command);

/// The code of a key name, exactly as written between braces; one of 41.
[[nodiscard]] std::optional<std::uint8_t> NamedKeyCode(std::wstring_view name) noexcept;

} // namespace vextrel
