#pragma once

#include "win32/Windows.h"

namespace vextrel {

/// The mouse while a key is held. The keys' window takes it, not the key: the system tells every accessibility listener
/// which window takes the mouse, and a key's text is the character that is being entered.
class KeyCapture {
  public:
    void Take(HWND key) noexcept;
    [[nodiscard]] bool IsFor(HWND key) const noexcept;
    /// Gives the mouse back; the key learns of it by WM_CAPTURECHANGED.
    static void Release() noexcept { ::ReleaseCapture(); }

    /// Passes on what the keys' window gets for the held key. @return whether the message was one for it.
    bool Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  private:
    HWND key_ = nullptr;
};

} // namespace vextrel
