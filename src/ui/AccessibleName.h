#pragma once

#include "win32/Windows.h"

namespace vextrel {

/// Gives a control the name that a screen reader says, where its text would mislead or is missing. A system without
/// the annotation service leaves the control as it is.
void SetAccessibleName(HWND control, const wchar_t* name) noexcept;

} // namespace vextrel
