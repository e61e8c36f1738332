#include "ui/MainWindow.h"

#include "core/ids.h"
#include "ui/KeyPainter.h"
#include "ui/WindowParts.h"
#include "win32/Control.h"
#include "win32/EventGuard.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

constexpr DWORD mainWindowStyle =
    WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_THICKFRAME | WS_CLIPCHILDREN;
constexpr DWORD mainWindowExStyle = WS_EX_CONTROLPARENT | WS_EX_TOPMOST;

/// How often the window looks whether another one has come to the front.
constexpr UINT checkActiveWindowMs = 250;
constexpr UINT_PTR tmrCheckActiveWindow = 1;

UniqueMenu CreateMenuBar() {
    UniqueMenu bar(::CreateMenu());
    for (const Menu& menu : MenuBar()) {
        const HMENU items = ::CreatePopupMenu();
        for (const Command& item : menu.items) {
            ::AppendMenuW(items, item.caption == nullptr ? MF_SEPARATOR : MF_STRING, static_cast<UINT_PTR>(item.menuId),
                          item.caption);
        }
        ::AppendMenuW(bar.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(items), menu.caption);
    }
    return bar;
}

} // namespace

void MainWindow::Load(KeyEvents& keys, BoxEvents& boxes, WindowEvents& events) {
    events_ = &events;
    UniqueMenu menu = CreateMenuBar();
    // Small, so that it stands on one monitor only; it gets its size, which follows from that, before it is shown.
    Form::Load({.title = L"Vextrel",
                .style = mainWindowStyle,
                .exStyle = mainWindowExStyle,
                .menu = menu.Get(),
                .widthPx = 320,
                .heightPx = 320});
    static_cast<void>(menu.Release()); // the window's from now on
    CreateControls(keys, boxes);
    ApplyDpi();
    ::SetTimer(Handle(), tmrCheckActiveWindow, checkActiveWindowMs, nullptr);
}

void MainWindow::CreateControls(KeyEvents& keys, BoxEvents& boxes) {
    // In the order in which Tab visits them.
    txtPassword_.Create(Handle(), ids::txtPassword, PasswordBoxView::Masked, boxes);
    txtText_.Create(Handle(), ids::txtText, PasswordBoxView::Plain, boxes);
    sliders_.Create(Handle());
    for (int number = 1; number <= keyButtonCount; ++number) {
        Key(number).Create(Handle(), number, keys, fonts_, keyCapture_);
    }
    toolbar_.Create(Handle(), *events_);
    statusBar_.Create(Handle());
    static_cast<void>(CreateSetupBox(Handle(), Dpi())); // stands there by its number; nothing here uses it
    SetAccessibleNames({{txtPassword_.Handle(), L"Password, masked"},
                        {txtText_.Handle(), L"Password, in clear"},
                        {toolbar_.Handle(), L"Toolbar"}});
    GateWindow(toolbar_.ToolTips(), GatedWindow::Control);
    ExcludeFromCapture(toolbar_.ToolTips());
    sliders_.Name(toolbar_.ToolTips());
    for (const HWND box : {txtPassword_.Handle(), txtText_.Handle()}) {
        AddToolTip(toolbar_.ToolTips(), box, L"Drag the password from here onto the field that asks for it");
    }
}

void MainWindow::ApplyDpi() {
    const int dpi = Dpi();
    fonts_.Clear();
    const HFONT messageFont = fonts_.MessageFont(dpi);
    for (const HWND control : {txtPassword_.Handle(), txtText_.Handle(), toolbar_.Handle()}) {
        SetFont(control, messageFont, true);
    }
    txtPassword_.SetCueFont(messageFont);
    statusBar_.SetFont(messageFont, dpi);
    // The keys need the room into which the sliders' labels would have to grow with the user's text.
    const int highest = ::MulDiv(usualFontHeight96, dpi, USER_DEFAULT_SCREEN_DPI);
    sliders_.SetLabelFont(CharacterHeightOf(messageFont) > highest ? fonts_.Sized(dpi, highest) : messageFont);
    for (KeyButton& key : keys_) {
        key.SetDpi(dpi);
    }
    toolbar_.SetDpi(dpi);
    passwordFontPx_ = 0;
    plainFontPx_ = 0;
    arrangedWidthPx_ = -1;
}

