// What the main window consists of: menu bar, controls, their names and tool tips.
#include "core/OptionValues.h"
#include "core/ids.h"
#include "ui/MainWindow.h"
#include "win32/AccessibleName.h"
#include "win32/Text.h"

namespace vextrel {

void MainWindow::CreateMenuBar() {
    menuBar_.Reset(::CreateMenu());
    for (const Menu& menu : MenuBar()) {
        const HMENU items = ::CreatePopupMenu();
        for (const MenuItem& item : menu.items) {
            ::AppendMenuW(items, item.caption == nullptr ? MF_SEPARATOR : MF_STRING, static_cast<UINT_PTR>(item.id),
                          item.caption);
        }
        ::AppendMenuW(menuBar_.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(items), menu.caption);
    }
}

HWND MainWindow::AddControl(const wchar_t* controlClass, const wchar_t* text, DWORD style, int id) {
    const HWND control = ::CreateWindowExW(WS_EX_NOPARENTNOTIFY, controlClass, text, WS_CHILD | WS_CLIPSIBLINGS | style,
                                           0, 0, 0, 0, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                           ::GetModuleHandleW(nullptr), nullptr);
    if (control == nullptr) {
        ThrowLastError();
    }
    return control;
}

void MainWindow::CreateControls() {
    // In the order in which Tab visits them; a label stands before what it names.
    txtPassword_.Create(Handle(), ids::txtPassword, PasswordBoxView::Masked, controller_);
    txtText_.Create(Handle(), ids::txtText, PasswordBoxView::Plain, controller_);
    lblHoverDelay_ = AddControl(WC_STATICW, L"Hover delay", SS_LEFT | SS_CENTERIMAGE, ids::lblHoverDelay);
    sldHoverDelay_ =
        AddControl(TRACKBAR_CLASSW, L"", WS_VISIBLE | WS_TABSTOP | TBS_HORZ | TBS_NOTICKS, ids::sldHoverDelay);
    lblTransparency_ = AddControl(WC_STATICW, L"Opacity", WS_VISIBLE | SS_LEFT | SS_CENTERIMAGE, ids::lblTransparency);
    sldTransparency_ =
        AddControl(TRACKBAR_CLASSW, L"", WS_VISIBLE | WS_TABSTOP | TBS_HORZ | TBS_NOTICKS, ids::sldTransparency);
    for (int number = 1; number <= keyButtonCount; ++number) {
        Key(number).Create(Handle(), number, controller_, fonts_, keyCapture_);
    }
    toolbar_.Create(Handle(), controller_);
    statusBar_ = AddControl(STATUSCLASSNAMEW, L"", WS_VISIBLE | SBARS_SIZEGRIP | CCS_NOPARENTALIGN | CCS_NORESIZE,
                            ids::StatusBar1);
    txtSetup_ = AddControl(WC_EDITW, L"", WS_VISIBLE, ids::txtSetup);

    ::SendMessageW(sldHoverDelay_, TBM_SETRANGEMIN, FALSE, hoverSliderMinMs);
    ::SendMessageW(sldHoverDelay_, TBM_SETRANGEMAX, FALSE, hoverSliderMaxMs);
    ::SendMessageW(sldHoverDelay_, TBM_SETLINESIZE, 0, hoverSliderStepMs);
    ::SendMessageW(sldHoverDelay_, TBM_SETPAGESIZE, 0, hoverSliderStepMs * 5);
    ::SendMessageW(sldTransparency_, TBM_SETRANGEMIN, FALSE, transparencySliderMinPercent);
    ::SendMessageW(sldTransparency_, TBM_SETRANGEMAX, FALSE, transparencySliderMaxPercent);
    ::SendMessageW(sldTransparency_, TBM_SETLINESIZE, 0, 1);
    ::SendMessageW(sldTransparency_, TBM_SETPAGESIZE, 0, 10);
    NameControls();
    AddToolTips();
}

void MainWindow::AddToolTips() {
    const HWND toolTips = toolbar_.ToolTips();
    ExcludeFromCapture(toolTips);
    for (const HWND slider : {sldHoverDelay_, sldTransparency_}) {
        std::wstring text = slider == sldHoverDelay_ ? L"Hover delay" : L"Opacity of this window";
        TOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        tool.hwnd = Handle();
        tool.uId = reinterpret_cast<UINT_PTR>(slider);
        tool.lpszText = text.data();
        ::SendMessageW(toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

void MainWindow::NameControls() noexcept {
    SetAccessibleNames({{txtPassword_.Handle(), L"Password, masked"},
                        {txtText_.Handle(), L"Password, in clear"},
                        {sldHoverDelay_, L"Hover delay"},
                        {sldTransparency_, L"Opacity"},
                        {toolbar_.Handle(), L"Toolbar"},
                        {Key(keys::space).Handle(), L"space"}});
}

} // namespace vextrel
