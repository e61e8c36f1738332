#pragma once

#include "core/WindowGeometry.h"
#include "ui/KeyButton.h"
#include "ui/PasswordBox.h"
#include "ui/SliderRow.h"
#include "ui/StatusBar.h"
#include "ui/ToolbarControl.h"
#include "win32/Form.h"
#include "win32/ScreenCapture.h"

namespace vextrel {

/// The main window: keys, password boxes, toolbar, sliders, status bar, menu bar. It decides nothing: every event is
/// reported.
class MainWindow final : public Form {
  public:
    MainWindow() = default;
    ~MainWindow() override { Unload(); }

    /// Creates the window and its controls, hidden. Whom they report to outlives the window.
    /// @throws Error with the system's code.
    void Load(KeyEvents& keys, BoxEvents& boxes, WindowEvents& events);

    /// Watches the window's moves and sizes. @throws Error with the system's code.
    void InstallMoveHook() { moveHook_.Install(Handle(), *events_); }
    /// From now on they are reported.
    void ReportMoves() noexcept { moveHook_.SetActing(true); }

    /// @param number 1 to 65.
    [[nodiscard]] KeyButton& Key(int number) { return keys_.at(static_cast<std::size_t>(number - 1)); }
    [[nodiscard]] PasswordBox& txtPassword() noexcept { return txtPassword_; }
    [[nodiscard]] PasswordBox& txtText() noexcept { return txtText_; }
    /// Which of the two is shown.
    [[nodiscard]] PasswordBoxView ShownView() const noexcept { return shownView_; }
    [[nodiscard]] PasswordBox& VisibleBox() noexcept {
        return shownView_ == PasswordBoxView::Masked ? txtPassword_ : txtText_;
    }
    void ShowBox(PasswordBoxView view) noexcept;
    void FocusVisibleBox() noexcept { ::SetFocus(VisibleBox().Handle()); }

    /// Puts everything where it belongs at the window's present size, and tells that the keys may have moved.
    void Arrange();
    /// Heights that the window's own height counts with, in pixels; the toolbar's is 0 when hidden.
    [[nodiscard]] int ToolbarHeightPx() noexcept;
    [[nodiscard]] int StatusBarHeightPx() const noexcept { return statusBar_.HeightPx(); }
    /// What the protective layer covers, in pixels of the screen.
    [[nodiscard]] RECT KeyAreaOnScreen() const noexcept;

    /// Shows or hides the toolbar. The window grows or shrinks by the toolbar's height; the keys keep their size.
    void ShowToolbarControl(bool show);
    /// The hover slider with its label.
    void ShowHoverDelay(bool show);
    /// The characters that stand alone on keys: one size fits all of them.
    void SetCharacters(std::wstring characters);
    [[nodiscard]] SliderRow& Sliders() noexcept { return sliders_; }
    /// Check marks, enabled states, toolbar buttons and status bar.
    void Refresh(const CommandSnapshot& snapshot, StatusTexts status);
    /// What the status bar's first pane says in place of the input mode; empty takes it back.
    void ShowNotice(std::wstring text) { statusBar_.SetNotice(std::move(text)); }
    void ShowRemark(std::wstring text) { statusBar_.SetRemark(std::move(text)); }
    /// The control that has the keyboard focus, else the box that had it last.
    [[nodiscard]] HWND ActiveControl() const noexcept;

  private:
    void OnNotify(const NMHDR& header) noexcept;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnUnload() noexcept override;

    void CreateControls(KeyEvents& keys, BoxEvents& boxes);
    void ApplyDpi();
    void FitPasswordFont();
    void FitCharacters();
    [[nodiscard]] WindowGeometryInput GeometryInput();
    /// At the present width, in pixels with the frame; empty while the window is being created.
    [[nodiscard]] Size MinimumSize();
    void KeepKeysClickable();

    void OnCommand(int id, int notification);
    void OnDpiChanged(const RECT& suggested);
    void OnSystemLookChanged(UINT message);

    WindowEvents* events_ = nullptr;
    FontCache fonts_;
    ToolbarControl toolbar_;
    PasswordBox txtPassword_;
    PasswordBox txtText_;
    PasswordBoxView shownView_ = PasswordBoxView::Masked;
    SliderRow sliders_;
    StatusBar statusBar_;
    KeyCapture keyCapture_;
    std::array<KeyButton, keyButtonCount> keys_;
    MoveHook moveHook_;
    HWND activeControl_ = nullptr; ///< the box that had the focus last
    WindowGeometry geometry_;
    std::wstring characters_;
    int arrangedWidthPx_ = -1; ///< the width that the toolbar is arranged for
    int toolbarHeightPx_ = 0;
    int passwordFontPx_ = 0; ///< 0: not fitted to the box yet
    int plainFontPx_ = 0;
    bool watchesSession_ = false;
};

} // namespace vextrel
