#pragma once

#include <string>

namespace vextrel {

/// Sounds a hover entry: "beep.wav" in the folder if it is there, and returns when it has been played; else the
/// system's beep. A machine without a sound device stays silent.
void PlayHoverBeep(const std::wstring& folder);

} // namespace vextrel
