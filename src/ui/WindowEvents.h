#pragma once

#include "ui/SliderRow.h"
#include "win32/MoveHook.h"

namespace vextrel {

/// What the main window reports, and asks.
class WindowEvents : public MoveEvents, public SliderEvents {
  public:
    /// Over the background, the labels or the toolbar.
    virtual void MouseMoveInForm() = 0;
    /// A menu item, a toolbar button or a delay of the Hover button's menu.
    virtual void Command(int id) = 0;
    virtual void FormActivated() = 0;
    /// The screen's resolution or arrangement changed.
    virtual void DisplayChanged() = 0;
    /// The user wants to leave. @return whether the main window may be unloaded now.
    virtual bool MayUnload() = 0;
    virtual void FormUnloading() = 0;
    /// Time to look whether another window has come to the front.
    virtual void CheckActiveWindow() = 0;
    /// A menu opens or has closed: hover entry rests meanwhile.
    virtual void MenuLoop(bool entered) = 0;
    /// The user's session ends: nothing secret may stay.
    virtual void SessionEnding() = 0;
    /// Whether the grey dot is to be shown where the pointer is now.
    [[nodiscard]] virtual bool ShowsDotPointer() const = 0;

  protected:
    ~WindowEvents() = default;
};

} // namespace vextrel
