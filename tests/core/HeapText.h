#pragma once

#include "core/SecretText.h"

namespace vextrel {

/// Ordinary memory in place of the pages that the program has from the system.
struct HeapPages final : SecretPages {
    [[nodiscard]] void* Allocate(std::size_t byteCount) const override { return new std::byte[byteCount](); }
    void Release(void* pages, std::size_t byteCount) const noexcept override {
        WipeMemory(pages, byteCount);
        delete[] static_cast<std::byte*>(pages);
    }
};
inline constexpr HeapPages heapPages;

struct HeapText final : SecretText {
    HeapText()
        : SecretText(heapPages) {}
};

} // namespace vextrel
