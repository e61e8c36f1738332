#include "ui/Dialog.h"

#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/Gate.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

/// Keeps a window from taking input. One that is disabled already is left to whoever disabled it.
class DisabledScope : private Pinned {
  public:
    explicit DisabledScope(HWND window) noexcept
        : window_(window != nullptr && ::IsWindowEnabled(window) ? window : nullptr) {
        if (window_ != nullptr) {
            ::EnableWindow(window_, FALSE);
        }
    }
    ~DisabledScope() {
        if (window_ != nullptr) {
            ::EnableWindow(window_, TRUE);
        }
    }

  private:
    HWND window_;
};

constexpr DWORD dialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD dialogExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

RECT WorkAreaOf(HMONITOR screen) noexcept {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(screen, &monitor);
    return monitor.rcWork;
}

} // namespace

void Dialog::ChooseScale(int dpi, const RECT& screen) {
    RECT frame{};
    ::AdjustWindowRectExForDpi(&frame, dialogStyle, FALSE, dialogExStyle, static_cast<UINT>(dpi));
    const auto share = [](LONG room, LONG taken, int wanted) { return static_cast<double>(room - taken) / wanted; };
    const double byScreen = std::min(share(screen.right - screen.left, frame.right - frame.left, clientSize96_.width),
                                     share(screen.bottom - screen.top, frame.bottom - frame.top, clientSize96_.height));
    const double byDpi = static_cast<double>(dpi) / USER_DEFAULT_SCREEN_DPI;
    const double byFont = static_cast<double>(CharacterHeightOf(fonts_.MessageFont(dpi))) / usualFontHeight96;
    // The user may want larger text than the screen has room for: as large as it can be, then.
    scale_ = std::max(byDpi, std::min(byFont, byScreen));
    font_ = byFont > scale_ ? fonts_.Sized(dpi, Scaled(usualFontHeight96)) : fonts_.MessageFont(dpi);
}

Size Dialog::OuterSize(int dpi) const {
    RECT outer{0, 0, Scaled(clientSize96_.width), Scaled(clientSize96_.height)};
    ::AdjustWindowRectExForDpi(&outer, dialogStyle, FALSE, dialogExStyle, static_cast<UINT>(dpi));
    return {static_cast<int>(outer.right - outer.left), static_cast<int>(outer.bottom - outer.top)};
}

void Dialog::LoadOver(HWND owner) {
    const bool aboveTopmost = owner != nullptr && IsTopmost(owner);
    const int dpi = static_cast<int>(owner != nullptr ? ::GetDpiForWindow(owner) : ::GetDpiForSystem());
    const RECT screen = WorkAreaOf(::MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY));
    ChooseScale(dpi, screen);
    const Size size = OuterSize(dpi);
    const RECT over = owner != nullptr && !::IsIconic(owner) ? OuterArea(owner) : screen;
    const auto centred = [](LONG low, LONG high, int extent, LONG from, LONG to) {
        const LONG wanted = (low + high - extent) / 2;
        return static_cast<int>(std::max(from, std::min(wanted, to - extent)));
    };
    Load({.title = title_.c_str(),
          .style = dialogStyle,
          .exStyle = dialogExStyle | (aboveTopmost ? WS_EX_TOPMOST : 0UL),
          .owner = owner,
          .leftPx = centred(over.left, over.right, size.width, screen.left, screen.right),
          .topPx = centred(over.top, over.bottom, size.height, screen.top, screen.bottom),
          .widthPx = size.width,
          .heightPx = size.height});
    CreateControls();
    FitAll();
}

