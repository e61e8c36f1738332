#pragma once

#include <cstddef>

namespace vextrel {

/// Overwrites what the heaps of the process and of the C libraries have free. The system's controls, drawing and
/// transport take memory from them for what they are given and free it as it is. Takes all free blocks at once and
/// gives them back; call it when something secret has just left a control or has been handed on.
void OverwriteFreedMemory() noexcept;

/// The same for blocks of some bytes or a little more, up to a kilobyte, in whatever part of the heaps this thread has
/// to itself: newer heaps give one to each thread, and no other thread gets at it.
void OverwriteFreedMemoryOfThread(std::size_t size) noexcept;

/// Gives back the pages of this thread's stack that lie below what it has in use. They hold nothing but what was done
/// before; under Wine the start of every thread leaves nearly a megabyte of them.
void GiveBackUnusedStack() noexcept;

} // namespace vextrel
