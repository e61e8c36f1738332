#pragma once

#include "core/LayoutCapture.h"
#include "win32/Windows.h"

namespace vextrel {

// Capture of the keyboard layout that is active in the system, with real key presses (the rules: LayoutCapture.h).
// Messages are processed between them, so the caller runs it as a transfer (ui/Operations.h); a keyboard hook of the
// program lets these keys pass meanwhile. Focus and activation stay with the setup box: the caller brings them back.

/// Captures the two captions of one slot; Caps Lock is taken as it is.
/// @param setupBox an edit control of this thread that can take the focus.
/// @throws Error "Subscript out of range" for slot 49 and above.
[[nodiscard]] CaptureResult GetCommandButtonCaptions(std::uint8_t virtualKey, HWND setupBox, std::size_t slot,
                                                     KeyCaptions& captions);

/// Captures all 47 slots.
[[nodiscard]] CaptureResult LoadDefaultLayout(HWND setupBox, KeyCaptions& captions);

} // namespace vextrel
