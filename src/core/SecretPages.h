#pragma once

#include <cstddef>

namespace vextrel {

// Where a SecretText lives. One implementation is linked per platform: on Windows pages of their own, locked against
// paging and kept out of crash reports where the system offers it; on the build machine ordinary memory.

/// @return zeroed memory of at least byteCount bytes.
/// @throws Error "Out of memory".
[[nodiscard]] void* AllocateSecretPages(std::size_t byteCount);

/// Wipes the memory and gives it back. A null pointer is left alone.
void ReleaseSecretPages(void* pages, std::size_t byteCount) noexcept;

} // namespace vextrel
