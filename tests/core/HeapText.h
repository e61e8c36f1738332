#pragma once

#include "core/Error.h"
#include "core/SecretText.h"

#include <cstdlib>

namespace vextrel {

/// Ordinary memory in place of the pages that the program has from the system.
class HeapPages final : public SecretPages {
  public:
    [[nodiscard]] void* Allocate(std::size_t byteCount) const override {
        void* pages = std::calloc(byteCount, 1);
        if (pages == nullptr) {
            throw Error(ErrorNumber::OutOfMemory);
        }
        return pages;
    }
    void Release(void* pages, std::size_t byteCount) const noexcept override {
        if (pages != nullptr) {
            WipeMemory(pages, byteCount);
            std::free(pages);
        }
    }
};

class HeapText final : public SecretText {
  public:
    HeapText()
        : SecretText(Pages()) {}

  private:
    static const SecretPages& Pages() {
        static const HeapPages pages;
        return pages;
    }
};

} // namespace vextrel
