#pragma once

#include "ui/Events.h"
#include "win32/SubclassedWindow.h"

namespace vextrel {

/// The two sliders with their labels: hover delay, which is hidden at first, and opacity.
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

    void ShowHoverDelay(bool show) noexcept {
        ::ShowWindow(lblHoverDelay_, show ? SW_SHOWNA : SW_HIDE);
        ::ShowWindow(sldHoverDelay_, show ? SW_SHOWNA : SW_HIDE);
    }
    /// Bring the sliders into line; the move does not come back as the user's.
    void SetHoverPosition(int positionMs) { SetPosition(sldHoverDelay_, positionMs); }
    void SetTransparencyPercent(int percent) { SetPosition(sldTransparency_, percent); }

    void SetLabelFont(HFONT font) noexcept;
    /// What the labels' texts need, the longer one.
    [[nodiscard]] int LabelTextPx() const noexcept { return labelTextPx_; }
    /// Tells which slider the user has moved, and where to. @param slider, code as WM_HSCROLL gives them.
    void OnMoved(HWND slider, int code, WindowEvents& events);

  private:
    void SetPosition(HWND slider, int position);
    /// What the slider's position means.
    [[nodiscard]] std::wstring ValueOf(HWND slider) const;
    void ShowValueTip(HWND slider, std::wstring value) noexcept;

    HWND lblHoverDelay_ = nullptr;
    HWND sldHoverDelay_ = nullptr;
    HWND lblTransparency_ = nullptr;
    HWND sldTransparency_ = nullptr;
    HWND valueTip_ = nullptr; ///< stands over a slider that is being dragged
    int labelTextPx_ = 0;
};

} // namespace vextrel
