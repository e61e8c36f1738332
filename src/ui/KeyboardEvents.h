#pragma once

#include "core/TextEdit.h"
#include "win32/Windows.h"

namespace vextrel {

/// What the windows tell the controller. They forward every event and decide nothing.
class KeyboardEvents {
  public:
    /// A click on a key button, 1 to 65, through the layer or directly.
    virtual void ButtonClick(int button) = 0;
    virtual void ButtonMouseUp(int button) = 0;
    virtual void ButtonMouseMove(int button) = 0;
    virtual void MouseMoveInTextBox() = 0;
    /// Over the background, the labels, the toolbar, or a part of the layer that is no key.
    virtual void MouseMoveInForm() = 0;
    /// A tick of the hover timer with the pointer over the keys.
    virtual void Timer() = 0;

    /// A character typed into a box. @return whether the box may still insert it itself.
    virtual bool KeyPress(wchar_t code) = 0;
    /// @return whether the box may still act on the key itself.
    virtual bool KeyDown(UINT virtualKey) = 0;
    virtual void KeyUp(UINT virtualKey) = 0;
    /// The clipboard's text is to be entered into the masked box.
    virtual void PasteIntoMaskedBox() = 0;
    /// The plain box is about to act by itself. @return whether it may; then tell when it has done so.
    virtual bool PlainBoxWillChange() = 0;
    virtual void PlainBoxHasChanged() = 0;
    /// The user pulls the password out of a box: the whole drag, from start to end.
    virtual void DragPassword() = 0;

    /// A menu item, a toolbar button or a delay of the Hover button's menu.
    virtual void Command(int id) = 0;
    virtual void HoverSliderMoved(int positionMs) = 0;
    virtual void TransparencySliderMoved(int percent) = 0;

    virtual void FormActivated() = 0;
    /// A size change that the window hook saw, and a move.
    virtual void FormResized() = 0;
    virtual void FormMoved() = 0;
    /// The screen's resolution or arrangement changed.
    virtual void DisplayChanged() = 0;
    /// The user wants to leave. @return whether the main window may be unloaded now.
    virtual bool MayUnload() = 0;
    virtual void FormUnloading() = 0;
    /// Another program's window, or one of ours, has come to the front since the last look.
    virtual void CheckActiveWindow() = 0;
    /// A menu opens or has closed: hover entry rests meanwhile.
    virtual void MenuLoop(bool entered) = 0;

    /// The user's session ends: nothing secret may stay.
    virtual void SessionEnding() = 0;

    /// Whether the grey dot is to be shown where the pointer is now.
    [[nodiscard]] virtual bool ShowsDotPointer() const = 0;

  protected:
    KeyboardEvents() = default;
    KeyboardEvents(const KeyboardEvents&) = default;
    KeyboardEvents& operator=(const KeyboardEvents&) = default;
    ~KeyboardEvents() = default;
};

} // namespace vextrel
