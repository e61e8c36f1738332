#include "ui/SliderRow.h"

#include "core/ids.h"
#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/EventGuard.h"
#include "win32/ScreenCapture.h"
#include "win32/SystemLook.h"
#include "win32/Text.h"

#include <string>

namespace vextrel {

namespace {

constexpr const wchar_t* hoverLabel = L"Hover delay";
constexpr const wchar_t* opacityLabel = L"Opacity";

HWND CreateLabel(HWND parent, const wchar_t* text, DWORD visible, int id) {
    return CreateControl(parent, {.windowClass = WC_STATICW,
                                  .text = text,
                                  .style = visible | WS_CLIPSIBLINGS | SS_LEFT | SS_CENTERIMAGE,
                                  .id = id});
}

/// @param arrow, page how far the arrow keys and Page Up and Down go.
HWND CreateSlider(HWND parent, DWORD visible, int id, int smallest, int largest, int arrow, int page) {
    const HWND slider = CreateControl(parent, {.windowClass = TRACKBAR_CLASSW,
                                               .style = visible | WS_TABSTOP | WS_CLIPSIBLINGS | TBS_HORZ | TBS_NOTICKS,
                                               .id = id});
    Tell(slider, TBM_SETRANGEMIN, FALSE, smallest);
    Tell(slider, TBM_SETRANGEMAX, FALSE, largest);
    Tell(slider, TBM_SETLINESIZE, 0, arrow);
    Tell(slider, TBM_SETPAGESIZE, 0, page);
    return slider;
}

constexpr UINT whereItIsTold = TTF_TRACK | TTF_ABSOLUTE;

/// A tool tip that stands where it is told to. Not the sliders' own (TBS_TOOLTIPS): those tell the bare position.
HWND CreateValueTip(HWND parent) {
    const HWND tip = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP,
                                       0, 0, 0, 0, parent, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    if (tip == nullptr) {
        ThrowLastError();
    }
    GateWindow(tip, GatedWindow::Control);
    ExcludeFromCapture(tip);
    std::wstring none;
    const TOOLINFOW tool = ToolTipOf(parent, whereItIsTold, nullptr, none.data());
    Tell(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    return tip;
}

} // namespace

void SliderRow::Create(HWND parent) {
    // A label stands before what it names.
    lblHoverDelay_ = CreateLabel(parent, hoverLabel, 0, ids::lblHoverDelay);
    sldHoverDelay_ = CreateSlider(parent, 0, ids::sldHoverDelay, hoverSliderMinMs, hoverSliderMaxMs, hoverSliderStepMs,
                                  hoverSliderStepMs * 5);
    lblTransparency_ = CreateLabel(parent, opacityLabel, WS_VISIBLE, ids::lblTransparency);
    sldTransparency_ = CreateSlider(parent, WS_VISIBLE, ids::sldTransparency, transparencySliderMinPercent,
                                    transparencySliderMaxPercent, 1, 10);
    valueTip_ = CreateValueTip(parent);
}

void SliderRow::Name(HWND toolTips) {
    SetAccessibleNames({{sldHoverDelay_, hoverLabel}, {sldTransparency_, opacityLabel}});
    AddToolTip(toolTips, sldHoverDelay_, hoverLabel);
    AddToolTip(toolTips, sldTransparency_, L"Opacity of this window");
}

void SliderRow::SetLabelFont(HFONT font) noexcept {
    SetFont(lblHoverDelay_, font, true);
    SetFont(lblTransparency_, font, true);
    SetFont(valueTip_, font, false);
    labelTextPx_ = 0;
    WithFont(font, [&](HDC screen) {
        for (const std::wstring_view text : {hoverLabel, opacityLabel}) {
            SIZE size{};
            ::GetTextExtentPoint32W(screen, text.data(), static_cast<int>(text.size()), &size);
            labelTextPx_ = std::max(labelTextPx_, static_cast<int>(size.cx));
        }
    });
}

std::wstring SliderRow::ValueOf(HWND slider) const {
    const auto position = static_cast<int>(Tell(slider, TBM_GETPOS, 0, 0));
    return slider == sldHoverDelay_ ? SecondsText(position) : PercentText(position);
}

void SliderRow::SetPosition(HWND slider, int position) {
    Tell(slider, TBM_SETPOS, TRUE, position);
    // The system's answer would be a bare number, and it would ask the slider from outside.
    SetAccessibleValue(slider, ValueOf(slider).c_str());
}

void SliderRow::ShowValueTip(HWND slider, std::wstring value) noexcept {
    const TOOLINFOW tool = ToolTipOf(::GetParent(slider), whereItIsTold, nullptr, value.data());
    const auto argument = reinterpret_cast<LPARAM>(&tool);
    Tell(valueTip_, TTM_UPDATETIPTEXTW, 0, argument);
    RECT thumb{};
    Tell(slider, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
    ::MapWindowPoints(slider, nullptr, reinterpret_cast<POINT*>(&thumb), 2);
    const auto bubble = static_cast<DWORD>(Tell(valueTip_, TTM_GETBUBBLESIZE, 0, argument));
    const int left = (thumb.left + thumb.right - LOWORD(bubble)) / 2;
    Tell(valueTip_, TTM_TRACKPOSITION, 0, MAKELPARAM(left, thumb.top - HIWORD(bubble))); // above: beneath are the keys
    Tell(valueTip_, TTM_TRACKACTIVATE, TRUE, argument);
}

void SliderRow::OnMoved(HWND slider, int code, WindowEvents& events) {
    const HWND window = ::GetParent(sldHoverDelay_);
    const auto position = static_cast<int>(Tell(slider, TBM_GETPOS, 0, 0));
    if (slider == sldHoverDelay_) {
        GuardEvent(window, L"Hover Delay Slider Change Error", [&] { events.HoverSliderMoved(position); });
    } else if (slider == sldTransparency_) {
        GuardEvent(window, L"Transparency Slider Change Error", [&] { events.TransparencySliderMoved(position); });
    } else {
        return;
    }
    if (code == TB_THUMBTRACK) {
        ShowValueTip(slider, ValueOf(slider)); // where it stands now: it snaps to its steps
    } else if (code == TB_THUMBPOSITION || code == TB_ENDTRACK) {
        const TOOLINFOW tool = ToolTipOf(window, whereItIsTold, nullptr, nullptr);
        Tell(valueTip_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
    }
}

} // namespace vextrel
