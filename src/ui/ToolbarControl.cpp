#include "ui/ToolbarControl.h"

#include "core/ids.h"
#include "win32/Control.h"
#include "win32/EventGuard.h"
#include "win32/SystemLook.h"
#include "win32/resources.h"

#include <algorithm>

namespace vextrel {

namespace {

/// Largest first. The largest whose DPI the screen's reaches is used: pictures are never stretched.
constexpr struct {
    int dpi;
    int sizePx;
    int strip;
    int disabledStrip;
} pictureSets[] = {
    {192, 32, IDB_TOOLBAR_200, IDB_TOOLBAR_DISABLED_200},
    {144, 24, IDB_TOOLBAR_150, IDB_TOOLBAR_DISABLED_150},
    {0, 16, IDB_TOOLBAR_100, IDB_TOOLBAR_DISABLED_100},
};

/// A struck-out eye behind the buttons' own pictures, in place of the open one while the password is masked.
constexpr int shownPicture = ids::toolToggleMask - ids::toolStandard;
constexpr int maskedPicture = ids::toolClear - ids::toolStandard + 1;

/// Gives every pixel one colour; what is drawn stays in how opaque each is.
void Recolour(HBITMAP bitmap, COLORREF colour) noexcept {
    DIBSECTION section{};
    if (::GetObjectW(bitmap, sizeof section, &section) != sizeof section || section.dsBm.bmBitsPixel != 32) {
        return;
    }
    const std::span pixels(static_cast<RGBQUAD*>(section.dsBm.bmBits),
                           static_cast<std::size_t>(section.dsBm.bmWidth) *
                               static_cast<std::size_t>(section.dsBm.bmHeight));
    for (RGBQUAD& pixel : pixels) {
        pixel = {GetBValue(colour), GetGValue(colour), GetRValue(colour), pixel.rgbReserved};
    }
}

/// @param textColour the system colour that replaces the drawing's own where those would not be seen.
/// @return nothing when the system has run out of graphics objects.
UniqueImageList LoadStrip(int strip, int sizePx, int textColour) {
    UniqueImageList images(::ImageList_Create(sizePx, sizePx, ILC_COLOR32, maskedPicture + 1, 0));
    const UniqueBitmap bitmap(static_cast<HBITMAP>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(strip), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    if (!images || !bitmap) {
        return {};
    }
    if (PicturesFollowTextColour()) {
        Recolour(bitmap.Get(), ::GetSysColor(textColour));
    }
    ::ImageList_Add(images.Get(), bitmap.Get(), nullptr);
    return images;
}

BYTE StyleOf(ToolButtonStyle style) noexcept {
    switch (style) {
    case ToolButtonStyle::Check: return BTNS_CHECK;
    case ToolButtonStyle::Group: return BTNS_CHECKGROUP;
    case ToolButtonStyle::GroupWithMenu: return BTNS_CHECKGROUP | BTNS_DROPDOWN;
    case ToolButtonStyle::Plain: break;
    }
    return BTNS_BUTTON;
}

/// Separators carry a number of their own, so that they can be hidden by it.
constexpr int firstGapId = 2190;

} // namespace

void ToolbarControl::Create(HWND parent, WindowEvents& events) {
    events_ = &events;
    Attach(CreateControl(parent, {.windowClass = TOOLBARCLASSNAMEW,
                                  .style = WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST |
                                           TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN,
                                  .id = ids::tbToolbar}));
    ToWindow(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // Mixed, which a list alone can be: a button's text is its tool tip and what assistive programs read, and is not
    // drawn.
    ToWindow(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS | TBSTYLE_EX_MIXEDBUTTONS);
    AddButtons();
}

void ToolbarControl::AddButtons() {
    int picture = 0;
    int gapId = firstGapId;
    for (const ToolButton& tool : ToolButtons()) {
        if (tool.startsGroup) {
            TBBUTTON gap{};
            gap.idCommand = gapId++;
            gap.fsStyle = BTNS_SEP;
            ToWindow(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&gap));
        }
        TBBUTTON button{};
        button.iBitmap = picture++;
        button.idCommand = tool.id;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = StyleOf(tool.style);
        button.iString = reinterpret_cast<INT_PTR>(tool.toolTip);
        ToWindow(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
}

void ToolbarControl::SetDpi(int dpi) {
    const auto& pictures = *std::ranges::find_if(pictureSets, [dpi](const auto& set) { return dpi >= set.dpi; });
    UniqueImageList images = LoadStrip(pictures.strip, pictures.sizePx, COLOR_BTNTEXT);
    UniqueImageList disabledImages = LoadStrip(pictures.disabledStrip, pictures.sizePx, COLOR_GRAYTEXT);
    if (!images || !disabledImages) {
        return; // with the pictures that it has
    }
    ToWindow(TB_SETBITMAPSIZE, 0, MAKELPARAM(pictures.sizePx, pictures.sizePx));
    ToWindow(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.Get()));
    ToWindow(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabledImages.Get()));
    images_ = std::move(images);
    disabledImages_ = std::move(disabledImages);
    const int margin = ::MulDiv(6, dpi, USER_DEFAULT_SCREEN_DPI);
    ToWindow(TB_SETPADDING, 0, MAKELPARAM(margin, margin));
    ToWindow(TB_SETBUTTONSIZE, 0, MAKELPARAM(pictures.sizePx + margin, pictures.sizePx + margin));
}

RECT ToolbarControl::ButtonRect(int index) const noexcept {
    RECT area{};
    ToWindow(TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&area));
    return area;
}

void ToolbarControl::ShowGaps(bool show) noexcept {
    int gapId = firstGapId;
    for (const ToolButton& tool : ToolButtons()) {
        if (tool.startsGroup) {
            ToWindow(TB_HIDEBUTTON, static_cast<WPARAM>(gapId++), MAKELPARAM(show ? FALSE : TRUE, 0));
        }
    }
}

int ToolbarControl::BreakRows(int widthPx) noexcept {
    int rowLeft = 0;
    TBBUTTON previous{};
    for (int index = 0; index < ButtonCount(); ++index) {
        TBBUTTON button{};
        ToWindow(TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
        if ((button.fsStyle & BTNS_SEP) != 0) {
            continue;
        }
        const RECT area = ButtonRect(index);
        if (previous.idCommand != 0 && area.right - rowLeft > widthPx) {
            ToWindow(TB_SETSTATE, static_cast<WPARAM>(previous.idCommand),
                     MAKELPARAM(previous.fsState | TBSTATE_WRAP, 0));
            // The control arranges its buttons anew when one comes or goes, not when one's state changes. Positions
            // behind the break count from the new row's start then.
            ShowGaps(true);
            ShowGaps(false);
            rowLeft = ButtonRect(index).left;
        }
        previous = button;
    }
    return ButtonRect(ButtonCount() - 1).bottom;
}

int ToolbarControl::Arrange(int widthPx) noexcept {
    ToWindow(WM_SETREDRAW, FALSE, 0);
    for (const ToolButton& tool : ToolButtons()) {
        const auto state = static_cast<WORD>(ToWindow(TB_GETSTATE, static_cast<WPARAM>(tool.id), 0));
        ToWindow(TB_SETSTATE, static_cast<WPARAM>(tool.id), MAKELPARAM(state & ~TBSTATE_WRAP, 0));
    }
    ShowGaps(true);
    if (ButtonRect(ButtonCount() - 1).right > widthPx) {
        ShowGaps(false);
    }
    const int heightPx = BreakRows(widthPx);
    ToWindow(WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(Handle(), nullptr, TRUE);
    return heightPx;
}

void ToolbarControl::Refresh(const CommandSnapshot& snapshot) noexcept {
    const int eye = snapshot.textIsMasked ? maskedPicture : shownPicture;
    if (ToWindow(TB_GETBITMAP, ids::toolToggleMask, 0) != eye) {
        ToWindow(TB_CHANGEBITMAP, ids::toolToggleMask, MAKELPARAM(eye, 0));
    }
    for (const ToolButton& tool : ToolButtons()) {
        const CommandState state = StateOfCommand(tool.id, snapshot);
        const auto id = static_cast<WPARAM>(tool.id);
        if ((ToWindow(TB_ISBUTTONCHECKED, id, 0) != 0) != state.checked) {
            ToWindow(TB_CHECKBUTTON, id, MAKELPARAM(state.checked ? TRUE : FALSE, 0));
        }
        if ((ToWindow(TB_ISBUTTONENABLED, id, 0) != 0) != state.enabled) {
            ToWindow(TB_ENABLEBUTTON, id, MAKELPARAM(state.enabled ? TRUE : FALSE, 0));
        }
    }
}

void ToolbarControl::OpenHoverMenu() noexcept {
    const HWND window = ::GetParent(Handle());
    GuardEvent(window, L"tbToolbar_ButtonMenuClick", [&] {
        const UniqueMenu menu(::CreatePopupMenu());
        for (const HoverDelayItem& item : HoverDelayMenu()) {
            ::AppendMenuW(menu.Get(), MF_STRING, static_cast<UINT_PTR>(item.id), item.caption);
        }
        RECT area = ButtonRect(static_cast<int>(ToWindow(TB_COMMANDTOINDEX, ids::toolHover, 0)));
        ::MapWindowPoints(Handle(), nullptr, reinterpret_cast<POINT*>(&area), 2);
        TPMPARAMS around{sizeof around, area};
        if (const int chosen =
                ::TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD | TPM_VERTICAL, area.left, area.bottom, window, &around);
            chosen != 0) {
            events_->Command(chosen);
        }
    });
}

void ToolbarControl::ShowFocusedTool() noexcept {
    const int id = ToolButtons()[focusedTool_].id;
    const LRESULT index = ToWindow(TB_COMMANDTOINDEX, static_cast<WPARAM>(id), 0);
    ToWindow(TB_SETHOTITEM, static_cast<WPARAM>(::GetFocus() == Handle() ? index : -1), 0);
}

bool ToolbarControl::OnKeyDown(WPARAM key) noexcept {
    const ToolButton& tool = ToolButtons()[focusedTool_];
    const std::size_t last = ToolButtons().size() - 1;
    switch (key) {
    case VK_DOWN:
        if (tool.style == ToolButtonStyle::GroupWithMenu) {
            OpenHoverMenu();
        }
        return true;
    case VK_SPACE:
    case VK_RETURN:
        if (ToWindow(TB_ISBUTTONENABLED, static_cast<WPARAM>(tool.id), 0) != 0) {
            events_->Command(tool.id);
        }
        return true;
    case VK_UP: return true;
    case VK_LEFT: focusedTool_ -= focusedTool_ > 0 ? 1 : 0; break;
    case VK_RIGHT: focusedTool_ = std::min(focusedTool_ + 1, last); break;
    case VK_HOME: focusedTool_ = 0; break;
    case VK_END: focusedTool_ = last; break;
    default: ShowFocusedTool(); return false;
    }
    ShowFocusedTool();
    return true;
}

LRESULT ToolbarControl::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
    case WM_MOUSEMOVE:
        GuardEvent(::GetParent(Handle()), L"tbToolbar_MouseMove", [&] { events_->MouseMoveInForm(); });
        break;
    case WM_GETDLGCODE: {
        const auto* pressed = reinterpret_cast<const MSG*>(lParam);
        const bool isEnter = pressed != nullptr && pressed->message == WM_KEYDOWN && pressed->wParam == VK_RETURN;
        return DLGC_WANTARROWS | (isEnter ? DLGC_WANTMESSAGE : 0);
    }
    // The system's own handling of keys differs from one version to another.
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        if ((message == WM_KEYDOWN || wParam == VK_DOWN) && OnKeyDown(wParam)) {
            return 0;
        }
        break;
    // It takes the highlight along when the pointer or the focus leaves.
    case WM_MOUSELEAVE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
        const LRESULT result = ToWindow(message, wParam, lParam);
        ShowFocusedTool();
        return result;
    }
    default: break;
    }
    return ToWindow(message, wParam, lParam);
}

} // namespace vextrel
