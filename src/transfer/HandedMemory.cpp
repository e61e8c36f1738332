#include "transfer/HandedMemory.h"

#include "base/Wipe.h"

#include <vector>

namespace vextrel {

namespace {

/// All calls come on the one thread that drags.
std::vector<HandedMemory*>& Living() noexcept {
    static std::vector<HandedMemory*> objects;
    return objects;
}

} // namespace

HandedMemory* HandedMemory::Create(std::size_t byteCount) noexcept {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, byteCount);
    if (memory == nullptr) {
        return nullptr;
    }
    try {
        return new HandedMemory(memory);
    } catch (...) {
        ::GlobalFree(memory);
        return nullptr;
    }
}

HandedMemory::HandedMemory(HGLOBAL memory)
    : memory_(memory) {
    Living().push_back(this);
}

HandedMemory::~HandedMemory() {
    std::erase(Living(), this);
    Wipe();
    ::GlobalFree(memory_);
}

void HandedMemory::WipeAll() noexcept {
    for (HandedMemory* memory : Living()) {
        memory->Wipe();
    }
}

void HandedMemory::Wipe() noexcept {
    if (void* bytes = ::GlobalLock(memory_); bytes != nullptr) {
        WipeMemory(bytes, ::GlobalSize(memory_));
        ::GlobalUnlock(memory_);
    }
}

} // namespace vextrel
