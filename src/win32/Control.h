#pragma once

#include "core/Geometry.h"
#include "win32/Windows.h"

namespace vextrel {

struct ControlArgs {
    const wchar_t* windowClass = WC_STATICW;
    const wchar_t* text = L"";
    DWORD style = 0; ///< besides WS_CHILD
    DWORD exStyle = 0;
    Rect placePx = {};
    int id = 0;
};
/// Creates a control in a window. @throws Error with the system's code.
[[nodiscard]] HWND CreateControl(HWND parent, const ControlArgs& args);

} // namespace vextrel
