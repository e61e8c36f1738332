#include "ui/MainWindow.h"

#include "core/ids.h"
#include "ui/DotPointer.h"
#include "ui/NoEvents.h"
#include "ui/StatusBar.h"
#include "win32/EventGuard.h"
#include "win32/MoveHook.h"
#include "win32/Text.h"
#include "win32/WindowStyle.h"
#include "win32/resources.h"

#include <algorithm>

namespace vextrel {

namespace {

constexpr DWORD mainWindowStyle =
    WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_THICKFRAME | WS_CLIPCHILDREN;
constexpr DWORD mainWindowExStyle = WS_EX_CONTROLPARENT | WS_EX_TOPMOST;

/// Where a box is kept that must be able to take the focus but is never seen, in twips.
constexpr int offScreenTwips = -10000;

/// How often the window looks whether another one has come to the front.
constexpr UINT checkActiveWindowMs = 250;
constexpr UINT_PTR tmrCheckActiveWindow = 1;

} // namespace

MainWindow::MainWindow()
    : controller_(&NoEvents::Instance()) {}

MainWindow::~MainWindow() {
    Unload();
}

void MainWindow::SetController(KeyboardEvents* controller) noexcept {
    controller_ = controller != nullptr ? controller : &NoEvents::Instance();
}

void MainWindow::Load() {
    CreateMenuBar();
    // As wide as random sizing ever makes it; the height is a place holder. The window gets its size before it is
    // shown.
    Form::Load({.title = L"Vextrel",
                .style = mainWindowStyle,
                .exStyle = mainWindowExStyle,
                .menu = menuBar_.Get(),
                .widthPx = ::GetSystemMetrics(SM_CXSCREEN) / 2,
                .heightPx = 320});
    CreateControls();
    ApplyDpi();
    MoveHook::InstallHook(Handle());
    ::SetTimer(Handle(), tmrCheckActiveWindow, checkActiveWindowMs, nullptr);
}

void MainWindow::ApplyDpi() {
    const int dpi = Dpi();
    fonts_.Clear();
    const auto font = reinterpret_cast<WPARAM>(fonts_.MessageFont(dpi));
    for (const HWND control :
         {txtPassword_.Handle(), txtText_.Handle(), lblHoverDelay_, lblTransparency_, statusBar_, toolbar_.Handle()}) {
        ::SendMessageW(control, WM_SETFONT, font, TRUE);
    }
    // The keys need the room into which the sliders' labels would have to grow with the user's text.
    if (const int highest = ::MulDiv(usualFontHeight96, dpi, USER_DEFAULT_SCREEN_DPI);
        CharacterHeightOf(fonts_.MessageFont(dpi)) > highest) {
        const auto labelFont = reinterpret_cast<WPARAM>(fonts_.Sized(dpi, highest));
        ::SendMessageW(lblHoverDelay_, WM_SETFONT, labelFont, TRUE);
        ::SendMessageW(lblTransparency_, WM_SETFONT, labelFont, TRUE);
    }
    for (KeyButton& key : keys_) {
        key.SetDpi(dpi);
    }
    toolbar_.SetDpi(dpi);
    statusBarHeightPx_ = StatusBarHeightFor(fonts_.MessageFont(dpi), dpi);
    passwordFontPx_ = 0;
    arrangedWidthPx_ = -1;
    const int offScreenPx = PixelsFromTwips(offScreenTwips, dpi);
    ::SetWindowPos(txtSetup_, nullptr, offScreenPx, offScreenPx, ::MulDiv(60, dpi, USER_DEFAULT_SCREEN_DPI),
                   ::MulDiv(20, dpi, USER_DEFAULT_SCREEN_DPI), SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindow::OnUnload() noexcept {
    GuardEvent(Handle(), L"Form_Unload", [&] {
        ::KillTimer(Handle(), tmrCheckActiveWindow);
        MoveHook::RemoveHook(Handle());
        // Undoes what a hidden pointer may have left.
        ::ShowCursor(TRUE);
        controller_->FormUnloading();
    });
    // Destroying the window destroys the menu with it.
    static_cast<void>(menuBar_.Release());
}

PasswordBox& MainWindow::VisibleBox() noexcept {
    return txtPassword_.IsShown() ? txtPassword_ : txtText_;
}

HWND MainWindow::ActiveControl() const noexcept {
    const HWND focus = ::GetFocus();
    return ::IsChild(Handle(), focus) ? focus : activeControl_;
}

void MainWindow::FocusVisibleBox() noexcept {
    ::SetFocus(VisibleBox().Handle());
}

int MainWindow::ToolbarHeightPx() noexcept {
    if (!toolbar_.IsShown()) {
        return 0;
    }
    RECT client{};
    ::GetClientRect(Handle(), &client);
    if (client.right != arrangedWidthPx_) {
        arrangedWidthPx_ = client.right;
        toolbarHeightPx_ = toolbar_.Arrange(client.right);
    }
    return toolbarHeightPx_;
}

WindowGeometryInput MainWindow::LayoutInput() {
    RECT client{};
    RECT outer{};
    ::GetClientRect(Handle(), &client);
    ::GetWindowRect(Handle(), &outer);
    const int dpi = Dpi();
    return {.clientWidthTwips = TwipsFromPixels(client.right, dpi),
            .clientHeightTwips = TwipsFromPixels(client.bottom, dpi),
            .frameWidthTwips = TwipsFromPixels(outer.right - outer.left - client.right, dpi),
            .dpi = dpi,
            .toolbarHeightPx = ToolbarHeightPx(),
            .statusBarHeightPx = StatusBarHeightPx(),
            .hoverLabelShown = (::GetWindowLongPtrW(lblHoverDelay_, GWL_STYLE) & WS_VISIBLE) != 0};
}

void MainWindow::FitPasswordFont() {
    RECT room{};
    ::GetClientRect(txtPassword_.Handle(), &room);
    // A line is about a third higher than its font's nominal size.
    const int fontPx = std::max(1, static_cast<int>(room.bottom) * 3 / 4);
    if (fontPx != passwordFontPx_) {
        passwordFontPx_ = fontPx;
        const auto font = reinterpret_cast<WPARAM>(fonts_.Sized(Dpi(), fontPx));
        ::SendMessageW(txtPassword_.Handle(), WM_SETFONT, font, FALSE);
        ::SendMessageW(txtText_.Handle(), WM_SETFONT, font, FALSE);
    }
}

void MainWindow::LayOut() {
    KeepKeysClickable();
    const WindowGeometryInput input = LayoutInput();
    layout_ = GeometryOfWindow(input);
    RECT client{};
    ::GetClientRect(Handle(), &client);

    // Nothing is drawn or copied on the way: all is painted anew at the end.
    constexpr UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER | SWP_NOREDRAW | SWP_NOCOPYBITS;
    HDWP positions = ::BeginDeferWindowPos(keyButtonCount + 8);
    const auto place = [&positions](HWND window, const Rect& to) {
        positions = ::DeferWindowPos(positions, window, nullptr, to.left, to.top, to.Width(), to.Height(), flags);
    };
    place(toolbar_.Handle(), {0, 0, client.right, input.toolbarHeightPx});
    place(txtPassword_.Handle(), layout_.passwordBox);
    place(txtText_.Handle(), layout_.passwordBox);
    place(lblHoverDelay_, layout_.hoverDelayLabel);
    place(sldHoverDelay_, layout_.hoverDelaySlider);
    place(lblTransparency_, layout_.transparencyLabel);
    place(sldTransparency_, layout_.transparencySlider);
    for (int number = 1; number <= keyButtonCount; ++number) {
        place(Key(number).Handle(), layout_.keys.at(static_cast<std::size_t>(number)));
    }
    place(statusBar_, {0, client.bottom - input.statusBarHeightPx, client.right, client.bottom});
    if (positions != nullptr) {
        ::EndDeferWindowPos(positions);
    }
    FitPasswordFont();
    ShowStatus();
    ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

RECT MainWindow::KeyAreaOnScreen() const noexcept {
    const Rect& area = layout_.keyArea;
    RECT onScreen{area.left, area.top, area.right, area.bottom};
    ::MapWindowPoints(Handle(), nullptr, reinterpret_cast<POINT*>(&onScreen), 2);
    return onScreen;
}

void MainWindow::ShowToolbarControl(bool show) {
    if (show == toolbar_.IsShown()) {
        return;
    }
    const int heightBefore = ToolbarHeightPx();
    toolbar_.Show(show);
    RECT outer{};
    ::GetWindowRect(Handle(), &outer);
    ::SetWindowPos(Handle(), nullptr, 0, 0, outer.right - outer.left,
                   outer.bottom - outer.top + ToolbarHeightPx() - heightBefore,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    LayOut();
}

void MainWindow::ShowHoverDelayLabel(bool show) {
    ::ShowWindow(lblHoverDelay_, show ? SW_SHOWNA : SW_HIDE);
    LayOut();
}

void MainWindow::SetHoverSlider(int positionMs) noexcept {
    ::SendMessageW(sldHoverDelay_, TBM_SETPOS, TRUE, positionMs);
}

void MainWindow::SetTransparencySlider(int percent) noexcept {
    ::SendMessageW(sldTransparency_, TBM_SETPOS, TRUE, percent);
}

void MainWindow::Refresh(const CommandSnapshot& snapshot, StatusTexts status) {
    // A click changes a button by itself, whatever comes of it.
    toolbar_.Refresh(snapshot);
    if (snapshot != shownState_) {
        shownState_ = snapshot;
        RefreshMenuBar(snapshot);
    }
    if (status != status_) {
        status_ = std::move(status);
        ShowStatus();
    }
}

void MainWindow::RefreshMenuBar(const CommandSnapshot& snapshot) noexcept {
    for (const Menu& menu : MenuBar()) {
        for (const MenuItem& item : menu.items) {
            const CommandState state = StateOfCommand(item.id, snapshot);
            const auto id = static_cast<UINT>(item.id);
            ::CheckMenuItem(menuBar_.Get(), id,
                            static_cast<UINT>(MF_BYCOMMAND) | (state.checked ? MF_CHECKED : MF_UNCHECKED));
            ::EnableMenuItem(menuBar_.Get(), id,
                             static_cast<UINT>(MF_BYCOMMAND) | (state.enabled ? MF_ENABLED : MF_GRAYED));
        }
    }
}

void MainWindow::ShowNotice(std::wstring text) {
    if (text != notice_) {
        notice_ = std::move(text);
        ShowStatus();
    }
}

void MainWindow::ShowStatus() {
    const int dpi = Dpi();
    ShowStatusTexts(statusBar_, fonts_.MessageFont(dpi), dpi,
                    {notice_.empty() ? status_.inputMode : notice_, status_.transferMode, status_.layout});
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (keyCapture_.Route(Handle(), message, wParam, lParam)) {
        return 0;
    }
    switch (message) {
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE && HIWORD(wParam) == 0) {
            GuardEvent(Handle(), L"Form_Activate", [&] { controller_->FormActivated(); });
            return 0;
        }
        break;
    // The form itself, no child of it, got the focus: it belongs into the password box.
    case WM_SETFOCUS: GuardEvent(Handle(), L"Form_GotFocus", [&] { FocusVisibleBox(); }); return 0;
    case WM_COMMAND:
        if (OnCommand(LOWORD(wParam), HIWORD(wParam))) {
            return 0;
        }
        break;
    case WM_NOTIFY: return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_HSCROLL: OnSliderMoved(reinterpret_cast<HWND>(lParam)); return 0;
    case WM_MOUSEMOVE: GuardEvent(Handle(), L"Form_MouseMove", [&] { controller_->MouseMoveInForm(); }); break;
    case WM_SETCURSOR:
        if (LOWORD(lParam) == HTCLIENT && controller_->ShowsDotPointer()) {
            ::SetCursor(DotPointerForDpi(Dpi()));
            return TRUE;
        }
        break;
    case WM_TIMER:
        if (wParam == tmrCheckActiveWindow) {
            GuardEvent(Handle(), L"tmrCheckActiveWindow_Timer", [&] { controller_->CheckActiveWindow(); });
        }
        return 0;
    case WM_ENTERMENULOOP:
        openMenus_.emplace();
        controller_->MenuLoop(true);
        return 0;
    case WM_EXITMENULOOP:
        controller_->MenuLoop(false);
        openMenus_.reset();
        return 0;
    case WM_GETMINMAXINFO: OnGetMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam)); return 0;
    case WM_DPICHANGED:
        GuardEvent(Handle(), L"DpiChanged", [&] { OnDpiChanged(*reinterpret_cast<const RECT*>(lParam)); });
        return 0;
    case WM_DISPLAYCHANGE: GuardEvent(Handle(), L"DisplayChange", [&] { controller_->DisplayChanged(); }); break;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE: OnSystemLookChanged(message, wParam, lParam); break;
    case WM_CLOSE: GuardEvent(Handle(), L"Form_QueryUnload", [&] { OnClose(); }); return 0;
    case WM_DESTROY:
        // A window that goes because the start has failed leaves the loop to the dialog that says so.
        if (controller_ != &NoEvents::Instance()) {
            ::PostQuitMessage(0);
        }
        return 0;
    case WM_ENDSESSION:
        if (wParam != FALSE) {
            controller_->SessionEnding();
        }
        return 0;
    default: break;
    }
    return DefaultHandler(message, wParam, lParam);
}

void MainWindow::OnClose() {
    if (controller_->MayUnload()) {
        Unload();
    }
}

bool MainWindow::OnCommand(int id, int notification) {
    if (notification == EN_SETFOCUS && (id == ids::txtPassword || id == ids::txtText)) {
        activeControl_ = ::GetDlgItem(Handle(), id);
        return true;
    }
    if (id >= ids::firstKey && id <= ids::lastKey && notification == BN_CLICKED) {
        controller_->ButtonClick(id - ids::firstKey + 1);
        return true;
    }
    if (id < ids::mnuFileKeepOnTop || id > ids::hoverDelayTwoSeconds) {
        return false;
    }
    controller_->Command(id);
    return true;
}

void MainWindow::OnSliderMoved(HWND slider) {
    const auto position = static_cast<int>(::SendMessageW(slider, TBM_GETPOS, 0, 0));
    if (slider == sldHoverDelay_) {
        GuardEvent(Handle(), L"Hover Delay Slider Change Error", [&] { controller_->HoverSliderMoved(position); });
    } else if (slider == sldTransparency_) {
        GuardEvent(Handle(), L"Transparency Slider Change Error",
                   [&] { controller_->TransparencySliderMoved(position); });
    }
}

LRESULT MainWindow::OnNotify(const NMHDR& header) {
    if (header.idFrom == ids::tbToolbar && header.code == static_cast<UINT>(TBN_DROPDOWN)) {
        GuardEvent(Handle(), L"tbToolbar_ButtonMenuClick", [&] {
            if (const int chosen = toolbar_.TrackHoverMenu(); chosen != 0) {
                controller_->Command(chosen);
            }
        });
        return TBDDRET_DEFAULT;
    }
    return 0;
}

Size MainWindow::MinimumSize() {
    RECT outer{};
    RECT inner{};
    ::GetWindowRect(Handle(), &outer);
    ::GetClientRect(Handle(), &inner);
    if (statusBar_ == nullptr || inner.bottom <= 0) {
        return {};
    }
    const WindowGeometryInput input = LayoutInput();
    const Size client =
        MinimumClientSizePx(input.frameWidthTwips, input.dpi, input.toolbarHeightPx, input.statusBarHeightPx);
    return {client.width + static_cast<int>(outer.right - outer.left - inner.right),
            client.height + static_cast<int>(outer.bottom - outer.top - inner.bottom)};
}

void MainWindow::OnGetMinMaxInfo(MINMAXINFO& info) {
    if (const Size smallest = MinimumSize(); smallest.width > 0) {
        info.ptMinTrackSize = {smallest.width, smallest.height};
    }
}

void MainWindow::KeepKeysClickable() {
    // The minimum was asked for at another width: at this one, menu and toolbar may need more rows.
    const Size smallest = MinimumSize();
    RECT outer{};
    ::GetWindowRect(Handle(), &outer);
    if (outer.bottom - outer.top < smallest.height && !::IsIconic(Handle())) {
        ::SetWindowPos(Handle(), nullptr, 0, 0, outer.right - outer.left, smallest.height,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void MainWindow::OnDpiChanged(const RECT& suggested) {
    ApplyDpi();
    ::SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                   suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    controller_->FormResized();
}

void MainWindow::OnSystemLookChanged(UINT message, WPARAM wParam, LPARAM lParam) {
    ApplyDpi();
    // Another font changes the rows' heights and so the keys' places.
    GuardEvent(Handle(), L"Resize", [&] { controller_->FormResized(); });
    for (const HWND control : {toolbar_.Handle(), sldHoverDelay_, sldTransparency_, statusBar_}) {
        ::SendMessageW(control, message, wParam, lParam);
    }
    ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

} // namespace vextrel
