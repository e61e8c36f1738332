#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vextrel {

/// The first character of a text as bytes of the ANSI code page; what the code page lacks is its substitute. Wiped
/// when it goes.
class AnsiCharacter {
  public:
    explicit AnsiCharacter(std::wstring_view text) noexcept;
    ~AnsiCharacter();
    AnsiCharacter(const AnsiCharacter&) = delete;
    AnsiCharacter& operator=(const AnsiCharacter&) = delete;

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
