#include "core/SecretPages.h"

#include "core/Error.h"
#include "core/Wipe.h"

#include <cstdlib>

namespace vextrel {

void* AllocateSecretPages(std::size_t byteCount) {
    void* pages = std::calloc(byteCount, 1);
    if (pages == nullptr) {
        throw Error(ErrorNumber::OutOfMemory);
    }
    return pages;
}

void ReleaseSecretPages(void* pages, std::size_t byteCount) noexcept {
    if (pages != nullptr) {
        WipeMemory(pages, byteCount);
        std::free(pages);
    }
}

} // namespace vextrel
