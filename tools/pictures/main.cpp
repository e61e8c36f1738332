// Takes pictures of the real program, for whoever changes its looks. Arguments: the folder for the pictures, the
// beginning of their names, and "all" for menus and dialogs, too, instead of the main window alone; or the folder and
// "manual" for those that the manual shows, of the program as users have it.

#include "core/RandomPlacement.h"
#include "core/WindowGeometry.h"
#include "core/ids.h"
#include "driver/App.h"
#include "pictures/Screen.h"

#include <algorithm>
#include <iostream>

namespace {

using namespace vextrel;
using namespace vextrel::driver;

constexpr const wchar_t* sample = L"Vextrel7";

class Photographer {
  public:
    Photographer(const App& app, std::filesystem::path folder, std::wstring stem)
        : app_(app)
        , folder_(std::move(folder))
        , stem_(std::move(stem)) {}

    /// Of the main window, and of another window with it where it reaches.
    void Take(const std::wstring& name, HWND with = nullptr, bool alone = false) {
        Ask(app_.Main(), WM_NULL); // what it is at, it has done then
        RECT part = BoundsOf(alone ? with : app_.Main());
        if (with && !alone) {
            const RECT first = part;
            const RECT second = BoundsOf(with);
            UnionRect(&part, &first, &second);
        }
        const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        const RECT wanted = part;
        IntersectRect(&part, &wanted, &screen);
        TakeScreenshot(folder_ / (stem_ + name + L".png"), part);
    }