void MainWindow::OnUnload() noexcept {
    GuardEvent(Handle(), L"Form_Unload", [&] {
        ::KillTimer(Handle(), tmrCheckActiveWindow);
        WatchSession(Handle(), false);
        moveHook_.Remove();
        // Undoes what a hidden pointer may have left.
        ::ShowCursor(TRUE);
        events_->FormUnloading();
    });
}

void MainWindow::ShowBox(PasswordBoxView view) noexcept {
    shownView_ = view;
    FitPasswordFont();
    txtText_.Show(view == PasswordBoxView::Plain);
    txtPassword_.Show(view == PasswordBoxView::Masked);
}

HWND MainWindow::ActiveControl() const noexcept {
    const HWND focus = ::GetFocus();
    return ::IsChild(Handle(), focus) ? focus : activeControl_;
}

int MainWindow::ToolbarHeightPx() noexcept {
    if (!toolbar_.IsShown()) {
        return 0;
    }
    if (const int width = ClientArea(Handle()).right; width != arrangedWidthPx_) {
        arrangedWidthPx_ = width;
        toolbarHeightPx_ = toolbar_.Arrange(width);
    }
    return toolbarHeightPx_;
}

WindowGeometryInput MainWindow::GeometryInput() {
    const RECT client = ClientArea(Handle());
    const RECT outer = OuterArea(Handle());
    const int dpi = Dpi();
    return {.clientWidthTwips = TwipsFromPixels(client.right, dpi),
            .clientHeightTwips = TwipsFromPixels(client.bottom, dpi),
            .frameWidthTwips = TwipsFromPixels(outer.right - outer.left - client.right, dpi),
            .dpi = dpi,
            .toolbarHeightPx = ToolbarHeightPx(),
            .statusBarHeightPx = StatusBarHeightPx(),
            .labelTextPx = sliders_.LabelTextPx()};
}

void MainWindow::FitPasswordFont() {
    // A line is about a third higher than its font's nominal size.
    const int fontPx = std::max(1, static_cast<int>(ClientArea(txtPassword_.Handle()).bottom) * 3 / 4);
    if (fontPx != passwordFontPx_) {
        passwordFontPx_ = fontPx;
        SetFont(txtPassword_.Handle(), fonts_.Sized(Dpi(), fontPx), false);
    }
    // Not before it is shown: another face is another file to be read.
    if (shownView_ == PasswordBoxView::Plain && fontPx != plainFontPx_) {
        plainFontPx_ = fontPx;
        SetFont(txtText_.Handle(), fonts_.FixedPitch(Dpi(), fontPx), false);
    }
}

void MainWindow::FitCharacters() {
    const int heightPx = CharacterHeightPx({geometry_.keyUnitPx, geometry_.keyHeightPx}, Dpi(), characters_, fonts_);
    for (KeyButton& key : keys_) {
        key.SetCharacterHeight(heightPx);
    }
}

