#pragma once

namespace vextrel {

/// What a password box reports, and asks.
class BoxEvents {
  public:
    virtual void MouseMoveInTextBox() = 0;
    /// A character typed into the box. @return whether the box may still insert it itself.
    virtual bool KeyPress(wchar_t code) = 0;
    /// @return whether the box may still act on the key itself.
    virtual bool KeyDown(unsigned virtualKey) = 0;
    virtual void KeyUp(unsigned virtualKey) = 0;
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

} // namespace vextrel
