#include "app/PasswordField.h"

#include "core/PasswordView.h"
#include "core/PhysicalInput.h"
#include "win32/FreedMemory.h"

namespace vextrel {

namespace {

/// Tab and Enter: they enter nothing into a masked box.
constexpr int keysOfThePlainView[] = {keys::tab, keys::enter};

} // namespace

void PasswordField::SetTextIsMasked(bool masked) {
    if (masked) {
        TakePlainText();
        Mask();
    } else {
        Unmask();
    }
    for (const int key : keysOfThePlainView) {
        ::EnableWindow(form_.Key(key).Handle(), masked ? FALSE : TRUE);
    }
}

void PasswordField::TakePlainText() {
    if (!TextIsMasked()) {
        LockedText text;
        form_.txtText().ReadText(text);
        ReadPlainBox(text.View(), currentPassword_);
    }
}

void PasswordField::Mask() {
    PasswordBox& masked = form_.txtPassword();
    const bool wasPlain = !TextIsMasked();
    const BoxSelection selection = form_.VisibleBox().Selection();
    form_.ShowBox(PasswordBoxView::Masked);
    if (wasPlain) {
        // Nothing visible depends on it any more, and the password must not wait in a control.
        form_.txtText().OverwriteAndEmpty();
        OverwriteFreedMemory();
    }
    masked.SetMask(currentPassword_.Size());
    FocusIfVisible(masked);
    masked.Select(selection);
}

void PasswordField::Unmask() {
    PasswordBox& plain = form_.txtText();
    const BoxSelection selection = form_.VisibleBox().Selection();
    form_.ShowBox(PasswordBoxView::Plain);
    plain.SetText(currentPassword_.CString());
    FocusIfVisible(plain);
    plain.Select(selection);
}

void PasswordField::FocusIfVisible(PasswordBox& box) const noexcept {
    if (form_.IsVisible()) {
        ::SetFocus(box.Handle());
    }
}

void PasswordField::ClearText() noexcept {
    form_.txtPassword().SetMask(0);
    form_.txtText().OverwriteAndEmpty();
    currentPassword_.Clear();
    OverwriteFreedMemory();
}

void PasswordField::HighlightText() {
    PasswordBox& masked = form_.txtPassword();
    const auto maskedLength = static_cast<std::int16_t>(masked.Length());
    if (TextIsMasked()) {
        ::SetFocus(masked.Handle());
        masked.Select({0, maskedLength});
    } else {
        PasswordBox& plain = form_.txtText();
        ::SetFocus(plain.Handle());
        // The other, hidden box is measured: its asterisks from the last time it was shown. Deliberate.
        plain.Select({maskedLength, plain.Selection().length});
    }
}

void PasswordField::DetermineSelectedPassword() {
    const TextRange range = DetermineSelectedRange(form_.VisibleBox().Selection(), currentPassword_.Size());
    selectedPassword_.Assign(currentPassword_.View(range));
}

BoxState PasswordField::ReadBox() {
    PasswordBox& box = form_.VisibleBox();
    BoxState state{.view = box.View(),
                   .selection = box.Selection(),
                   .length = box.Length(),
                   .passwordLength = currentPassword_.Size()};
    if (state.view == PasswordBoxView::Plain && state.selection.start > 0) {
        LockedText text;
        box.ReadText(text);
        const std::wstring_view before = text.View({static_cast<std::size_t>(state.selection.start) - 1, 1});
        state.characterBeforeCaret = before.empty() ? L'\0' : before.front();
    }
    return state;
}

void PasswordField::Apply(const TextEdit& edit) {
    ApplyToPassword(edit, currentPassword_);
    form_.VisibleBox().Apply(edit);
}

void PasswordField::Enter(std::wstring_view text) {
    if (!text.empty()) {
        Apply(EnterText(ReadBox(), text));
    }
}

void PasswordField::ShowPassword(std::int16_t caret) {
    PasswordBox& box = form_.VisibleBox();
    if (box.View() == PasswordBoxView::Masked) {
        box.SetMask(currentPassword_.Size());
    } else {
        box.OverwriteAndEmpty();
        box.SetText(currentPassword_.CString());
    }
    box.Select({caret, 0});
}

void PasswordField::PlainBoxWillChange() {
    form_.txtText().ReadText(plainBefore_);
}

void PasswordField::PlainBoxHasChanged() {
    LockedText after;
    form_.txtText().ReadText(after);
    const std::optional<Splice> splice = FollowPlainBox(plainBefore_.View(), after.View(), currentPassword_.Size());
    plainBefore_.Clear();
    if (splice) {
        currentPassword_.Replace(splice->range, splice->text);
    }
}

void PasswordField::Wipe() noexcept {
    selectedPassword_.Clear();
    plainBefore_.Clear();
    if (form_.IsLoaded()) {
        ClearText();
    }
}

} // namespace vextrel
