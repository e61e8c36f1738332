#pragma once

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
struct Bytes {
    std::span<const std::uint8_t> left;

    std::uint8_t Byte() noexcept {
        const std::uint8_t first = left.empty() ? std::uint8_t{0} : left.front();
        left = left.subspan(left.empty() ? 0 : 1);
        return first;
    }
    /// From 0 up to below the limit, in one byte where that is enough.
    std::size_t Below(std::size_t limit) noexcept {
        std::size_t number = Byte();
        for (int more = limit <= 256 ? 0 : 3; more > 0; --more) {
            number = number << 8U | Byte();
        }
        return number % limit;
    }
    /// Up to the given character, which is dropped, or the end. ASCII stands for itself, so that inputs can be read and
    /// written by hand; a byte beyond it is the upper half of a UTF-16 unit whose lower half follows.
    std::wstring TextUpTo(wchar_t end) {
        std::wstring text;
        while (!left.empty() && (text.empty() || text.back() != end)) {
            const std::uint8_t first = Byte();
            text += static_cast<wchar_t>(first < 0x80 ? first : first << 8U | Byte());
        }
        return text.substr(0, text.find(end));
    }
};

} // namespace vextrel::fuzz

/// What each target defines: one run over one input. The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
