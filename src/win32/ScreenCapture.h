#pragma once

#include "core/Pinned.h"
#include "win32/handles.h"

namespace vextrel {

/// What a recording of the screen shows of a window, as the system says when asked.
enum class CaptureState {
    Excluded, ///< what lies behind it, as if it were not there
    Black,    ///< a black area (Windows before 10 version 2004)
    Shown,    ///< the window: the system refused, or was not asked
};

[[nodiscard]] CaptureState CaptureStateOf(HWND window) noexcept;

/// Keeps a top-level window of this process out of screen captures while a CaptureExclusion lives; else does nothing.
/// The system may refuse (without desktop composition, say); the window is then as visible as any other.
void ExcludeFromCapture(HWND window) noexcept;

/// While it lives, this thread's windows are kept out of screen captures: our own from their creation, the system's
/// wherever a SystemWindowsScope stands.
class CaptureExclusion : private Pinned {
  public:
    /// @param systemWindowsToo takes a hook for those.
    explicit CaptureExclusion(bool systemWindowsToo) noexcept;
    ~CaptureExclusion();
};

/// Stands around whatever makes the system show windows of its own on this thread (menus, message boxes, common
/// dialogs): while it lives, they are excluded before they are first seen. Nests. Not kept for good, because watching
/// makes every message of the thread dearer, a key press as well.
class SystemWindowsScope : private Pinned {
  public:
    SystemWindowsScope() noexcept;
    ~SystemWindowsScope();
};

} // namespace vextrel
