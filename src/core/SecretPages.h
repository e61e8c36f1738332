#pragma once

#include <cstddef>

namespace vextrel {

/// Where a SecretText lives: what the core asks of the platform, which has pages that are locked against paging, say.
class SecretPages {
  public:
    /// @return zeroed memory of at least byteCount bytes. @throws Error "Out of memory".
    [[nodiscard]] virtual void* Allocate(std::size_t byteCount) const = 0;
    /// Wipes the memory and gives it back. A null pointer is left alone.
    virtual void Release(void* pages, std::size_t byteCount) const noexcept = 0;

  protected:
    ~SecretPages() = default;
};

} // namespace vextrel
