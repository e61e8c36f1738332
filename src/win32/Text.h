#pragma once

#include "core/Pinned.h"
#include "core/SecretText.h"
#include "win32/Windows.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vextrel {

// The boundary between our wide text and the system's ANSI code page. The code page is a fact of the boundary: what it
// cannot express becomes its substitute character.

[[nodiscard]] std::string Narrow(std::wstring_view text);
[[nodiscard]] std::wstring Widen(std::string_view text);

[[nodiscard]] bool CodePageExpresses(std::wstring_view text);

/// A path for a call of the A form: the path itself if the code page expresses it, else its short form. That is not
/// always to be had: for what does not exist, and on drives that keep no short names, there is none.
[[nodiscard]] std::optional<std::string> NarrowPath(const std::wstring& path);

/// Throws the Error of a failed system call. Call it at once, before anything else changes the last error.
[[noreturn]] void ThrowLastError();

/// Reads the clipboard's text, cut to what a SecretText holds; empty when there is none or the clipboard is busy.
/// Nothing of ours ever writes the clipboard.
void ReadClipboardText(HWND owner, SecretText& text);

/// The text of a window or control; not for the password boxes, whose text belongs into a SecretText.
[[nodiscard]] std::wstring WindowText(HWND window);

/// The first character of a text as bytes of the ANSI code page; what the code page lacks is its substitute. Wiped
/// when it goes.
class AnsiCharacter : private Pinned {
  public:
    explicit AnsiCharacter(std::wstring_view text) noexcept;
    ~AnsiCharacter();

    /// How many units of the text the character takes: 2 for a surrogate pair, 0 for an empty text.
    [[nodiscard]] std::size_t UnitCount() const noexcept { return unitCount_; }
    [[nodiscard]] const std::uint8_t* begin() const noexcept { return bytes_.data(); }
    [[nodiscard]] const std::uint8_t* end() const noexcept { return bytes_.data() + byteCount_; }

  private:
    std::array<std::uint8_t, 8> bytes_{}; // the longest: four bytes, or two substitutes of two
    std::size_t byteCount_ = 0;
    std::size_t unitCount_ = 0;
};

} // namespace vextrel
