#include "ui/WindowParts.h"

#include "core/ids.h"
#include "win32/Control.h"
#include "win32/SystemLook.h"
#include "win32/resources.h"

#include <imm.h>

namespace vextrel {

HCURSOR DotPointerForDpi(int dpi) noexcept {
    const int id = dpi >= 192 ? IDC_GREYDOT_192 : dpi >= 144 ? IDC_GREYDOT_144 : IDC_GREYDOT_96;
    // LR_SHARED: the system keeps one of each and frees it with the program.
    const HANDLE dot = ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_CURSOR, 0, 0, LR_SHARED);
    // None at all would hide the pointer.
    return dot != nullptr ? static_cast<HCURSOR>(dot) : ::LoadCursorW(nullptr, IDC_ARROW);
}

HWND CreateSetupBox(HWND parent, int dpi) {
    const int offScreenPx = PixelsFromTwips(-10000, dpi);
    const HWND box = CreateControl(parent, {.windowClass = WC_EDITW,
                                            .style = WS_VISIBLE,
                                            .placePx = {offScreenPx, offScreenPx, offScreenPx + 60, offScreenPx + 20},
                                            .id = ids::txtSetup,
                                            .isSecret = true});
    ::ImmAssociateContextEx(box, nullptr, 0);
    return box;
}

TOOLINFOW ToolTipOf(HWND parent, UINT flags, HWND control, wchar_t* text) noexcept {
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = flags;
    tool.hwnd = parent;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = text;
    return tool;
}

void AddToolTip(HWND toolTips, HWND control, std::wstring text) {
    const TOOLINFOW tool = ToolTipOf(::GetParent(control), TTF_IDISHWND | TTF_SUBCLASS, control, text.data());
    Tell(toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void PaintCue(HWND box, HFONT usual, std::wstring_view cue) noexcept {
    RECT area{};
    Tell(box, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
    constexpr LONG smallestPx = 8;
    LOGFONTW look{};
    ::GetObjectW(usual, sizeof look, &look);
    UniqueFont font(::CreateFontIndirectW(&look));
    ::HideCaret(box);
    const HDC device = ::GetDC(box);
    const auto fits = [&] {
        const SelectScope selected(device, font.Get());
        SIZE wanted{};
        ::GetTextExtentPoint32W(device, cue.data(), static_cast<int>(cue.size()), &wanted);
        return wanted.cx <= area.right - area.left;
    };
    while (!fits() && look.lfHeight < -smallestPx) {
        ++look.lfHeight;
        font.Reset(::CreateFontIndirectW(&look));
    }
    {
        const SelectScope selected(device, font.Get());
        ::SetBkMode(device, TRANSPARENT);
        ::SetTextColor(device, ::GetSysColor(COLOR_GRAYTEXT));
        ::DrawTextW(device, cue.data(), static_cast<int>(cue.size()), &area,
                    DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    ::ReleaseDC(box, device);
    ::ShowCaret(box);
}

} // namespace vextrel
