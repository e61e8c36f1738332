#pragma once

#include <windows.h>

/// What the floor program and the measurement agree on. All are sent messages without parameters.
namespace vextrel::floor {

inline constexpr const wchar_t* windowClass = L"VextrelFloor";
inline constexpr const wchar_t* layerClass = L"VextrelFloorLayer";

inline constexpr int textField = 201;   ///< edit field that `setText` fills
inline constexpr int typingField = 202; ///< edit field that times the characters it receives
inline constexpr int longText = 1000;   ///< characters that `setText` sets

inline constexpr UINT setCaptions = WM_APP + 1; ///< gives 47 buttons another text
inline constexpr UINT setText = WM_APP + 2;     ///< gives the field another long text
inline constexpr UINT place = WM_APP + 3;       ///< another size and place for the window, its buttons and its layer
/// Empties the typing field; answers the microseconds from its first to its last character since the last time.
inline constexpr UINT typingTime = WM_APP + 4;

} // namespace vextrel::floor
