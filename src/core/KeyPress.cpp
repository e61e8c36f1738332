#include "core/KeyPress.h"

#include "core/CaptionText.h"
#include "core/KeyTable.h"

namespace vextrel {

namespace {

KeyPressOutcome PressCharacterKey(std::wstring_view caption, const BoxState& box, Modifiers modifiers) {
    modifiers.shiftIsDown = modifiers.shiftIsDown && !modifiers.shiftLatched;
    return {.edit = EnterText(box, TextOfCaption(caption)), .modifiers = modifiers};
}

/// Tab and Enter: they exist in the plain view only.
std::optional<TextEdit> EnterIfPlain(const BoxState& box, std::wstring_view text) {
    if (box.view == PasswordBoxView::Masked) {
        return std::nullopt;
    }
    return EnterIntoBoxOnly(box, text);
}

} // namespace

KeyPressOutcome PressKey(int button, std::wstring_view caption, const BoxState& box, Modifiers modifiers) {
    // Every key reads caret and selection first, also one that does not use them.
    CheckSelection(box.selection);
    switch (button) {
    case keys::backspace: return {.edit = EraseBackwards(box), .modifiers = modifiers};
    case keys::tab: return {.edit = EnterIfPlain(box, L"\t"), .modifiers = modifiers};
    case keys::enter: return {.edit = EnterIfPlain(box, L"\r\n"), .modifiers = modifiers};
    case keys::capsLock:
        modifiers.capsLockIsDown = !modifiers.capsLockIsDown;
        return {.edit = {}, .modifiers = modifiers};
    case keys::leftShift:
    case keys::rightShift:
        modifiers.shiftLatched = true;
        modifiers.shiftIsDown = !modifiers.shiftIsDown;
        return {.edit = {}, .modifiers = modifiers};
    case keys::messageLeftover: return {.edit = {}, .modifiers = modifiers, .showLeftover = true};
    default:
        return IsInertKey(button) ? KeyPressOutcome{.edit = {}, .modifiers = modifiers}
                                  : PressCharacterKey(caption, box, modifiers);
    }
}

} // namespace vextrel
