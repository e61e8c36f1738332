#pragma once

#include "driver/Process.h"

namespace vextrel::driver {

/// Memory inside another process, for messages whose arguments are pointers there.
class RemoteMemory : Pinned {
  public:
    RemoteMemory(const Process& process, std::size_t bytes)
        : process_(process.Handle())
        , address_(VirtualAllocEx(process_, nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {
        Check(address_ != nullptr, "VirtualAllocEx");
    }
    ~RemoteMemory() { VirtualFreeEx(process_, address_, 0, MEM_RELEASE); }

    [[nodiscard]] void* Address() const { return address_; }
    void Write(const void* from, std::size_t bytes) const {
        Check(WriteProcessMemory(process_, address_, from, bytes, nullptr) != FALSE, "WriteProcessMemory");
    }
    void Read(void* to, std::size_t bytes) const {
        Check(ReadProcessMemory(process_, address_, to, bytes, nullptr) != FALSE, "ReadProcessMemory");
    }

  private:
    HANDLE process_;
    void* address_;
};

} // namespace vextrel::driver
