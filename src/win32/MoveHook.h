#pragma once

#include "win32/SubclassedWindow.h"

namespace vextrel {

/// Whom a form's moves and size changes are told.
class MoveEvents {
  public:
    virtual void FormMoved() = 0;
    /// Not when it is minimised or maximised.
    virtual void FormResized() = 0;

  protected:
    ~MoveEvents() = default;
};

/// Stands in place of a form's window procedure and tells of its moves and size changes, after the form has had them.
class MoveHook final : public SubclassedWindow {
  public:
    void Install(HWND form, MoveEvents& events);
    void Remove() noexcept { Detach(); }

    /// Whether it tells at all: not before the whole program exists.
    void SetActing(bool acting) noexcept { isActing_ = acting; }

  private:
    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept override;

    MoveEvents* events_ = nullptr;
    bool isActing_ = false;
    bool isTelling_ = false; ///< what is done then moves and sizes windows itself, and is not to be told again
};

} // namespace vextrel
