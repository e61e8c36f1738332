#pragma once

#include "win32/Hardening.h"

#include <string>

namespace vextrel {

/// What the whole program knows from its start; the entry routine owns the one instance.
struct ProgramState {
    std::wstring folder;           ///< of the running program file, without a trailing separator
    std::wstring SettingsFilePath; ///< empty at first
    /// Keeps the program from installing hooks and replacing the forms' window procedures; the layer then starts
    /// visible. Nothing of the program sets it.
    bool HooksDisabled = false;
    Hardening hardening; ///< what the process was granted
    bool printScreenBlocked = false;
    bool answersOthers = false; ///< the gate is open
    int smallestKeyPx = 0;      ///< at 96 DPI
    int clearAfterMinutes = 0;  ///< without input; 0: never
};

/// ProgramState::folder. @throws Error with the system's code.
[[nodiscard]] std::wstring FindProgramFolder();

/// Whether a listing of the path finds an entry, a folder too.
[[nodiscard]] bool FileExists(const std::wstring& path) noexcept;

} // namespace vextrel
