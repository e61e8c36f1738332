#pragma once

#include <windows.h>

/// What the drop target and those who use it agree on.
///
/// Options: --read=always asks a drag's data for text at every move
///          --keep also keeps that of one which has gone by, and asks it at `readNow`
///          --topmost
namespace vextrel::target {

inline constexpr const wchar_t* windowClass = L"VextrelTarget";

inline constexpr int dropField = 101;  ///< edit field, shows the text that was dropped
inline constexpr int editField = 102;  ///< ordinary edit field
inline constexpr int charRecord = 103; ///< the UTF-16 units that came to editField as WM_CHAR, in hex: "0041 0062 "
inline constexpr int dropCount = 104;  ///< how many drops it has had
inline constexpr int keyRecord = 105;  ///< the keys that came to it, by virtual-key code: "+10 +41 -41 -10 "
inline constexpr int enterCount = 106; ///< hidden: how often a drag has entered dropField

inline constexpr UINT readNow = WM_APP + 1;

} // namespace vextrel::target
