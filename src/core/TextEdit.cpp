#include "core/TextEdit.h"

#include "core/CaptionText.h"
#include "core/Numbers.h"

namespace vextrel {

namespace {

constexpr std::size_t Position(std::int16_t value) noexcept {
    return value > 0 ? static_cast<std::size_t>(value) : 0;
}

TextRange Selected(const BoxState& box) noexcept {
    return {Position(box.selection.start), Position(box.selection.length)};
}

std::int64_t Signed(std::size_t value) noexcept {
    return static_cast<std::int64_t>(value);
}

/// Whether a text can still be addressed in 16 bits once a range of it has given way to inserted characters.
void CheckLength(std::size_t length, TextRange replaced, std::size_t inserted) {
    static_cast<void>(ToInt16(Signed(length - replaced.CutAt(length).count) + Signed(inserted)));
}

Splice Erase(TextRange range, std::size_t length) {
    return {.range = range.CutAt(length), .text = {}};
}

} // namespace

Splice::~Splice() {
    WipeMemory(text.data(), text.size() * sizeof(wchar_t));
}

void CheckSelection(BoxSelection selection) {
    static_cast<void>(ToInt16(std::int64_t{selection.start} + selection.length + 1));
}

TextEdit EnterIntoBoxOnly(const BoxState& box, std::wstring_view text) {
    CheckSelection(box.selection);
    const TextRange selected = Selected(box);
    CheckLength(box.length, selected, text.size());
    return {.box = Splice{.range = selected.CutAt(box.length), .text = std::wstring(text)},
            .password = std::nullopt,
            .caret = ToInt16(Signed(selected.start + text.size()))};
}

TextEdit EnterText(const BoxState& box, std::wstring_view text) {
    const TextRange selected = Selected(box);
    CheckLength(box.passwordLength, selected, text.size());
    TextEdit edit = box.view == PasswordBoxView::Masked
                        ? EnterIntoBoxOnly(box, std::wstring(text.size(), maskCharacter))
                        : EnterIntoBoxOnly(box, text);
    edit.password = Splice{.range = selected.CutAt(box.passwordLength), .text = std::wstring(text)};
    return edit;
}

TextEdit EraseBackwards(const BoxState& box) {
    CheckSelection(box.selection);
    const TextRange selected = Selected(box);
    const bool behindLineBreak = selected.count == 0 && box.characterBeforeCaret == L'\n';
    // A box whose text is set anew has its caret at the start, and a caret before the first character is not set.
    const std::size_t back = std::min<std::size_t>(selected.start, behindLineBreak ? 2 : 1);
    const std::size_t caret = selected.start - back;
    TextEdit edit{.box = std::nullopt, .password = std::nullopt, .caret = ToInt16(Signed(caret))};
    if (selected.count > 0) {
        edit.box = Erase(selected, box.length);
    } else if (back > 0) {
        edit.box = Erase({caret, back}, box.length);
        const std::size_t reached = std::min(selected.start, box.passwordLength);
        if (!behindLineBreak && reached > 0) {
            edit.password = Erase({reached - 1, 1}, box.passwordLength);
        }
    }
    return edit;
}

TextEdit EraseForwards(const BoxState& box) {
    TextRange erased = Selected(box);
    erased.count = std::max<std::size_t>(erased.count, 1);
    TextEdit edit{.box = std::nullopt, .password = std::nullopt, .caret = box.selection.start};
    if (erased.start < box.length) {
        edit.box = Erase(erased, box.length);
        edit.password = Erase(erased, box.passwordLength);
    }
    return edit;
}

void ApplyToPassword(const TextEdit& edit, SecretText& password) {
    if (edit.password) {
        password.Replace(edit.password->range, edit.password->text);
    }
}

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
        outcome.modifiers.shiftIsPhysical = false;
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
