#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

namespace vextrel::fuzz {

/// Ends the run with a finding if the property does not hold; the fuzzer then keeps the input.
inline void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

/// The fuzzer's bytes, read from the front as what a target needs. Nothing but zeros follows behind the end.
class Bytes {
  public:
    explicit Bytes(std::span<const std::uint8_t> bytes) noexcept
        : bytes_(bytes) {}

    [[nodiscard]] bool IsAtEnd() const noexcept { return bytes_.empty(); }

    std::uint8_t Byte() noexcept {
        if (bytes_.empty()) {
            return 0;
        }
        const std::uint8_t first = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return first;
    }

    template <typename Integer>
    Integer Number() noexcept {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < sizeof(Integer); ++i) {
            value = value << 8U | Byte();
        }
        return static_cast<Integer>(value);
    }

    /// From 0 up to below the limit, in one byte where that is enough.
    std::size_t Below(std::size_t limit) noexcept { return (limit <= 256 ? Byte() : Number<std::uint32_t>()) % limit; }

    /// ASCII stands for itself, so that inputs can be read and written by hand; a byte beyond it is the upper half of a
    /// UTF-16 unit whose lower half follows.
    wchar_t Character() noexcept {
        const std::uint8_t first = Byte();
        return static_cast<wchar_t>(first < 0x80 ? first : first << 8U | Byte());
    }

    /// Up to the given character, which is dropped, or the end.
    std::wstring TextUpTo(wchar_t end) {
        std::wstring text;
        while (!IsAtEnd()) {
            const wchar_t c = Character();
            if (c == end) {
                break;
            }
            text += c;
        }
        return text;
    }

    std::wstring Rest() {
        std::wstring text;
        while (!IsAtEnd()) {
            text += Character();
        }
        return text;
    }

  private:
    std::span<const std::uint8_t> bytes_;
};

/// What each target defines: one run over one input.
void Run(Bytes input);

} // namespace vextrel::fuzz
