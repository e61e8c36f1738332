#pragma once

#include "core/Commands.h"
#include "core/WindowGeometry.h"
#include "ui/KeyButton.h"
#include "ui/KeyboardEvents.h"
#include "ui/PasswordBox.h"
#include "ui/ToolbarControl.h"
#include "win32/FontCache.h"
#include "win32/Form.h"
#include "win32/ScreenCapture.h"
#include "win32/handles.h"

#include <array>
#include <optional>
#include <string>

namespace vextrel {

/// The main window: keys, password boxes, toolbar, sliders, status bar, menu bar. It holds no logic: every event goes
/// to the controller.
class MainWindow final : public Form {
  public:
    MainWindow();
    ~MainWindow() override;

    /// Creates the window and its controls, hidden. @throws Error with the system's code.
    void Load();
    /// The controller that events go to; until it is set, and after it was taken back (null), they go nowhere.
    void SetController(KeyboardEvents* controller) noexcept;

    [[nodiscard]] KeyboardEvents& Controller() noexcept { return *controller_; }

    /// @param number 1 to 65.
    [[nodiscard]] KeyButton& Key(int number) { return keys_.at(static_cast<std::size_t>(number - 1)); }
    [[nodiscard]] PasswordBox& txtPassword() noexcept { return txtPassword_; }
    [[nodiscard]] PasswordBox& txtText() noexcept { return txtText_; }
    /// The box that is shown, decided by txtPassword.
    [[nodiscard]] PasswordBox& VisibleBox() noexcept;
    void FocusVisibleBox() noexcept;

    /// Lays out everything for the window's present size.
    void LayOut();
    /// Heights that the window's own height counts with, in pixels; the toolbar's is 0 when hidden.
    [[nodiscard]] int ToolbarHeightPx() noexcept;
    [[nodiscard]] int StatusBarHeightPx() const noexcept { return statusBarHeightPx_; }
    /// What the protective layer covers, in pixels of the screen.
    [[nodiscard]] RECT KeyAreaOnScreen() const noexcept;
    [[nodiscard]] double TwipsPerPixelNow() const noexcept { return TwipsPerPixel(Dpi()); }

    /// Shows or hides the toolbar. The window grows or shrinks by the toolbar's height; the keys keep their size.
    void ShowToolbarControl(bool show);
    void ShowHoverDelayLabel(bool show);
    /// Brings the sliders into line; the move does not come back as the user's.
    void SetHoverSlider(int positionMs) noexcept;
    void SetTransparencySlider(int percent) noexcept;
    /// Check marks, enabled states, toolbar buttons and status bar.
    void Refresh(const CommandSnapshot& snapshot, StatusTexts status);
    /// What the status bar's first pane says in place of the input mode; empty takes it back.
    void ShowNotice(std::wstring text);
    /// The control that has the keyboard focus, else the box that had it last.
    [[nodiscard]] HWND ActiveControl() const noexcept;

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnUnload() noexcept override;

    void CreateMenuBar();
    void CreateControls();
    HWND AddControl(const wchar_t* controlClass, const wchar_t* text, DWORD style, int id);
    void ApplyDpi();
    void NameControls() noexcept;
    void AddToolTips();
    void RefreshMenuBar(const CommandSnapshot& snapshot) noexcept;
    void FitPasswordFont();

    bool OnCommand(int id, int notification);
    void OnSliderMoved(HWND slider);
    LRESULT OnNotify(const NMHDR& header);
    void OnGetMinMaxInfo(MINMAXINFO& info);
    /// At the present width, in pixels with the frame; empty while the window is being created.
    [[nodiscard]] Size MinimumSize();
    void KeepKeysClickable();
    void OnDpiChanged(const RECT& suggested);
    void OnSystemLookChanged(UINT message, WPARAM wParam, LPARAM lParam);
    void OnClose();
    void ShowStatus();
    [[nodiscard]] WindowGeometryInput LayoutInput();

    KeyboardEvents* controller_;
    FontCache fonts_;
    UniqueMenu menuBar_;
    std::optional<SystemWindowsScope> openMenus_; ///< while a menu is open
    ToolbarControl toolbar_;
    PasswordBox txtPassword_;
    PasswordBox txtText_;
    HWND txtSetup_ = nullptr;
    HWND lblHoverDelay_ = nullptr;
    HWND sldHoverDelay_ = nullptr;
    HWND lblTransparency_ = nullptr;
    HWND sldTransparency_ = nullptr;
    HWND statusBar_ = nullptr;
    HWND activeControl_ = nullptr; ///< the box that had the focus last
    KeyCapture keyCapture_;
    std::array<KeyButton, keyButtonCount> keys_;
    WindowGeometry layout_;
    std::optional<CommandSnapshot> shownState_; ///< what the menu bar says; nothing at first
    StatusTexts status_;
    std::wstring notice_;
    int arrangedWidthPx_ = -1; ///< the width that the toolbar is arranged for
    int toolbarHeightPx_ = 0;
    int statusBarHeightPx_ = 0;
    int passwordFontPx_ = 0; ///< 0: not fitted to the box yet
};

} // namespace vextrel
