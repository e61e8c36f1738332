#pragma once

#include <windows.h>

#include <string>

namespace vextrel::faults {

/// What a test asks the faulty build for, in memory that both share: the named handler throws the next `times` times.
struct FaultOrder {
    volatile LONG times;
    enum class Kind : LONG {
        OurError,
        SystemError,
        OutOfMemory,
        StandardError,
        Unknown,
        // These do not throw.
        RefuseGraphics, ///< from now on the program is refused fonts, pens and pictures
        NoGraphics,     ///< from now on nobody in the program has room for another graphics object
        GraphicsAgain,  ///< all is as usual
    } kind;
    wchar_t handler[64];
};

/// In the faulty build itself.
inline bool refusesGraphics = false;

/// Names, for a program that is about to be started, the handler that throws first, or the class of which there are no
/// windows; or asks for a system that knows only the older way to keep windows out of captures.
inline constexpr const wchar_t* faultAtStart = L"VEXTREL_FAULT";
inline constexpr const wchar_t* olderCapture = L"older capture";

/// In place of the system, which may have no such thing, windows remember in this property how far they were kept out
/// of captures, and whether they had been seen before.
inline constexpr const wchar_t* affinityProperty = L"VextrelAffinity";
inline constexpr DWORD tooLate = 0x100;

inline std::wstring NameOfOrder(DWORD processId) {
    return L"Local\\VextrelFault" + std::to_wstring(processId);
}

} // namespace vextrel::faults
