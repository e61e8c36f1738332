#pragma once

#include <windows.h>

#include <string>

namespace vextrel::faults {

/// What a test asks the faulty build for, in memory that both share: the named handler throws the next `times` times.
struct FaultOrder {
    volatile LONG times;
    enum class Kind : LONG { OurError, SystemError, OutOfMemory, StandardError, Unknown } kind;
    wchar_t handler[64];
};

inline std::wstring NameOfOrder(DWORD processId) {
    return L"Local\\VextrelFault" + std::to_wstring(processId);
}

} // namespace vextrel::faults
