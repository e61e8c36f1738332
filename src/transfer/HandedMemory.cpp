#include "transfer/HandedMemory.h"

#include "core/Wipe.h"

namespace vextrel {

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
    LivingObjects<HandedMemory>().push_back(this);
}

HandedMemory::~HandedMemory() {
    std::erase(LivingObjects<HandedMemory>(), this);
    Wipe();
    ::GlobalFree(memory_);
}

void HandedMemory::WipeAll() noexcept {
    for (HandedMemory* memory : LivingObjects<HandedMemory>()) {
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
