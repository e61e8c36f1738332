#pragma once

#include "driver/Process.h"

#include <array>

namespace vextrel::driver {

/// Memory inside another process, for messages and calls whose arguments are pointers there.
class RemoteMemory {
  public:
    RemoteMemory(const Process& process, std::size_t bytes, bool executable = false);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] void* Address() const { return address_; }
    void Write(const void* from, std::size_t bytes) const;
    void Read(void* to, std::size_t bytes) const;

  private:
    HANDLE process_;
    void* address_;
};

/// Calls a function of user32.dll with up to three integer or handle arguments inside another process and returns the
/// low half of its result. For what only the owner of an object may ask: under Wine, the state of its menus.
DWORD CallInside(const Process& process, const char* functionOfUser32, std::array<UINT_PTR, 3> arguments);

} // namespace vextrel::driver
