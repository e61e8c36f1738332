#pragma once

#include "ui/KeyboardEvents.h"

namespace vextrel {

/// Stands in for the controller while there is none, so that a message that comes early or late finds every handler
/// safe. Refuses what can be refused.
class NoEvents final : public KeyboardEvents {
  public:
    [[nodiscard]] static KeyboardEvents& Instance() noexcept {
        static NoEvents instance;
        return instance;
    }

    void ButtonClick(int) override {}
    void ButtonMouseUp(int) override {}
    void ButtonMouseMove(int) override {}
    void MouseMoveInTextBox() override {}
    void MouseMoveInForm() override {}
    void Timer() override {}
    bool KeyPress(wchar_t) override { return false; }
    bool KeyDown(UINT) override { return false; }
    void KeyUp(UINT) override {}
    void PasteIntoMaskedBox() override {}
    bool PlainBoxWillChange() override { return false; }
    void PlainBoxHasChanged() override {}
    void DragPassword() override {}
    void Command(int) override {}
    void HoverSliderMoved(int) override {}
    void TransparencySliderMoved(int) override {}
    void FormActivated() override {}
    void FormResized() override {}
    void FormMoved() override {}
    void DisplayChanged() override {}
    bool MayUnload() override { return true; }
    void FormUnloading() override {}
    void CheckActiveWindow() override {}
    void MenuLoop(bool) override {}
    void SessionEnding() override {}
    [[nodiscard]] bool ShowsDotPointer() const override { return false; }
};

} // namespace vextrel
