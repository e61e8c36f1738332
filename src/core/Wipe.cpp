#include "core/Wipe.h"

#include <cstring>

namespace vextrel {

namespace {

/// Read anew at every call, so that no compiler can know that it only stores zeros nobody will read.
void* (*const volatile fillMemory)(void*, int, std::size_t) = std::memset;

} // namespace

void WipeMemory(void* memory, std::size_t byteCount) noexcept {
    if (byteCount > 0) {
        fillMemory(memory, 0, byteCount);
    }
}

} // namespace vextrel
