#pragma once

#include <cstddef>

namespace vextrel {

/// Overwrites memory with zeros in a way that the optimiser may not drop, however dead the memory looks to it.
void WipeMemory(void* memory, std::size_t byteCount) noexcept;

} // namespace vextrel
