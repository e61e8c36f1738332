#pragma once

#include "driver/Process.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vextrel::driver {

/// Memory inside another process, for messages and calls whose arguments are pointers there.
class RemoteMemory : Pinned {
  public:
    RemoteMemory(const Process& process, std::size_t bytes, bool executable = false)
        : process_(process.Handle())
        , address_(VirtualAllocEx(process_, nullptr, bytes, MEM_COMMIT | MEM_RESERVE,
                                  executable ? PAGE_EXECUTE_READWRITE : PAGE_READWRITE)) {
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

/// Calls a function of user32.dll with up to three integer or handle arguments inside another process and returns the
/// low half of its result. For what only the owner of an object may ask: under Wine, the state of its menus.
inline DWORD CallInside(const Process& process, const char* functionOfUser32, std::array<UINT_PTR, 3> arguments) {
    struct Call {
        // The thread's start routine; its argument is the address of the Call, its exit code the function's result.
        std::array<unsigned char, 24> code{0x48, 0x8B, 0x41, 0x18, // mov rax, [rcx + 24]
                                           0x48, 0x8B, 0x51, 0x28, // mov rdx, [rcx + 40]
                                           0x4C, 0x8B, 0x41, 0x30, // mov r8, [rcx + 48]
                                           0x48, 0x8B, 0x49, 0x20, // mov rcx, [rcx + 32]
                                           0xFF, 0xE0};            // jmp rax
        FARPROC function; // the system's libraries lie at the same address in every process
        std::array<UINT_PTR, 3> arguments;
    };
    const Call call{.function = GetProcAddress(GetModuleHandleW(L"user32.dll"), functionOfUser32),
                    .arguments = arguments};
    const RemoteMemory memory(process, sizeof call, true);
    memory.Write(&call, sizeof call);
    // Wine makes a thread of the process itself create the new one, in the middle of whatever it does. That must not be
    // anything that holds a lock which the call needs, painting for example.
    Await("the program has nothing to paint", [&] {
        const auto windows = process.Windows(L"VextrelForm");
        const auto all = windows.empty() ? windows : Process::AllBeside(windows.front());
        Ask(all.empty() ? nullptr : all.front(), WM_NULL);
        return std::ranges::none_of(all, [](HWND window) {
            return IsWindowVisible(window) != FALSE && GetUpdateRect(window, nullptr, FALSE) != FALSE;
        });
    });
    const HANDLE thread =
        CreateRemoteThread(process.Handle(), nullptr, 0, std::bit_cast<LPTHREAD_START_ROUTINE>(memory.Address()),
                           memory.Address(), 0, nullptr);
    DWORD result = 0;
    const bool ended = WaitForSingleObject(thread, static_cast<DWORD>(usualLimit.count())) == WAIT_OBJECT_0 &&
                       GetExitCodeThread(thread, &result) != FALSE;
    CloseHandle(thread);
    Check(ended, functionOfUser32);
    return result;
}

} // namespace vextrel::driver
