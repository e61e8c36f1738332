#include "ui/SliderRow.h"

#include "core/ids.h"
#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/EventGuard.h"

#include <string>

namespace vextrel {

namespace {

HWND CreateLabel(HWND parent, const wchar_t* text, DWORD visible, int id) {
    return CreateControl(parent, {.windowClass = WC_STATICW,
                                  .text = text,
                                  .style = visible | WS_CLIPSIBLINGS | SS_LEFT | SS_CENTERIMAGE,
                                  .id = id});
}

/// @param arrow, page how far the arrow keys and Page Up and Down go.
HWND CreateSlider(HWND parent, int id, int smallest, int largest, int arrow, int page) {
    const HWND slider =
        CreateControl(parent, {.windowClass = TRACKBAR_CLASSW,
                               .style = WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | TBS_HORZ | TBS_NOTICKS,
                               .id = id});
    Tell(slider, TBM_SETRANGEMIN, FALSE, smallest);
    Tell(slider, TBM_SETRANGEMAX, FALSE, largest);
    Tell(slider, TBM_SETLINESIZE, 0, arrow);
    Tell(slider, TBM_SETPAGESIZE, 0, page);
    return slider;
}

} // namespace

void SliderRow::Create(HWND parent) {
    // A label stands before what it names.
    lblHoverDelay_ = CreateLabel(parent, L"Hover delay", 0, ids::lblHoverDelay);
    sldHoverDelay_ = CreateSlider(parent, ids::sldHoverDelay, hoverSliderMinMs, hoverSliderMaxMs, hoverSliderStepMs,
                                  hoverSliderStepMs * 5);
    lblTransparency_ = CreateLabel(parent, L"Opacity", WS_VISIBLE, ids::lblTransparency);
    sldTransparency_ =
        CreateSlider(parent, ids::sldTransparency, transparencySliderMinPercent, transparencySliderMaxPercent, 1, 10);
}

void SliderRow::Name(HWND toolTips) {
    SetAccessibleNames({{sldHoverDelay_, L"Hover delay"}, {sldTransparency_, L"Opacity"}});
    AddToolTip(toolTips, sldHoverDelay_, L"Hover delay");
    AddToolTip(toolTips, sldTransparency_, L"Opacity of this window");
}

void SliderRow::SetLabelFont(HFONT font) noexcept {
    SetFont(lblHoverDelay_, font, true);
    SetFont(lblTransparency_, font, true);
}

void SliderRow::OnMoved(HWND slider, WindowEvents& events) {
    const HWND window = ::GetParent(sldHoverDelay_);
    const auto position = static_cast<int>(Tell(slider, TBM_GETPOS, 0, 0));
    if (slider == sldHoverDelay_) {
        GuardEvent(window, L"Hover Delay Slider Change Error", [&] { events.HoverSliderMoved(position); });
    } else if (slider == sldTransparency_) {
        GuardEvent(window, L"Transparency Slider Change Error", [&] { events.TransparencySliderMoved(position); });
    }
}

} // namespace vextrel
