#pragma once

namespace vextrel {

/// Overwrites what the heaps of the process and of the C libraries have free. The system's controls, drawing and
/// transport take memory from them for what they are given and free it as it is. Takes all free blocks at once and
/// gives them back; call it when something secret has just left a control or has been handed on.
void OverwriteFreedMemory() noexcept;

/// Gives back the pages of this thread's stack that lie below what it has in use. They hold nothing but what was done
/// before; under Wine the start of every thread leaves nearly a megabyte of them.
void GiveBackUnusedStack() noexcept;

} // namespace vextrel
