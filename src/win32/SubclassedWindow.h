#pragma once

#include "core/GateRules.h"
#include "core/Pinned.h"
#include "win32/Windows.h"

namespace vextrel {

/// Puts the gate before a window's own procedure. @throws Error with the system's code when it cannot be.
void GateWindow(HWND window, GatedWindow kind);

/// A call of ours to a window, beneath the gate and past what stands in place of its procedure.
LRESULT Tell(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) noexcept;

/// A window whose messages an object of ours gets first, behind the gate. The object is found in a table of this
/// process, never through anything that another process can write (user data, properties).
class SubclassedWindow : private Pinned {
  public:
    /// Null before a window is taken over and after it has gone.
    [[nodiscard]] HWND Handle() const noexcept { return handle_; }
    /// What the window itself does with a message.
    LRESULT ToWindow(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
        return Tell(handle_, message, wParam, lParam);
    }

    /// A message that the gate has let through.
    virtual LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept = 0;

  protected:
    SubclassedWindow() = default;
    /// The window, if it lives longer, is itself again.
    ~SubclassedWindow() { Detach(); }

    /// Takes over a window that has a gate. @throws std::out_of_range for one that has none.
    void Attach(HWND window);
    /// Gives it back. Harmless without one.
    void Detach() noexcept;

  private:
    friend LRESULT CALLBACK GatedProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND handle_ = nullptr;
};

} // namespace vextrel