void Dialog::OnDpiChanged(const RECT& suggested) {
    const int dpi = Dpi();
    ChooseScale(dpi, WorkAreaOf(::MonitorFromRect(&suggested, MONITOR_DEFAULTTONEAREST)));
    const Size size = OuterSize(dpi);
    ::SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, size.width, size.height,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    FitAll();
    ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void Dialog::FitAll() {
    for (const auto& [child, place] : children_) {
        ::MoveWindow(child, Scaled(place.left), Scaled(place.top), Scaled(place.Width()), Scaled(place.Height()),
                     FALSE);
        SetFont(child, font_, false);
    }
    FitControls();
    ShowScrollBarIfNeeded();
}

void Dialog::ServeUntilEnded(HWND owner, HWND mainWindow) {
    // They come back before the window goes: else the system would activate another program's window. The owner need
    // not be the main window: the layer's errors are the layer's.
    const DisabledScope ownerRests(owner);
    const DisabledScope mainWindowRests(mainWindow);
    ::ShowWindow(Handle(), SW_SHOW);
    MSG message{};
    while (!result_ && IsLoaded()) {
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
            // The program ends: the outer loop has to learn of it, too.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        Serve(message, Handle());
    }
}

int Dialog::RunModal(Operations& operations, HWND owner) {
    owner = ::IsWindow(owner) ? owner : nullptr;
    {
        // Ends before the window goes, for the layer's sake: what the system activates then must be enabled.
        const Operations::Scope modal(operations, Operations::Kind::Modal);
        LoadOver(owner);
        ServeUntilEnded(owner, operations.MainWindow());
    }
    Unload();
    return result_.value_or(IDCANCEL);
}

void Dialog::End(int result) noexcept {
    result_ = result;
    // Wakes the loop if nothing else does.
    ::PostMessageW(Handle(), WM_NULL, 0, 0);
}

HWND Dialog::AddControl(const wchar_t* controlClass, const wchar_t* text, DWORD style, const Rect& place96, int id,
                        DWORD exStyle) {
    const HWND control = CreateControl(
        Handle(),
        {.windowClass = controlClass, .text = text, .style = style | WS_VISIBLE, .exStyle = exStyle, .id = id});
    children_.emplace_back(control, place96);
    return control;
}

void Dialog::AddLines(const wchar_t* lines, const Rect& place96, int id) {
    lines_ =
        AddControl(WC_EDITW, lines, WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_LEFT,
                   place96, id, WS_EX_CLIENTEDGE);
}

void Dialog::ShowScrollBarIfNeeded() const noexcept {
    if (lines_ == nullptr) {
        return;
    }
    ::ShowScrollBar(lines_, SB_VERT, TRUE);
    Tell(lines_, WM_VSCROLL, SB_TOP, 0);
    // Where the last line starts within the field, there is nothing to scroll.
    const LRESULT lastLine = Tell(lines_, EM_GETLINECOUNT, 0, 0) - 1;
    const LRESULT lastLineStart = Tell(lines_, EM_LINEINDEX, static_cast<WPARAM>(lastLine), 0);
    const LRESULT place = Tell(lines_, EM_POSFROMCHAR, static_cast<WPARAM>(lastLineStart), 0);
    if (lastLine == 0 || (place != -1 && GET_Y_LPARAM(place) + Scaled(18) <= ClientArea(lines_).bottom)) {
        ::ShowScrollBar(lines_, SB_VERT, FALSE);
    }
}

void Dialog::OnCommand(int id) {
    if (id == IDOK || id == IDCANCEL) {
        End(id);
    }
}

LRESULT Dialog::OnActivate(WPARAM wParam, LPARAM lParam) {
    // The default would give the focus to the dialog itself when the user comes back from another program.
    if (LOWORD(wParam) == WA_INACTIVE) {
        const HWND focus = ::GetFocus();
        lastFocus_ = ::IsChild(Handle(), focus) ? focus : nullptr;
    } else if (lastFocus_ != nullptr) {
        ::SetFocus(lastFocus_);
        return 0;
    }
    return DefaultHandler(WM_ACTIVATE, wParam, lParam);
}

LRESULT Dialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND: OnCommand(LOWORD(wParam)); return 0;
    case WM_NOTIFY: OnNotify(*reinterpret_cast<const NMHDR*>(lParam)); return 0;
    case WM_CLOSE: End(IDCANCEL); return 0;
    case WM_ACTIVATE: return OnActivate(wParam, lParam);
    case WM_DPICHANGED: OnDpiChanged(*reinterpret_cast<const RECT*>(lParam)); return 0;
    // Read-only texts belong to the dialog's ground.
    case WM_CTLCOLORSTATIC:
        ::SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        ::SetTextColor(reinterpret_cast<HDC>(wParam), ::GetSysColor(COLOR_BTNTEXT));
        return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_3DFACE));
    default: return DefaultHandler(message, wParam, lParam);
    }
}

} // namespace vextrel
