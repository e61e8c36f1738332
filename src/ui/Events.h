#pragma once

// What the windows and controls report, each by an interface of its own. They decide nothing.

#include "core/OptionValues.h"
#include "win32/MoveHook.h"

namespace vextrel {

/// What a key reports.
class KeyEvents {
  public:
    /// A click on a key, 1 to 65.
    virtual void ButtonClick(int button) = 0;
    virtual void ButtonMouseUp(int button) = 0;
    virtual void ButtonMouseMove(int button) = 0;

  protected:
    ~KeyEvents() = default;
};

/// What a password box reports, and asks.
class BoxEvents {
  public:
    virtual void MouseMoveInTextBox() = 0;
    /// A character typed into the box. @return whether the box may still insert it itself.
    virtual bool KeyPress(wchar_t code) = 0;
    /// @return whether the box may still act on the key itself.
    virtual bool KeyDown(unsigned virtualKey) = 0;
    virtual void KeyUp(unsigned virtualKey) = 0;
    /// Everything is to be cleared, not what is selected alone.
    virtual void ClearText() = 0;
    /// The clipboard's text is to be entered into the masked box.
    virtual void PasteIntoMaskedBox() = 0;
    /// The plain box is about to act by itself. @return whether it may; then tell when it has done so.
    virtual bool PlainBoxWillChange() = 0;
    virtual void PlainBoxHasChanged() = 0;
    /// The user pulls the password out of the box: the whole drag, from start to end.
    virtual void DragPassword() = 0;

  protected:
    ~BoxEvents() = default;
};

/// What the protective layer reports, and asks; of the key that lies beneath, it reports as that would.
class LayerEvents : public KeyEvents {
  public:
    /// Over a part of the layer that is no key.
    virtual void MouseMoveInForm() = 0;
    /// On a double click.
    virtual void FlashKey(int button) = 0;
    /// A key beneath is to be shown pushed, or no longer.
    virtual void PushKey(int button, bool pushed) noexcept = 0;
    /// The layer was clicked: the main window, not the layer, comes to the front.
    virtual void BringToFront() = 0;
    /// A tick of the hover timer with the pointer over the layer.
    virtual void Timer() = 0;
    /// The pointer is no longer over the keys: none is armed.
    virtual void ClearCurrentButton() = 0;
    /// A tick of the foreground watch.
    virtual void CheckForeground() = 0;

    [[nodiscard]] virtual InputMode CurrentInputMode() const = 0;
    [[nodiscard]] virtual bool IsHoverEntryEnabled() const = 0;
    /// Whether the grey dot is to be shown where the pointer is now.
    [[nodiscard]] virtual bool ShowsDotPointer() const = 0;

  protected:
    ~LayerEvents() = default;
};

/// What the main window reports, and asks.
class WindowEvents : public MoveEvents {
  public:
    /// Over the background, the labels or the toolbar.
    virtual void MouseMoveInForm() = 0;
    /// Of a menu item, a button of the toolbar or a delay of its menu.
    virtual void Command(int id) = 0;
    /// The user moved a slider.
    virtual void HoverSliderMoved(int positionMs) = 0;
    virtual void TransparencySliderMoved(int percent) = 0;
    virtual void FormActivated() = 0;
    /// The user's session was locked, left, taken up or the like. @param change the system's number.
    virtual void SessionChanged(WPARAM change) = 0;
    /// The screen's resolution or arrangement changed.
    virtual void DisplayChanged() = 0;
    /// The user wants to leave. @return whether the main window may be unloaded now.
    virtual bool MayUnload() = 0;
    virtual void FormUnloading() = 0;
    /// Time to look whether another window has come to the front.
    virtual void CheckActiveWindow() = 0;
    /// A menu opens or has closed.
    virtual void MenuLoop(bool entered) = 0;
    /// The user's session ends: nothing secret may stay.
    virtual void SessionEnding() = 0;
    /// Whether the grey dot is to be shown where the pointer is now.
    [[nodiscard]] virtual bool ShowsDotPointer() const = 0;

  protected:
    ~WindowEvents() = default;
};

} // namespace vextrel
