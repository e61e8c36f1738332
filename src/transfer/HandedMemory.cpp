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

HRESULT HandedMemory::QueryInterface(REFIID id, void** object) noexcept {
    if (object == nullptr) {
        return E_POINTER;
    }
    if (id != IID_IUnknown) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
}

ULONG HandedMemory::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

} // namespace vextrel
