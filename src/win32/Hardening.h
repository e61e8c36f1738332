#pragma once

#include "win32/Windows.h"

#include <vector>

namespace vextrel {

/// What the process has been granted of what protects it against other programs.
struct Hardening {
    bool switchedOff = false;         ///< by the settings file: nothing was asked for
    bool foreignHooksOut = false;     ///< hook and input-method DLLs of the old kind stay out
    bool imagesRestricted = false;    ///< no DLL from a network path or of low integrity
    bool signedLibrariesOnly = false; ///< no DLL that Microsoft has not signed
    bool systemFolderOnly = false;    ///< DLLs asked for by name come from the system folder
    bool endsOnCorruption = false;    ///< a corrupted heap ends the process
    bool heapNotReported = false;     ///< error reports carry no heap
    bool memoryClosed = false;        ///< other programs of the same user may not open the process to read or write it
    bool threadsClosed = false;       ///< nor its main thread to change what it does
};

/// Asks the system for all of it. To be called before anything else is loaded or shown. What the system does not have
/// or refuses is left as it was, and the program runs without it.
[[nodiscard]] Hardening HardenProcess() noexcept;

/// Lets other programs of the same user see a thread of this process and wait for its end, no more.
/// @return whether the system agreed.
bool CloseThread(HANDLE thread) noexcept;

/// One protection, said as it is.
struct ProtectionLine {
    bool inForce;
    const wchar_t* text;
    ProtectionLine(bool isInForce, const wchar_t* ifSo, const wchar_t* ifNot)
        : inForce(isInForce)
        , text(isInForce ? ifSo : ifNot) {}
};
[[nodiscard]] std::vector<ProtectionLine> HardeningLines(const Hardening& hardening);

} // namespace vextrel
