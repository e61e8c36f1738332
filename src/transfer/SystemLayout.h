#pragma once

#include "core/LayoutCapture.h"
#include "win32/Windows.h"

namespace vextrel {

/// Captures the keyboard layout that is active in the system, all 47 slots, with real key presses (the rules:
/// core/LayoutCapture.h). Messages are processed between them, so the caller runs it as a transfer; a keyboard hook of
/// the program lets these keys pass meanwhile. Focus and activation stay with the setup box: the caller brings them
/// back. @param setupBox an edit control of this thread that can take the focus.
[[nodiscard]] CaptureResult LoadDefaultLayout(HWND setupBox, KeyCaptions& captions);

} // namespace vextrel
