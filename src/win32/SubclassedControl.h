#pragma once

#include "win32/Windows.h"

namespace vextrel {

/// A control of the system's whose messages an object of ours gets first. The object stands in the control's user data
/// rather than among its properties, where the common controls' own helper keeps it: a key's every message would look
/// it up there, which costs more than most of the messages themselves.
class SubclassedControl {
  public:
    SubclassedControl(const SubclassedControl&) = delete;
    SubclassedControl& operator=(const SubclassedControl&) = delete;

    /// Null before the control is created and after it has gone.
    [[nodiscard]] HWND Handle() const noexcept { return handle_; }

  protected:
    SubclassedControl() = default;
    /// The control, if it lives longer, is itself again.
    ~SubclassedControl();

    /// Takes over a control just created. @throws Error with the system's code when there is none.
    void Attach(HWND control);
    /// What the control itself does with a message.
    LRESULT ToControl(UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    virtual LRESULT OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept = 0;
    WNDPROC Detach() noexcept;

    HWND handle_ = nullptr;
    WNDPROC control_ = nullptr;
};

} // namespace vextrel
