#pragma once

#include "win32/Windows.h"

#include <initializer_list>

namespace vextrel {

/// A control and the name that a screen reader says for it.
struct AccessibleName {
    HWND control;
    const wchar_t* name; ///< null: its text again
};

/// Names controls where their text would mislead or is missing. A system without the annotation service leaves them as
/// they are.
void SetAccessibleNames(std::initializer_list<AccessibleName> names) noexcept;

} // namespace vextrel