void MainWindow::Arrange() {
    if (::IsIconic(Handle())) {
        return; // it has no room now, and is told of its size when it gets it back
    }
    KeepKeysClickable();
    const WindowGeometryInput input = GeometryInput();
    geometry_ = GeometryOfWindow(input);
    const RECT client = ClientArea(Handle());

    // Nothing is drawn or copied on the way: all is painted anew at the end.
    constexpr UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER | SWP_NOREDRAW | SWP_NOCOPYBITS;
    HDWP positions = ::BeginDeferWindowPos(keyButtonCount + 8);
    const auto place = [&positions](HWND window, const Rect& to) {
        positions = ::DeferWindowPos(positions, window, nullptr, to.left, to.top, to.Width(), to.Height(), flags);
    };
    place(toolbar_.Handle(), {0, 0, client.right, input.toolbarHeightPx});
    place(txtPassword_.Handle(), geometry_.passwordBox);
    place(txtText_.Handle(), geometry_.passwordBox);
    place(sliders_.HoverLabel(), geometry_.hoverDelayLabel);
    place(sliders_.HoverSlider(), geometry_.hoverDelaySlider);
    place(sliders_.TransparencyLabel(), geometry_.transparencyLabel);
    place(sliders_.TransparencySlider(), geometry_.transparencySlider);
    for (int number = 1; number <= keyButtonCount; ++number) {
        place(Key(number).Handle(), geometry_.keys.at(static_cast<std::size_t>(number)));
    }
    place(statusBar_.Handle(), {0, client.bottom - input.statusBarHeightPx, client.right, client.bottom});
    if (positions != nullptr) {
        ::EndDeferWindowPos(positions);
    }
    FitPasswordFont();
    FitCharacters();
    statusBar_.Show();
    events_->FormMoved(); // the keys, if not the window
    ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

RECT MainWindow::KeyAreaOnScreen() const noexcept {
    const Rect& area = geometry_.keyArea;
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
    const RECT outer = OuterArea(Handle());
    ::SetWindowPos(Handle(), nullptr, 0, 0, outer.right - outer.left,
                   outer.bottom - outer.top + ToolbarHeightPx() - heightBefore,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Arrange();
}

void MainWindow::ShowHoverDelay(bool show) {
    if (!show && ::GetFocus() == sliders_.HoverSlider()) {
        FocusVisibleBox();
    }
    sliders_.ShowHoverDelay(show);
}

void MainWindow::SetCharacters(std::wstring characters) {
    if (characters != characters_) {
        characters_ = std::move(characters);
        FitCharacters();
    }
}

void MainWindow::Refresh(const CommandSnapshot& snapshot, StatusTexts status) {
    // A click changes a button by itself, whatever comes of it.
    toolbar_.Refresh(snapshot);
    const HMENU bar = ::GetMenu(Handle());
    for (const Menu& menu : MenuBar()) {
        for (const Command& item : menu.items) {
            const auto id = static_cast<UINT>(item.menuId);
            const CommandState state = StateOfCommand(item.menuId, snapshot);
            ::CheckMenuItem(bar, id, state.checked ? MF_CHECKED : MF_UNCHECKED);
            ::EnableMenuItem(bar, id, state.enabled ? MF_ENABLED : MF_GRAYED);
        }
    }
    statusBar_.SetTexts(std::move(status));
}

void MainWindow::OnNotify(const NMHDR& header) noexcept {
    if (header.hwndFrom == toolbar_.Handle() && header.code == static_cast<UINT>(TBN_DROPDOWN)) {
        toolbar_.OpenHoverMenu();
    }
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (keyCapture_.Route(Handle(), keys_, message, wParam, lParam)) {
        return 0;
    }
    switch (message) {
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE && HIWORD(wParam) == 0) {
            GuardEvent(Handle(), L"Form_Activate", [&] { events_->FormActivated(); });
            return 0;
        }
        break;
    // The form itself, no child of it, got the focus: it belongs into the password box.
    case WM_SETFOCUS: GuardEvent(Handle(), L"Form_GotFocus", [&] { FocusVisibleBox(); }); return 0;
    case WM_COMMAND: OnCommand(LOWORD(wParam), HIWORD(wParam)); return 0;
    case WM_NOTIFY: OnNotify(*reinterpret_cast<const NMHDR*>(lParam)); return 0; // TBDDRET_DEFAULT among others
    case WM_HSCROLL: sliders_.OnMoved(reinterpret_cast<HWND>(lParam), LOWORD(wParam), *events_); return 0;
    case WM_MOUSEMOVE: GuardEvent(Handle(), L"Form_MouseMove", [&] { events_->MouseMoveInForm(); }); break;
    case WM_SETCURSOR:
        if (LOWORD(lParam) == HTCLIENT && events_->ShowsDotPointer()) {
            ::SetCursor(DotPointerForDpi(Dpi()));
            return TRUE;
        }
        break;
    case WM_TIMER:
        if (wParam == tmrCheckActiveWindow) {
            GuardEvent(Handle(), L"tmrCheckActiveWindow_Timer", [&] {
                if (!std::exchange(watchesSession_, true)) {
                    WatchSession(Handle(), true); // the library that this takes is not waited for at the start
                }
                events_->CheckActiveWindow();
            });
        }
        return 0;
    case WM_ENTERMENULOOP:
    case WM_EXITMENULOOP: events_->MenuLoop(message == WM_ENTERMENULOOP); return 0;
    case WM_GETMINMAXINFO:
        if (const Size smallest = MinimumSize(); smallest.width > 0) {
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest.width, smallest.height};
        }
        return 0;
    case WM_DPICHANGED:
        GuardEvent(Handle(), L"DpiChanged", [&] { OnDpiChanged(*reinterpret_cast<const RECT*>(lParam)); });
        return 0;
    case WM_DISPLAYCHANGE: GuardEvent(Handle(), L"DisplayChange", [&] { events_->DisplayChanged(); }); break;
    case WM_WTSSESSION_CHANGE:
        GuardEvent(Handle(), L"SessionChange", [&] { events_->SessionChanged(wParam); });
        return 0;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE: OnSystemLookChanged(message); break;
    case WM_CLOSE:
        GuardEvent(Handle(), L"Form_QueryUnload", [&] {
            if (events_->MayUnload()) {
                Unload();
            }
        });
        return 0;
    case WM_ENDSESSION:
        if (wParam != FALSE) {
            events_->SessionEnding();
        }
        return 0;
    default: break;
    }
    return DefaultHandler(message, wParam, lParam);
}

