#pragma once

#include "win32/Windows.h"

#include <objidl.h>

#include <atomic>
#include <cstddef>

namespace vextrel {

/// Memory with a piece of the password that a receiver of a drag reads. Whoever has the medium releases this object
/// instead of freeing the memory; with the last reference the memory is wiped and freed.
class HandedMemory final : public IUnknown {
  public:
    /// Born with one reference, the caller's. The memory is zeroed. @return null when there is none.
    [[nodiscard]] static HandedMemory* Create(std::size_t byteCount) noexcept;
    HandedMemory(const HandedMemory&) = delete;
    HandedMemory& operator=(const HandedMemory&) = delete;

    [[nodiscard]] HGLOBAL Get() const noexcept { return memory_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override;

  private:
    explicit HandedMemory(HGLOBAL memory) noexcept
        : memory_(memory) {}
    ~HandedMemory();

    HGLOBAL memory_;
    std::atomic<ULONG> references_{1};
};

} // namespace vextrel
