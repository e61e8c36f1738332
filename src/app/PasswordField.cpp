#include "app/PasswordField.h"

#include "core/PasswordView.h"
#include "win32/FreedMemory.h"

namespace vextrel {

void PasswordField::SetTextIsMasked(bool masked) {
    const bool becomesMasked = masked && !TextIsMasked();
    if (becomesMasked) {
        // Before anything changes that shows it.
        LockedText text;
        form_.txtText().ReadText(text);
        ReadPlainBox(text.View(), currentPassword_);
    }
    const BoxSelection selection = form_.VisibleBox().Selection();
    form_.ShowBox(masked ? PasswordBoxView::Masked : PasswordBoxView::Plain);
    if (becomesMasked) {
        // Nothing visible depends on it any more, and the password must not wait in a control.
        form_.txtText().OverwriteAndEmpty();
        OverwriteFreedMemory();
    }
    FillVisibleBox();
    if (form_.IsVisible()) {
        form_.FocusVisibleBox();
    }
    form_.VisibleBox().Select(selection);
    for (const int key : {keys::tab, keys::enter}) { // they enter nothing into a masked box
        ::EnableWindow(form_.Key(key).Handle(), masked ? FALSE : TRUE);
    }
}

void PasswordField::ClearText() noexcept {
    form_.txtPassword().SetMask(0);
    form_.txtText().OverwriteAndEmpty();
    currentPassword_.Clear();
    OverwriteFreedMemory();
}

void PasswordField::HighlightText() {
    const auto maskedLength = static_cast<std::int16_t>(form_.txtPassword().Length());
    form_.FocusVisibleBox();
    if (TextIsMasked()) {
        form_.txtPassword().Select({0, maskedLength});
    } else {
        // The other, hidden box is measured: its asterisks from the last time it was shown. Deliberate.
        form_.txtText().Select({maskedLength, form_.txtText().Selection().length});
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

std::wstring PasswordField::Remark() {
    if (TextIsMasked()) {
        return std::wstring(RemarkOnMaskedBox(form_.txtPassword().Length(), currentPassword_.Size()));
    }
    LockedText text;
    form_.txtText().ReadText(text);
    return std::wstring(RemarkOnPlainBox(text.View(), currentPassword_.View()));
}

void PasswordField::FillVisibleBox() noexcept {
    PasswordBox& box = form_.VisibleBox();
    if (TextIsMasked()) {
        box.SetMask(currentPassword_.Size());
    } else {
        box.OverwriteAndEmpty();
        box.SetText(currentPassword_.CString());
    }
}

void PasswordField::ShowPassword(std::int16_t caret) {
    FillVisibleBox();
    form_.VisibleBox().Select({caret, 0});
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