    /// Gives the window one of the sizes that a start can give.
    void Size(double widthTwips) {
        const int dpi = static_cast<int>(GetDpiForWindow(app_.Main()));
        const double unit = KeyUnitTwips(widthTwips, TwipsPerPixel(dpi));
        const double outerWidth = 15 * unit + 2 * sideMarginTwips + 100;
        const auto bar = [&](int id) {
            const RECT bounds = BoundsOf(app_.Control(id));
            return app_.Visible(id) ? TwipsFromPixels(bounds.bottom - bounds.top, dpi) : 0;
        };
        for (int round = 0; round < 2; ++round) { // the toolbar's height depends on the width
            const double height = WindowHeightTwips(unit, bar(ids::tbToolbar), bar(ids::StatusBar1));
            SetWindowPos(app_.Main(), nullptr, 0, 0, PixelsFromTwips(outerWidth, dpi), PixelsFromTwips(height, dpi),
                         SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }

  private:
    const App& app_;
    std::filesystem::path folder_;
    std::wstring stem_;
};

bool IsInMenu(const App& app) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(app.Main(), nullptr), &info);
    return (info.flags & GUI_INMENUMODE) != 0 || app.Running().Window(L"#32768") != nullptr;
}

void TakeMenus(const App& app, Photographer& photographer) {
    constexpr const wchar_t* names[] = {L"menu-file",    L"menu-mode",   L"menu-view",
                                        L"menu-options", L"menu-layout", L"menu-help"};
    for (std::size_t place = 0; place < std::size(names); ++place) {
        app.Activate();
        Keys::Stroke(VK_F10);
        for (std::size_t steps = 0; steps < place; ++steps)
            Keys::Stroke(VK_RIGHT);
        Keys::Stroke(VK_DOWN);
        HWND menu = nullptr;
        Await("a menu opens", [&] { return (menu = app.Running().Window(L"#32768")) != nullptr; });
        photographer.Take(names[place], menu);
        Keys::Stroke(VK_ESCAPE);
        Keys::Stroke(VK_ESCAPE);
        // Else the second Escape would end the first dialog.
        Await("the menu closes", [&] { return !IsInMenu(app); });
    }
}

void TakeDialogs(const App& app, Photographer& photographer) {
    const auto takeDialog = [&](int command, const wchar_t* dialogClassName, const wchar_t* title,
                                const wchar_t* name) {
        app.Command(command);
        const HWND dialog = app.Running().AwaitWindow(dialogClassName, title);
        BringToFront(dialog);
        photographer.Take(name, dialog, true);
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        Await("the dialog closes", [&] { return !IsWindow(dialog) && IsWindowEnabled(app.Main()); });
    };
    takeDialog(ids::mnuHelpAbout, formClass, L"About Vextrel", L"about");
    takeDialog(ids::mnuViewProtectiveLayer, formClass, L"Transparency Value", L"layer-question");
    takeDialog(ids::mnuModeHiddenMouseAndHover, dialogClass, L"Hide mouse - turn it into grey dot?", L"mouse-question");
    app.Command(ids::mnuViewProtectiveLayer);

    // A caret that no 16-bit number expresses, which the next key stumbles over.
    app.Command(ids::mnuViewPasswordMask);
    Await("the plain box is shown", [&] { return app.Visible(ids::txtText); });
    const std::wstring tooLong(40000, L'x');
    const HWND box = app.Control(ids::txtText);
    SendMessageW(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(tooLong.c_str()));
    Ask(box, EM_SETSEL, tooLong.size(), static_cast<LPARAM>(tooLong.size()));
    PostMessageW(app.Control(ids::firstKey), BM_CLICK, 0, 0);
    HWND error = nullptr;
    Await("the error dialog appears", [&] {
        for (const HWND window : app.Running().Windows(formClass))
            if (GetDlgItem(window, ids::txtError))
                error = window;
        return error != nullptr;
    });
    BringToFront(error);
    photographer.Take(L"error", error, true);
    PostMessageW(error, WM_COMMAND, ids::cmdClose, 0);
    Await("the error dialog closes", [&] { return !IsWindow(error); });
}

void TakeAll(const std::filesystem::path& folder, const std::wstring& stem, bool all) {
    const Sandbox sandbox;
    const App app(sandbox);
    Photographer photographer(app, folder, stem);
    Pointer pointer;
    const POINT corner{GetSystemMetrics(SM_CXSCREEN) - 5, 5};
    pointer.MoveTo(corner);
    app.MoveTo({60, 60});
    const double widest =
        std::max(TwipsFromPixels(GetSystemMetrics(SM_CXSCREEN), static_cast<int>(GetDpiForSystem())) / 2, 5500.0);
    photographer.Size(widest);
    photographer.Take(L"first-start-widest");
    photographer.Size(5500);
    photographer.Take(L"first-start-narrowest");
    app.ClickPassword(pointer, sample);
    pointer.MoveTo(corner);
    photographer.Take(L"narrowest");
    photographer.Size(widest);
    photographer.Take(L"widest");
    photographer.Size(5500);
    pointer.Pull(CentreOf(app.PasswordBox()), corner); // where nobody takes it
    pointer.Release();
    Await("the refused drop is told", [&] { return app.Text(ids::StatusBar1).starts_with(L"Not taken"); });
    photographer.Take(L"refused-drop-narrowest");
    photographer.Size(7000);
    photographer.Take(L"refused-drop");
    app.Activate();
    Ask(app.PasswordBox(), EM_SETSEL, 2, 5);
    Keys::Stroke(VK_BACK);
    Await("the difference is told", [&] { return app.Text(ids::StatusBar1).starts_with(L"The box"); });
    photographer.Take(L"differing-box");
    photographer.Size(5500);
    photographer.Take(L"differing-box-narrowest");
    app.Command(ids::toolClear);
    app.ClickPassword(pointer, sample);
    pointer.MoveTo(corner);
    app.Command(ids::mnuViewToolbar);
    Await("the toolbar goes", [&] { return !app.Visible(ids::tbToolbar); });
    photographer.Take(L"without-toolbar");
    app.Command(ids::mnuViewToolbar);
    Await("the toolbar comes", [&] { return app.Visible(ids::tbToolbar); });
    SetWindowPos(app.Main(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    photographer.Take(L"minimum");
    photographer.Size(7000);
    app.Command(ids::toolHover);
    Await("the label is shown", [&] { return app.Visible(ids::lblHoverDelay); });
    app.Command(ids::mnuViewPasswordMask);
    Await("the plain box is shown", [&] { return app.Visible(ids::txtText); });
    photographer.Take(L"hover-plain");
    SetWindowPos(app.Main(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    photographer.Take(L"hover-minimum");
    photographer.Size(7000);
    app.Command(ids::toolStandard);
    app.Command(ids::mnuViewPasswordMask);
    Await("the masked box is shown", [&] { return app.Visible(ids::txtPassword); });
    if (all) {
        TakeMenus(app, photographer);
        TakeDialogs(app, photographer);
    }
    app.Close();
}

/// Chooses an item as users do. @param menu, item its place, from 0.
void ChooseByKeys(const App& app, int menu, int item) {
    app.Activate();
    Keys::Stroke(VK_F10);
    for (int step = 0; step < menu; ++step)
        Keys::Stroke(VK_RIGHT);
    Keys::Stroke(VK_DOWN);
    Await("the menu opens", [&] { return app.Running().Window(L"#32768") != nullptr; });
    for (int step = 0; step < item; ++step)
        Keys::Stroke(VK_DOWN);
    Keys::Stroke(VK_RETURN);
    Await("the menu closes", [&] { return !IsInMenu(app); });
}

void TakeManual(const std::filesystem::path& folder) {
    const Sandbox sandbox({}, {}, Sandbox::Others::Refused);
    const App app(sandbox);
    Photographer photographer(app, folder, L"");
    Pointer pointer;
    app.MoveTo({60, 60});
    app.Activate();
    Keys::Type(sample);
    pointer.MoveTo({GetSystemMetrics(SM_CXSCREEN) - 5, 5});
    photographer.Size(7000);
    photographer.Take(L"masked");
    TakeMenus(app, photographer);
    ChooseByKeys(app, 5, 2);
    const HWND about = app.Running().AwaitWindow(formClass, L"About Vextrel");
    BringToFront(about);
    photographer.Take(L"about", about, true);
    Keys::Stroke(VK_ESCAPE);
    Await("the dialog closes", [&] { return !IsWindow(about) && IsWindowEnabled(app.Main()); });
    ChooseByKeys(app, 1, 1);
    Await("the label is shown", [&] { return app.Visible(ids::lblHoverDelay); });
    ChooseByKeys(app, 2, 2);
    Await("the plain box is shown", [&] { return app.Visible(ids::txtText); });
    photographer.Take(L"hover");
    app.Close();
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    if (argc < 3) {
        std::cout << "usage: vextrel_pictures FOLDER (STEM [all] | manual)\n";
        return 2;
    }
    try {
        if (argv[2] == std::wstring_view(L"manual"))
            TakeManual(argv[1]);
        else
            TakeAll(argv[1], argv[2] + std::wstring(L"-"), argc > 3);
        return 0;
    } catch (const std::exception& error) {
        std::cout << "no pictures: " << error.what() << '\n';
        return 1;
    }
}
