#include "ui/DragHint.h"

#include "core/ids.h"
#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/EventGuard.h"
#include "win32/InputState.h"
#include "win32/Text.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

constexpr UINT_PTR Timer1 = 1;
constexpr UINT followIntervalMs = 15;

// The background shape, in twips.
constexpr int shapeWidthTwips = 4000;
constexpr int marginTwips = 50;
constexpr int headerHeightTwips = 240;
/// From the pointer to the hint's corner: far enough that the pointer never meets it.
constexpr int pointerDistanceTwips = 250;
constexpr std::uint8_t noteAlpha = 235;

struct Note {
    const wchar_t* header;
    const wchar_t* text;
    int heightTwips; ///< of the shape; higher where the user's font wants more room
    COLORREF ground;
};
constexpr Note dragNote{
    L"Vextrel Drag and Drop mode:",
    L"Keep the mouse pressed while you drag the password, then drop the password onto the destination control.", 900,
    0xE8FFE8}; // light green
constexpr Note injectionNote{
    L"Vextrel Injection mode:",
    L"Keep the mouse pressed while you drag the password, then drop the password onto the destination control.\r\n"
    L"The 'no drop' icon may display - that's okay,\r\n"
    L"Vextrel will still try to inject the data.",
    1400, 0xC0FFFF}; // light yellow

const Note& NoteFor(DragDropMode mode) noexcept {
    return mode == DragDropMode::Inject ? injectionNote : dragNote;
}

/// The height in pixels that a label's text takes.
int HeightOf(HWND label, HFONT font, int widthPx) {
    const std::wstring text = WindowText(label);
    RECT room{0, 0, widthPx, 0};
    WithFont(font, [&](HDC screen) {
        ::DrawTextW(screen, text.c_str(), -1, &room, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
    });
    return static_cast<int>(room.bottom);
}

} // namespace

void DragHint::ShowFor(DragDropMode mode, HWND owner) {
    mode_ = mode;
    // It takes its DPI from the screen that it is created on. A pop-up is created without a size.
    POINT pointer{};
    ::GetCursorPos(&pointer);
    Load({.title = L"",
          .style = WS_POPUP | WS_CLIPCHILDREN,
          .exStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_LAYERED | WS_EX_TRANSPARENT,
          .owner = owner,
          .leftPx = static_cast<int>(pointer.x),
          .topPx = static_cast<int>(pointer.y)});
    SetLayeredTransparency(Handle(), noteAlpha);
    const auto label = [this](const wchar_t* text, int id) {
        return CreateControl(Handle(), {.windowClass = WC_STATICW,
                                        .text = text,
                                        .style = WS_VISIBLE | SS_LEFT | SS_NOPREFIX,
                                        .exStyle = WS_EX_TRANSPARENT,
                                        .id = id});
    };
    header_ = label(NoteFor(mode_).header, ids::dragNoteHeader);
    text_ = label(NoteFor(mode_).text, ids::dragNoteText);
    Arrange();
    FollowPointer();
    ::ShowWindow(Handle(), SW_SHOWNOACTIVATE);
    ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    ::SetTimer(Handle(), Timer1, followIntervalMs, nullptr);
}

void DragHint::Arrange() {
    const int dpi = Dpi();
    const auto px = [dpi](int twips) { return PixelsFromTwips(twips, dpi); };
    const HFONT font = fonts_.MessageFont(dpi);
    const int margin = px(marginTwips);
    const int labelWidth = px(shapeWidthTwips - 2 * marginTwips);
    const int shapeHeight = px(NoteFor(mode_).heightTwips);
    const int headerHeight = std::max(px(headerHeightTwips), HeightOf(header_, font, labelWidth));
    const int textTop = margin + headerHeight;
    const int textHeight = std::max(shapeHeight - textTop - margin, HeightOf(text_, font, labelWidth));
    SetFont(header_, font, false);
    SetFont(text_, font, false);
    ::MoveWindow(header_, margin, margin, labelWidth, headerHeight, FALSE);
    ::MoveWindow(text_, margin, textTop, labelWidth, textHeight, FALSE);
    ::SetWindowPos(Handle(), nullptr, 0, 0, px(shapeWidthTwips), textTop + textHeight + margin,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void DragHint::FollowPointer() noexcept {
    if (POINT pointer{}; ::GetCursorPos(&pointer) != FALSE) {
        const int distance = PixelsFromTwips(pointerDistanceTwips, Dpi());
        ::SetWindowPos(Handle(), HWND_TOPMOST, pointer.x + distance, pointer.y + distance, 0, 0,
                       SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

LRESULT DragHint::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const COLORREF ground = NoteFor(mode_).ground;
    switch (message) {
    case WM_TIMER:
        // Reported over the main window: the hint is gone by then.
        GuardEvent(::GetWindow(Handle(), GW_OWNER), L"Timer1_Timer", [&] {
            FollowPointer();
            // Under Wine the button's release is lost on OLE if it comes while a target is being asked, and the drag
            // would go on without an end. Any message of the mouse makes it look at the buttons again.
            if (!IsDownNow(VK_LBUTTON, VK_RBUTTON)) {
                ::PostMessageW(Handle(), WM_MOUSEMOVE, 0, 0);
            }
        });
        return 0;
    case WM_DPICHANGED:
        // The new size may put most of it onto the other screen again; answering that would never end.
        if (!std::exchange(changingDpi_, true)) {
            Arrange();
            ::InvalidateRect(Handle(), nullptr, TRUE);
            changingDpi_ = false;
        }
        return 0;
    case WM_NCHITTEST: return HTTRANSPARENT;
    case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
    case WM_ERASEBKGND: {
        const auto context = reinterpret_cast<HDC>(wParam);
        const RECT area = ClientArea(Handle());
        ::SetDCBrushColor(context, ground);
        ::FillRect(context, &area, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
        ::FrameRect(context, &area, ::GetSysColorBrush(COLOR_3DSHADOW));
        return 1;
    }
    case WM_CTLCOLORSTATIC: {
        const auto context = reinterpret_cast<HDC>(wParam);
        ::SetTextColor(context, RGB(0, 0, 0));
        ::SetDCBrushColor(context, ground);
        ::SetBkColor(context, ground);
        return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
    }
    default: return DefaultHandler(message, wParam, lParam);
    }
}

} // namespace vextrel
