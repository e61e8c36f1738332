#pragma once

#include "win32/ComObject.h"

#include <objidl.h>

#include <cstddef>

namespace vextrel {

/// Memory with a piece of the password that a receiver of a drag reads. Whoever has the medium releases this object
/// instead of freeing the memory; with the last reference the memory is wiped and freed.
class HandedMemory final : public ComObject<IUnknown> {
  public:
    /// The memory is zeroed. @return null when there is none.
    [[nodiscard]] static HandedMemory* Create(std::size_t byteCount) noexcept;

    [[nodiscard]] HGLOBAL Get() const noexcept { return memory_; }
    /// Wipes all that receivers have not released yet.
    static void WipeAll() noexcept;

  private:
    explicit HandedMemory(HGLOBAL memory);
    ~HandedMemory() override;
    void Wipe() noexcept;

    HGLOBAL memory_;
};

} // namespace vextrel
