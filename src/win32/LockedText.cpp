#include "win32/LockedText.h"

#include "core/Error.h"
#include "win32/SystemLibrary.h"

// Locking and the exclusion from crash reports are what the system grants, not what the program needs: a refusal of
// either leaves ordinary pages, which are wiped all the same.

namespace vextrel {

namespace {

/// A process may lock about as much as its minimum working set, which is small at first. Raised only when a lock was
/// refused for it, so that pages which come and go do not raise it again and again.
void LockAgainstPaging(void* pages, std::size_t byteCount) noexcept {
    SIZE_T minimum = 0;
    SIZE_T maximum = 0;
    const HANDLE process = ::GetCurrentProcess();
    if (::VirtualLock(pages, byteCount) == FALSE && ::GetLastError() == ERROR_WORKING_SET_QUOTA &&
        ::GetProcessWorkingSetSize(process, &minimum, &maximum) != FALSE &&
        ::SetProcessWorkingSetSize(process, minimum + byteCount, maximum + byteCount) != FALSE) {
        ::VirtualLock(pages, byteCount);
    }
}

/// Calls one of the functions for crash reports, which exist from Windows 10 1703 on.
template <typename... Arguments>
void CallCrashReports(const char* function, Arguments... arguments) noexcept {
    using Function = HRESULT(WINAPI*)(Arguments...);
    if (const auto call = SystemLibrary(L"kernel32.dll").Find<Function>(function)) {
        call(arguments...);
    }
}

const class LockedPages final : public SecretPages {
  public:
    [[nodiscard]] void* Allocate(std::size_t byteCount) const override {
        void* pages = ::VirtualAlloc(nullptr, byteCount, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
        if (pages == nullptr) {
            throw Error(ErrorNumber::OutOfMemory);
        }
        LockAgainstPaging(pages, byteCount);
        CallCrashReports<const void*, DWORD>("WerRegisterExcludedMemoryBlock", pages, static_cast<DWORD>(byteCount));
        return pages;
    }

    void Release(void* pages, std::size_t byteCount) const noexcept override {
        if (pages == nullptr) {
            return;
        }
        WipeMemory(pages, byteCount);
        CallCrashReports<const void*>("WerUnregisterExcludedMemoryBlock", pages);
        // Freeing ends the lock, too.
        ::VirtualFree(pages, 0, MEM_RELEASE);
    }
} lockedPages;

} // namespace

LockedText::LockedText()
    : SecretText(lockedPages) {}

} // namespace vextrel
