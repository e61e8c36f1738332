#pragma once

#include "core/Commands.h"
#include "ui/Events.h"
#include "win32/SubclassedWindow.h"
#include "win32/handles.h"

namespace vextrel {

/// The toolbar `tbToolbar`: 15 flat buttons with pictures and tool tips. On a narrow window the gaps between its groups
/// go first, then it continues in a second row. With the focus, arrow keys, Home and End choose a button, Space and
/// Enter press it, Down opens its menu.
class ToolbarControl final : public SubclassedWindow {
  public:
    /// @throws Error with the system's code.
    void Create(HWND parent, WindowEvents& events);

    /// The window that shows its tool tips.
    [[nodiscard]] HWND ToolTips() const noexcept {
        return reinterpret_cast<HWND>(Tell(Handle(), TB_GETTOOLTIPS, 0, 0));
    }

    /// Loads the pictures and sizes for a DPI.
    void SetDpi(int dpi);
    void Show(bool show) noexcept {
        isShown_ = show;
        ::ShowWindow(Handle(), show ? SW_SHOWNA : SW_HIDE);
    }
    [[nodiscard]] bool IsShown() const noexcept { return isShown_; }

    /// Arranges the buttons for a width. @return the height they need, in pixels.
    int Arrange(int widthPx) noexcept;
    /// Presses and enables every button as the snapshot says.
    void Refresh(const CommandSnapshot& snapshot) noexcept;
    /// Opens the Hover button's menu below it, and reports what is chosen.
    void OpenHoverMenu() noexcept;

  private:
    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept override;
    void AddButtons();
    void ShowGaps(bool show) noexcept;
    /// Breaks the row before the first button that does not fit. @return the height.
    int BreakRows(int widthPx) noexcept;
    [[nodiscard]] RECT ButtonRect(int index) const noexcept;
    [[nodiscard]] int ButtonCount() const noexcept { return static_cast<int>(ToWindow(TB_BUTTONCOUNT, 0, 0)); }

    /// @return whether the key means something to the toolbar.
    bool OnKeyDown(WPARAM key) noexcept;
    /// Shows the button that the keyboard works, if the toolbar has the focus, else none.
    void ShowFocusedTool() noexcept;

    WindowEvents* events_ = nullptr;
    bool isShown_ = true;
    std::size_t focusedTool_ = 0; ///< its place among ToolButtons()
    UniqueImageList images_;
    UniqueImageList disabledImages_;
};

} // namespace vextrel
