#include "transfer/HandedMemory.h"

#include "base/Wipe.h"

#include <new>

namespace vextrel {

HandedMemory* HandedMemory::Create(std::size_t byteCount) noexcept {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, byteCount);
    if (memory == nullptr) {
        return nullptr;
    }
    auto* owner = new (std::nothrow) HandedMemory(memory);
    if (owner == nullptr) {
        ::GlobalFree(memory);
    }
    return owner;
}

HandedMemory::~HandedMemory() {
    if (void* bytes = ::GlobalLock(memory_); bytes != nullptr) {
        WipeMemory(bytes, ::GlobalSize(memory_));
        ::GlobalUnlock(memory_);
    }
    ::GlobalFree(memory_);
}

} // namespace vextrel
