#pragma once

#include "win32/Windows.h"

#include <cstdint>
#include <string>

namespace vextrel {

#ifdef VEXTREL_HOOKS_DISABLED
inline constexpr bool HooksDisabled = true;
#else
/// Keeps the program from installing the keyboard hook and replacing window procedures; the layer then starts at 100.
/// A constant of the build: nothing at run time sets it.
inline constexpr bool HooksDisabled = false;
#endif

/// What the whole program knows from its start; Program owns the one instance.
struct ProgramState {
    HINSTANCE instance = nullptr;
    std::wstring folder;           ///< of the running program file, without a trailing separator
    std::wstring SettingsFilePath; ///< empty until the controller has asked for it
    std::int16_t DefaultCoverTransparency = 5;
};

/// The folder of the running program file, without a trailing separator.
[[nodiscard]] std::wstring FindProgramFolder();

} // namespace vextrel
