#pragma once

#include "core/DragGesture.h"
#include "core/TextEdit.h"
#include "ui/Events.h"

namespace vextrel {

/// One of the two text boxes that show the password: an edit control whose keyboard input goes through the controller
/// and out of which the password can be dragged.
class PasswordBox final : public SubclassedWindow {
  public:
    /// @throws Error with the system's code.
    void Create(HWND parent, int id, PasswordBoxView view, BoxEvents& events);

    [[nodiscard]] PasswordBoxView View() const noexcept { return view_; }
    /// The other box takes the place of a hidden one: what was beneath is not painted.
    void Show(bool show) noexcept {
        ::SetWindowPos(Handle(), nullptr, 0, 0, 0, 0,
                       SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE |
                           (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW | SWP_NOREDRAW));
    }

    /// @throws Error "Overflow" when a position does not fit 16 bits.
    [[nodiscard]] BoxSelection Selection() const;
    /// Positions behind the text's end are clamped by the box.
    void Select(BoxSelection selection) noexcept;
    [[nodiscard]] std::size_t Length() const noexcept {
        return static_cast<std::size_t>(ToWindow(WM_GETTEXTLENGTH, 0, 0));
    }
    void ReadText(SecretText& text) const;

    /// The font of what the empty masked box says that it is for. @param font outlives the next call.
    void SetCueFont(HFONT font) noexcept { cueFont_ = font; }

    // Our own changes; none of them comes back as an event.

    void SetText(const wchar_t* text) noexcept;
    /// Shows that many characters, masked.
    void SetMask(std::size_t count) noexcept;
    void Apply(const TextEdit& edit) noexcept;
    /// Overwrites what the control holds before it lets go of it.
    void OverwriteAndEmpty() noexcept;

  private:
    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept override;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// The box acts by itself; in the plain view the password then follows.
    LRESULT ToEditAndFollow(UINT message, WPARAM wParam, LPARAM lParam);
    /// What a change of ours leaves: no undo of it, and a new length.
    void Changed() noexcept;
    LRESULT OnChar(WPARAM wParam, LPARAM lParam);
    LRESULT OnKeyDown(WPARAM wParam, LPARAM lParam);
    [[nodiscard]] LRESULT DialogCodeFor(const MSG* message) const noexcept;
    LRESULT OnClipboard(UINT message, WPARAM wParam, LPARAM lParam);
    void OnContextMenu(POINT screen);
    LRESULT OnButtonDown(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseMove(WPARAM wParam, LPARAM lParam);
    LRESULT OnButtonUp(WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool IsOnSelection(LPARAM point) const;
    /// Whether the place under the pointer is one from which the password is dragged rather than edited.
    [[nodiscard]] bool IsDraggedFromHere() const;
    void StartDrag();

    PasswordBoxView view_ = PasswordBoxView::Masked;
    BoxEvents* events_ = nullptr;
    DragGesture gesture_;
    BoxSelection selectionBeforePress_;
    LPARAM pressPoint_ = 0;
    HFONT cueFont_ = nullptr;
    std::size_t longest_ = 0; ///< how many characters the control's memory may hold
    bool following_ = false;  ///< the box is acting by itself
    bool showsCue_ = true;
};

} // namespace vextrel
