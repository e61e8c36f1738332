#pragma once

#include "core/Geometry.h"
#include "win32/Windows.h"

#include <initializer_list>

namespace vextrel {

struct ControlArgs {
    const wchar_t* windowClass = WC_STATICW;
    const wchar_t* text = L"";
    DWORD style = 0; ///< besides WS_CHILD
    DWORD exStyle = 0;
    Rect placePx = {};
    int id = 0;
    bool isSecret = false; ///< nobody else is told its text
};
/// Creates a control in a window, behind the gate. @throws Error with the system's code.
[[nodiscard]] HWND CreateControl(HWND parent, const ControlArgs& args);

/// A control and the name that a screen reader says for it.
struct AccessibleName {
    HWND control;
    const wchar_t* name; ///< null: its text again
};

/// Names controls where their text would mislead or is missing. A system without the annotation service leaves them as
/// they are.
void SetAccessibleNames(std::initializer_list<AccessibleName> names) noexcept;
/// What a screen reader says that a control stands at; likewise.
void SetAccessibleValue(HWND control, const wchar_t* value) noexcept;

} // namespace vextrel
