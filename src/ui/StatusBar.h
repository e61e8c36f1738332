#pragma once

#include "core/Commands.h"
#include "win32/Windows.h"

#include <string>
#include <vector>

namespace vextrel {

/// The status bar `StatusBar1`: three panes, the first of which may give way to a notice, and one more
/// while there is something to warn of.
class StatusBar {
  public:
    /// @throws Error with the system's code.
    void Create(HWND parent);
    [[nodiscard]] HWND Handle() const noexcept { return handle_; }

    /// Takes the font that its height and its panes follow from. @param font outlives the next call.
    void SetFont(HFONT font, int dpi) noexcept;
    /// The height in pixels that the font wants: the control would size itself only at the bottom of its parent.
    [[nodiscard]] int HeightPx() const noexcept { return heightPx_; }

    void SetTexts(StatusTexts texts);
    /// What the first pane says in place of its text; empty takes it back. Assistive programs are told of it.
    void SetNotice(std::wstring notice);
    /// What it says when there is no notice; likewise, but nobody is told: it may follow from the key just entered.
    void SetRemark(std::wstring remark) { Change(remark_, std::move(remark)); }
    /// Shows each text in a pane with room for it; what room is left the panes share. Where room is missing the texts
    /// become brief; then a notice or remark takes the place of those on transfer and layout, and the longest ends in
    /// dots if all of that is not enough.
    void Show();

  private:
    void Change(std::wstring& text, std::wstring to);
    [[nodiscard]] std::vector<int> WidthsOf(const std::vector<std::wstring>& texts) const;

    HWND handle_ = nullptr;
    HFONT font_ = nullptr;
    int dpi_ = USER_DEFAULT_SCREEN_DPI;
    int heightPx_ = 0;
    StatusTexts texts_;
    std::wstring notice_;
    std::wstring remark_;
};

} // namespace vextrel
