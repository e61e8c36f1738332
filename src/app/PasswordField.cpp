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
    }
    textIsMasked_ = masked;
    if (masked) {
        Mask();
    } else {
        Unmask();
    }
    for (const int key : keysOfThePlainView) {
        ::EnableWindow(form_.Key(key).Handle(), masked ? FALSE : TRUE);
    }
}

void PasswordField::TakePlainText() {
    if (!form_.txtPassword().IsShown()) {
        SecretText text;
        form_.txtText().ReadText(text);
        ReadPlainBox(text.View(), currentPassword_);
    }
}

void PasswordField::Mask() {
    PasswordBox& masked = form_.txtPassword();
    PasswordBox& plain = form_.txtText();
    const bool wasPlain = !masked.IsShown();
    const BoxSelection selection = wasPlain ? plain.Selection() : masked.Selection();
    plain.Show(false);
    masked.Show(true);
    if (wasPlain) {
        // Nothing visible depends on it any more, and the password must not wait in a control.
        plain.OverwriteAndEmpty();
        OverwriteFreedMemory();
    }
    FillMaskedBox();
    if (form_.IsVisible()) {
        ::SetFocus(masked.Handle());
    }
    masked.Select(selection);
}

void PasswordField::Unmask() {
    PasswordBox& masked = form_.txtPassword();
    PasswordBox& plain = form_.txtText();
    const BoxSelection selection = masked.IsShown() ? masked.Selection() : plain.Selection();
    plain.Show(true);
    masked.Show(false);
    plain.SetText(currentPassword_.CString());
    if (form_.IsVisible()) {
        ::SetFocus(plain.Handle());
    }
    plain.Select(selection);
}

void PasswordField::FillMaskedBox() noexcept {
    form_.txtPassword().SetText(std::wstring(currentPassword_.Size(), L'*').c_str());
}

void PasswordField::ClearText() {
    form_.txtPassword().SetText(L"");
    form_.txtText().OverwriteAndEmpty();
    currentPassword_.Clear();
    OverwriteFreedMemory();
}

void PasswordField::HighlightText() {
    PasswordBox& masked = form_.txtPassword();
    const auto maskedLength = static_cast<std::int16_t>(masked.Length());
    if (masked.IsShown()) {
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
        SecretText text;
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
        FillMaskedBox();
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
    SecretText after;
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
        form_.txtPassword().SetText(L"");
        form_.txtText().OverwriteAndEmpty();
    }
    currentPassword_.Clear();
    OverwriteFreedMemory();
}

} // namespace vextrel