void MainWindow::OnCommand(int id, int notification) {
    if (notification == EN_SETFOCUS && (id == ids::txtPassword || id == ids::txtText)) {
        activeControl_ = ::GetDlgItem(Handle(), id);
    } else if (id >= ids::mnuFileKeepOnTop && id <= ids::hoverDelayTwoSeconds) {
        events_->Command(id);
    }
}

Size MainWindow::MinimumSize() {
    const RECT outer = OuterArea(Handle());
    const RECT inner = ClientArea(Handle());
    if (statusBar_.Handle() == nullptr || inner.bottom <= 0) {
        return {};
    }
    const WindowGeometryInput input = GeometryInput();
    const Size client =
        MinimumClientSizePx(input.frameWidthTwips, input.dpi, input.toolbarHeightPx, input.statusBarHeightPx);
    return {client.width + static_cast<int>(outer.right - outer.left - inner.right),
            client.height + static_cast<int>(outer.bottom - outer.top - inner.bottom)};
}

void MainWindow::KeepKeysClickable() {
    // The minimum was asked for at another width: at this one, menu and toolbar may need more rows.
    const Size smallest = MinimumSize();
    const RECT outer = OuterArea(Handle());
    if (outer.bottom - outer.top < smallest.height) {
        ::SetWindowPos(Handle(), nullptr, 0, 0, outer.right - outer.left, smallest.height,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void MainWindow::OnDpiChanged(const RECT& suggested) {
    ApplyDpi();
    ::SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                   suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    events_->FormResized();
}

void MainWindow::OnSystemLookChanged(UINT message) {
    ApplyDpi();
    // Another font changes the rows' heights and so the keys' places.
    GuardEvent(Handle(), L"Resize", [&] { events_->FormResized(); });
    for (const HWND control :
         {toolbar_.Handle(), sliders_.HoverSlider(), sliders_.TransparencySlider(), statusBar_.Handle()}) {
        Tell(control, message);
    }
    ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

} // namespace vextrel
