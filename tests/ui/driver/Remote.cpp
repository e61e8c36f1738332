#include "driver/Remote.h"

#include <bit>

namespace vextrel::driver {

RemoteMemory::RemoteMemory(const Process& process, std::size_t bytes, bool executable)
    : process_(process.Handle())
    , address_(VirtualAllocEx(process_, nullptr, bytes, MEM_COMMIT | MEM_RESERVE,
                              executable ? PAGE_EXECUTE_READWRITE : PAGE_READWRITE)) {
    Check(address_ != nullptr, "VirtualAllocEx");
}

RemoteMemory::~RemoteMemory() {
    VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
}

void RemoteMemory::Write(const void* from, std::size_t bytes) const {
    Check(WriteProcessMemory(process_, address_, from, bytes, nullptr) != FALSE, "WriteProcessMemory");
}

void RemoteMemory::Read(void* to, std::size_t bytes) const {
    Check(ReadProcessMemory(process_, address_, to, bytes, nullptr) != FALSE, "ReadProcessMemory");
}

namespace {

BOOL CALLBACK FindUnpainted(HWND window, LPARAM found) {
    const bool unpainted = IsWindowVisible(window) != FALSE && GetUpdateRect(window, nullptr, FALSE) != FALSE;
    *reinterpret_cast<bool*>(found) = unpainted;
    return unpainted ? FALSE : TRUE;
}

/// Wine makes a thread of the process itself create a new one, in the middle of whatever it does. That must not be
/// anything that holds a lock which this needs, painting for example.
void AwaitRest(const Process& process) {
    Await("the program has nothing to do", [&] {
        bool unpainted = false;
        for (const HWND window : process.Windows(L"VextrelForm")) {
            Ask(window, WM_NULL);
            if (FindUnpainted(window, reinterpret_cast<LPARAM>(&unpainted)) != FALSE) {
                EnumChildWindows(window, FindUnpainted, reinterpret_cast<LPARAM>(&unpainted));
            }
            if (unpainted) {
                return false;
            }
        }
        return true;
    });
}

} // namespace

DWORD CallInside(const Process& process, const char* functionOfUser32, std::array<UINT_PTR, 3> arguments) {
    struct Call {
        std::array<unsigned char, 32> code;
        UINT_PTR function; // at offset 32, where the code expects it
        std::array<UINT_PTR, 3> arguments;
    };
    // The thread's start routine; its argument is the address of the Call, its exit code the function's result.
    Call call{{0x53,                   // push rbx
               0x48, 0x83, 0xEC, 0x20, // sub rsp, 32
               0x48, 0x89, 0xCB,       // mov rbx, rcx
               0x48, 0x8B, 0x4B, 0x28, // mov rcx, [rbx + 40]
               0x48, 0x8B, 0x53, 0x30, // mov rdx, [rbx + 48]
               0x4C, 0x8B, 0x43, 0x38, // mov r8, [rbx + 56]
               0xFF, 0x53, 0x20,       // call [rbx + 32]
               0x48, 0x83, 0xC4, 0x20, // add rsp, 32
               0x5B, 0xC3},            // pop rbx; ret
              0,
              arguments};
    // The system's libraries lie at the same address in every process.
    const FARPROC function = GetProcAddress(GetModuleHandleW(L"user32.dll"), functionOfUser32);
    Check(function != nullptr, functionOfUser32);
    call.function = std::bit_cast<UINT_PTR>(function);
    const RemoteMemory memory(process, sizeof call, true);
    memory.Write(&call, sizeof call);
    AwaitRest(process);
    const HANDLE thread =
        CreateRemoteThread(process.Handle(), nullptr, 0, std::bit_cast<LPTHREAD_START_ROUTINE>(memory.Address()),
                           memory.Address(), 0, nullptr);
    Check(thread != nullptr, "CreateRemoteThread");
    DWORD result = 0;
    const bool ended = WaitForSingleObject(thread, static_cast<DWORD>(usualLimit.count())) == WAIT_OBJECT_0 &&
                       GetExitCodeThread(thread, &result) != FALSE;
    CloseHandle(thread);
    Check(ended, functionOfUser32);
    return result;
}

} // namespace vextrel::driver
