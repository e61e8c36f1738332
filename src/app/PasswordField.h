#pragma once

#include "ui/MainWindow.h"
#include "win32/LockedText.h"

namespace vextrel {

/// The password and the two boxes of the main window that show it: reads the box, lets the rules decide, writes box
/// and password.
class PasswordField {
  public:
    explicit PasswordField(MainWindow& form)
        : form_(form) {}

    [[nodiscard]] SecretText& CurrentPassword() noexcept { return currentPassword_; }
    /// What the next drag or injection carries; empty in between.
    [[nodiscard]] SecretText& SelectedPassword() noexcept { return selectedPassword_; }

    [[nodiscard]] bool TextIsMasked() const noexcept { return form_.ShownView() == PasswordBoxView::Masked; }
    /// Switches the display. Caret and selection go along; the focus does, too, while the window is visible.
    /// @throws Error "Overflow" when the plain text does not fit into the password (each tab takes two characters);
    /// nothing is changed then.
    void SetTextIsMasked(bool masked);

    /// Empties masked box, plain box and password, in that order.
    void ClearText() noexcept;
    /// Focuses the visible box; selects everything in the masked one, moves the selection of the plain one behind as
    /// many characters as the masked one holds.
    void HighlightText();
    /// Puts into SelectedPassword what the visible box's selection stands for.
    void DetermineSelectedPassword();

    /// The visible box as the rules want it. @throws Error "Overflow" when a position does not fit 16 bits.
    [[nodiscard]] BoxState ReadBox();
    /// Carries an edit out, in the password first: if it does not fit there, the box stays, too.
    void Apply(const TextEdit& edit);
    /// Enters text from outside (typed, pasted) at the caret.
    void Enter(std::wstring_view text);

    /// What the user should know of what the visible box shows; empty when that is the password.
    [[nodiscard]] std::wstring Remark();

    /// Shows what is left of the password in the visible box, caret at a position, nothing selected.
    void ShowPassword(std::int16_t caret);

    /// The plain box is about to change by itself, and has: the password goes along.
    void PlainBoxWillChange() { form_.txtText().ReadText(plainBefore_); }
    void PlainBoxHasChanged();

    /// Wipes everything, boxes included.
    void Wipe() noexcept;

  private:
    void FillVisibleBox() noexcept;

    MainWindow& form_;
    LockedText currentPassword_;
    LockedText selectedPassword_;
    LockedText plainBefore_; ///< the plain box's text while it changes by itself; empty in between
};

} // namespace vextrel
