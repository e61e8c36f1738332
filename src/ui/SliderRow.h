#pragma once

#include "ui/Events.h"
#include "win32/SubclassedWindow.h"

namespace vextrel {

/// The two sliders with their labels: hover delay and opacity.
class SliderRow {
  public:
    /// @throws Error with the system's code.
    void Create(HWND parent);
    /// Names the sliders to screen readers and on a window of tool tips.
    void Name(HWND toolTips);

    [[nodiscard]] HWND HoverLabel() const noexcept { return lblHoverDelay_; }
    [[nodiscard]] HWND HoverSlider() const noexcept { return sldHoverDelay_; }
    [[nodiscard]] HWND TransparencyLabel() const noexcept { return lblTransparency_; }
    [[nodiscard]] HWND TransparencySlider() const noexcept { return sldTransparency_; }

    void ShowHoverLabel(bool show) noexcept {
        hoverLabelIsShown_ = show;
        ::ShowWindow(lblHoverDelay_, show ? SW_SHOWNA : SW_HIDE);
    }
    [[nodiscard]] bool IsHoverLabelShown() const noexcept { return hoverLabelIsShown_; }
    /// Bring the sliders into line; the move does not come back as the user's.
    void SetHoverPosition(int positionMs) noexcept { Tell(sldHoverDelay_, TBM_SETPOS, TRUE, positionMs); }
    void SetTransparencyPercent(int percent) noexcept { Tell(sldTransparency_, TBM_SETPOS, TRUE, percent); }

    void SetLabelFont(HFONT font) noexcept;
    /// Tells which slider the user has moved, and where to. @param slider as WM_HSCROLL gives it.
    void OnMoved(HWND slider, WindowEvents& events);

  private:
    HWND lblHoverDelay_ = nullptr;
    HWND sldHoverDelay_ = nullptr;
    HWND lblTransparency_ = nullptr;
    HWND sldTransparency_ = nullptr;
    bool hoverLabelIsShown_ = false;
};

} // namespace vextrel
