#pragma once

#include "core/Pinned.h"
#include "win32/Windows.h"

namespace vextrel {

/// A window whose messages an object of ours gets first. The object is found in a table of this process, never through
/// anything that another process can write (user data, properties).
class SubclassedWindow : private Pinned {
  public:
    /// Null before a window is taken over and after it has gone.
    [[nodiscard]] HWND Handle() const noexcept { return handle_; }

  protected:
    SubclassedWindow() = default;
    /// The window, if it lives longer, is itself again.
    ~SubclassedWindow() { Detach(); }

    /// Takes over a window. @throws Error with the system's code when it cannot be.
    void Attach(HWND window);
    /// Gives it back. Harmless without one.
    void Detach() noexcept;
    /// What the window itself does with a message.
    LRESULT ToWindow(UINT message, WPARAM wParam, LPARAM lParam) const noexcept;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    virtual LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept = 0;

    HWND handle_ = nullptr;
    WNDPROC previous_ = nullptr;
};

} // namespace vextrel
