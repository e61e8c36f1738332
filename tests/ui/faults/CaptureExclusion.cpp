// Takes the place of the system's calls that keep windows out of screen captures: Wine has none. A window remembers in a
// property, which other programs can read, what it was asked for.

#include "faults/FaultOrder.h"

#include <cwchar>

namespace vextrel {

namespace {

DWORD AffinityOf(HWND window) noexcept {
    return static_cast<DWORD>(reinterpret_cast<UINT_PTR>(::GetPropW(window, faults::affinityProperty)));
}

BOOL WINAPI SetAffinity(HWND window, DWORD affinity) noexcept {
    wchar_t fault[32] = {};
    ::GetEnvironmentVariableW(faults::faultAtStart, fault, DWORD{std::size(fault)});
    if (affinity != WDA_MONITOR && std::wcscmp(fault, faults::olderCapture) == 0) {
        return FALSE;
    }
    const DWORD seen = ::IsWindowVisible(window) != FALSE ? faults::tooLate : 0;
    return ::SetPropW(window, faults::affinityProperty,
                      reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(affinity | seen)));
}

BOOL WINAPI GetAffinity(HWND window, DWORD* affinity) noexcept {
    *affinity = AffinityOf(window) & ~faults::tooLate;
    return TRUE;
}

} // namespace

// What the program's calls go through, under the names that the import library would give them.
auto* setAffinityImport asm("__imp_SetWindowDisplayAffinity") = &SetAffinity;
auto* getAffinityImport asm("__imp_GetWindowDisplayAffinity") = &GetAffinity;

} // namespace vextrel
