#include "core/KeyPress.h"

#include "core/CaptionText.h"

namespace vextrel {

KeyPressOutcome PressKey(int button, std::wstring_view caption, const BoxState& box, Modifiers modifiers) {
    // Every key reads caret and selection first, also one that does not use them.
    CheckSelection(box.selection);
    KeyPressOutcome outcome{.edit = {}, .modifiers = modifiers};
    switch (button) {
    case keys::backspace: outcome.edit = EraseBackwards(box); break;
    case keys::tab:
    case keys::enter:
        if (box.view == PasswordBoxView::Plain) {
            outcome.edit = EnterIntoBoxOnly(box, button == keys::tab ? L"\t" : L"\r\n");
        }
        break;
    case keys::capsLock: outcome.modifiers.capsLockIsDown = !modifiers.capsLockIsDown; break;
    case keys::leftShift:
    case keys::rightShift:
        outcome.modifiers.shiftLatched = true;
        outcome.modifiers.shiftIsDown = !modifiers.shiftIsDown;
        break;
    case keys::messageLeftover: outcome.showLeftover = true; break;
    default:
        if (!IsInertKey(button)) {
            outcome.edit = EnterText(box, TextOfCaption(caption));
            outcome.modifiers.shiftIsDown = modifiers.shiftIsDown && !modifiers.shiftLatched;
        }
    }
    return outcome;
}

} // namespace vextrel
