#include "core/Geometry.h"
#include "core/Commands.h"
#include "core/KeyTable.h"
#include "core/OptionValues.h"
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Remote.h"
#include "driver/Target.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <future>

namespace vextrel::driver {
namespace {

constexpr int firstKeyId = ids::firstKey;

RECT KeyBounds(const App& app, int number) {
    return BoundsOf(app.Control(firstKeyId + number - 1));
}

int Width(const RECT& area) {
    return area.right - area.left;
}
int Height(const RECT& area) {
    return area.bottom - area.top;
}

/// The layer covers the keys to the pixel: from the first key to Enter's right edge and the space bar's lower one.
bool LayerIsInPlace(const App& app) {
    const RECT first = KeyBounds(app, 1);
    const RECT keys{first.left, first.top, KeyBounds(app, 29).right, KeyBounds(app, 57).bottom};
    const RECT layer = app.Layer() ? BoundsOf(app.Layer()) : RECT{};
    return EqualRect(&layer, &keys) != FALSE;
}

RECT ScreenOf(const App& app) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(app.Main(), MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcMonitor;
}

void Resize(const App& app, int width, int height) {
    SetWindowPos(app.Main(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Ask(app.Main(), WM_NULL);
}

TEST(Geometry, TheSmallestKeyOfTheSettingsFileHoldsAtTheStartAndForResize) {
    for (const auto& [asked, least] : {std::pair(L"40", 40), {L"32767", 9999}, {L"99999", 0}}) {
        const Sandbox sandbox;
        sandbox.SetSetting(L"Smallest Key", asked);
        const App app(sandbox);
        const int widest = (Width(ScreenOf(app)) / 2 * 15 - 700) / 15 / 15;
        for (int times = 0; times < 3; ++times) {
            EXPECT_GE(Width(KeyBounds(app, 2)), std::min(least, widest)) << asked;
            EXPECT_LE(Width(BoundsOf(app.Main())), Width(ScreenOf(app)) / 2 + 8) << asked;
            Ask(app.Main(), WM_COMMAND, ids::toolRefresh);
        }
    }
}

TEST(Geometry, LayerFollowsEveryChangeOfTheWindow) {
    const Sandbox sandbox;
    const App app(sandbox);
    const auto expectInPlace = [&](const char* after) {
        EXPECT_TRUE(WaitFor([&] { return LayerIsInPlace(app); })) << after;
    };
    expectInPlace("the start");
    EXPECT_EQ(GetWindowLongPtrW(app.Main(), GWL_STYLE) & WS_MAXIMIZEBOX, 0);
    app.MoveTo({61, 47});
    expectInPlace("a move");
    Resize(app, 701, 433);
    expectInPlace("a new size");

    const RECT before = BoundsOf(app.Main());
    const RECT key = KeyBounds(app, 17);
    const int toolbarHeight = Height(BoundsOf(app.Control(ids::tbToolbar)));
    Ask(app.Main(), WM_COMMAND, ids::mnuViewToolbar);
    EXPECT_EQ(Height(BoundsOf(app.Main())), Height(before) - toolbarHeight);
    EXPECT_EQ(Width(KeyBounds(app, 17)), Width(key));
    EXPECT_EQ(Height(KeyBounds(app, 17)), Height(key));
    expectInPlace("hiding the toolbar");
    Ask(app.Main(), WM_COMMAND, ids::mnuViewToolbar);
    EXPECT_EQ(Height(BoundsOf(app.Main())), Height(before));
    expectInPlace("showing the toolbar");

    for (const int dpi : {144, 192, 96}) {
        SCOPED_TRACE(dpi);
        const RECT suggested{90, 80, 90 + 640 * dpi / 96, 80 + 400 * dpi / 96};
        const RemoteMemory memory(app.Running(), sizeof suggested);
        memory.Write(&suggested, sizeof suggested);
        Ask(app.Main(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(memory.Address()));
        EXPECT_TRUE(WaitFor([&] {
            const RECT now = BoundsOf(app.Main());
            return EqualRect(&now, &suggested) != FALSE;
        }));
        expectInPlace("another DPI");
        // Pictures of 16, 24 and 32 pixels with their margins; text, which the bar's height follows; lengths in twips.
        EXPECT_EQ(HIWORD(Ask(app.Control(ids::tbToolbar), TB_GETBUTTONSIZE)), 22 * dpi / 96);
        EXPECT_EQ(Height(BoundsOf(app.Control(ids::StatusBar1))), 22 * dpi / 96);
        EXPECT_EQ(Height(BoundsOf(app.Control(ids::sldHoverDelay))), 20 * dpi / 96);
    }

    // Another font may have moved the keys.
    SetWindowPos(app.Layer(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Ask(app.Main(), WM_SETTINGCHANGE);
    expectInPlace("a change of the system's look");

    SetWindowPos(app.Main(), nullptr, 9000, 9000, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Ask(app.Main(), WM_DISPLAYCHANGE, 32, MAKELPARAM(1024, 768));
    EXPECT_TRUE(WaitFor([&] { return MonitorFromWindow(app.Main(), MONITOR_DEFAULTTONULL) != nullptr; }));
    expectInPlace("the way back to the screen");
    app.MoveTo({300, -100}); // still to be seen, but not to be taken hold of
    Ask(app.Main(), WM_DISPLAYCHANGE, 32, MAKELPARAM(1024, 768));
    EXPECT_TRUE(WaitFor([&] { return BoundsOf(app.Main()).top == 0; }));
}

TEST(Geometry, LayerIsOnTheKeysWheneverTheWindowCanBeSeen) {
    const Sandbox sandbox;
    sandbox.SetSetting(settings::keyboardLayout, L"Default");
    std::future<void> change = std::async(std::launch::async, [] { // while the start still reads the system's layout
        HWND main = nullptr;
        Await("the window", [&] { return (main = FindWindowW(formClass, L"Vextrel")) && IsWindowVisible(main); });
        SetWindowPos(main, nullptr, 0, 0, 701, 433, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    });
    const App app(sandbox);
    change.get();
    const auto expectInPlace = [&](const char* after) {
        EXPECT_TRUE(WaitFor([&] { return LayerIsInPlace(app); })) << after;
    };
    RECT client{};
    GetClientRect(app.Main(), &client);
    EXPECT_TRUE(WaitFor([&] { return Width(BoundsOf(app.Control(ids::StatusBar1))) == client.right; }));
    expectInPlace("a new size during the start");

    app.MoveTo({61, 0});
    Resize(app, 701, 9999);
    Ask(app.Main(), WM_COMMAND, ids::mnuViewToolbar);
    Resize(app, 701, 9999);
    Ask(app.Main(), WM_COMMAND, ids::mnuViewToolbar);
    expectInPlace("showing the toolbar where the window cannot grow");
    Resize(app, 701, 433);

    const std::pair<int, int> ways[] = {
        {SW_MINIMIZE, SW_RESTORE}, {SW_SHOWMINNOACTIVE, SW_SHOWNOACTIVATE}, {SW_HIDE, SW_SHOW}};
    for (const auto& [hide, restore] : ways) { // by another program
        SCOPED_TRACE(hide);
        ShowWindow(app.Main(), hide);
        EXPECT_TRUE(WaitFor([&] { return app.Layer() == nullptr; })) << "no window, no layer";
        ShowWindow(app.Main(), restore);
        expectInPlace("the window is back");
    }
    ShowWindow(app.Layer(), SW_HIDE);
    expectInPlace("another program has hidden the layer");
    SetWindowPos(app.Layer(), nullptr, 0, 0, 9, 9, SWP_NOZORDER | SWP_NOACTIVATE);
    expectInPlace("another program has moved the layer");

    Pointer pointer;
    pointer.MoveTo(CentreOf(app.Control(firstKeyId + 30)));
    pointer.Press();
    ShowWindow(app.Main(), SW_MINIMIZE);
    Await("the window has gone", [&] { return app.Layer() == nullptr; });
    pointer.Release();
    ShowWindow(app.Main(), SW_RESTORE);
    expectInPlace("minimised during a click");
    EXPECT_EQ(Ask(app.PasswordBox(), WM_GETTEXTLENGTH), 0);
}

TEST(Geometry, SmallestWindowShowsEverything) {
    const Sandbox sandbox;
    const App app(sandbox);
    app.MoveTo({50, 50});
    Resize(app, 10, 10);
    RECT client{};
    GetClientRect(app.Main(), &client);
    MapWindowPoints(app.Main(), nullptr, reinterpret_cast<POINT*>(&client), 2);
    const int smallestKey = MulDiv(16, static_cast<int>(GetDpiForWindow(app.Main())), USER_DEFAULT_SCREEN_DPI);
    for (int id = ids::txtPassword; id <= ids::StatusBar1; ++id) {
        if (const HWND control = GetDlgItem(app.Main(), id); control && id != ids::txtSetup) {
            const RECT bounds = BoundsOf(control);
            RECT inside{};
            EXPECT_TRUE(IntersectRect(&inside, &bounds, &client) && EqualRect(&inside, &bounds)) << id;
        }
    }
    for (const int number : {1, 13, 17, 43, 57}) {
        EXPECT_GE(Width(KeyBounds(app, number)), smallestKey);
        EXPECT_GE(Height(KeyBounds(app, number)), smallestKey);
    }
    const RECT bar = BoundsOf(app.Control(ids::tbToolbar));
    for (const ToolButton& tool : ToolButtons())
        EXPECT_TRUE(PtInRect(&bar, app.ToolPlace(tool.id))) << tool.id;

    Resize(app, 10, 500); // narrow keys with much height: each alone would take what its character allows
    Pointer pointer;
    pointer.Click(app.Control(firstKeyId + keys::leftShift - 1));
    Await("capitals", [&] { return app.FindKey(L"W") != nullptr; });
    const auto inkHeight = [&](const wchar_t* caption) {
        const HDC screen = GetDC(nullptr);
        const RECT key = BoundsOf(app.FindKey(caption));
        int rows = 0;
        for (int y = key.top + 2; y < key.bottom - 2; ++y) {
            bool inked = false;
            for (int x = key.left + 2; x < key.right - 2; ++x)
                inked = inked || GetGValue(GetPixel(screen, x, y)) < 200;
            rows += inked ? 1 : 0;
        }
        ReleaseDC(nullptr, screen);
        return rows;
    };
    EXPECT_TRUE(WaitFor([&] { return inkHeight(L"I") > 0 && inkHeight(L"I") == inkHeight(L"W"); }))
        << inkHeight(L"I") << " and " << inkHeight(L"W");
}

TEST(Geometry, RefreshGivesNewSizesAndPlacesOnTheScreen) {
    const Sandbox sandbox;
    std::vector<RECT> seen;
    const auto look = [&](const App& app) {
        const RECT bounds = BoundsOf(app.Main());
        const RECT screen = ScreenOf(app);
        const int dpi = static_cast<int>(GetDpiForWindow(app.Main()));
        EXPECT_GE(bounds.left, screen.left + PixelsFromTwips(400, dpi));
        // Where the window would reach too low, it is raised as far as it needs.
        EXPECT_GE(bounds.top, bounds.bottom == screen.bottom ? screen.top : screen.top + PixelsFromTwips(400, dpi));
        EXPECT_LE(bounds.right, screen.right - PixelsFromTwips(1100, dpi) + 1);
        EXPECT_LE(bounds.bottom, screen.bottom);
        EXPECT_GE(Width(bounds), PixelsFromTwips(5500 - 15 * 15, dpi));
        EXPECT_LE(Width(bounds), Width(screen) / 2 + PixelsFromTwips(15 * 15, dpi));
        EXPECT_TRUE(WaitFor([&] { return LayerIsInPlace(app); }));
        seen.push_back(bounds);
    };
    for (int start = 0; start < 2; ++start) {
        const App app(sandbox);
        look(app);
        for (int round = 0; round < 6; ++round) {
            Ask(app.Main(), WM_COMMAND, ids::toolRefresh);
            look(app);
        }
        for (int round = 0; round < 6; ++round) { // of a window that is taller than its place
            Resize(app, Width(seen.back()), 9999);
            Ask(app.Main(), WM_COMMAND, ids::toolRefresh);
            EXPECT_GE(BoundsOf(app.Main()).top, ScreenOf(app).top);
        }
        EXPECT_EQ(app.Close(), 0U);
    }
    for (std::size_t i = 0; i < seen.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_FALSE(EqualRect(&seen[i], &seen[k])) << i << " as " << k;
}

/// Of two windows the one that is nearer to the user.
HWND UpperOf(HWND a, HWND b) {
    for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT))
        if (window == a || window == b)
            return window;
    return nullptr;
}

TEST(Geometry, KeepOnTopReassertsItselfOncePerChangeOfTheForeground) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    pointer.MoveTo({0, 0}); // over the keys it would bring the window to the front
    const Target target(L"--topmost");
    const HWND other = target.Window();
    Await("the other program is in front", [&] { return GetForegroundWindow() == other; });
    EXPECT_TRUE(WaitFor([&] { return UpperOf(app.Main(), other) == app.Main(); }));

    EXPECT_EQ(GetForegroundWindow(), other);
    const auto raiseOther = [&] {
        SetWindowPos(other, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    };
    const auto tick = [&] { Ask(app.Main(), WM_TIMER, 1); }; // of tmrCheckActiveWindow, without the wait for it
    const auto staysBelow = [&] {
        tick();
        return UpperOf(app.Main(), other) == other;
    };
    raiseOther();
    EXPECT_TRUE(staysBelow()) << "the foreground has not changed since";

    // During a drag, and while a menu is open, it waits.
    target.KeepClearOf(BoundsOf(app.Main()));
    app.Activate();
    app.ClickPassword(pointer, L"a");
    for (const bool drag : {true, false}) {
        SCOPED_TRACE(drag ? "drag" : "menu");
        app.Activate();
        tick();
        if (drag)
            pointer.Pull(CentreOf(app.PasswordBox()), {5, 5});
        else
            PostMessageW(app.Main(), WM_SYSCOMMAND, SC_KEYMENU, 'v');
        Await("the hint of the drag, or the menu", [&] {
            const auto forms = app.Running().Windows(formClass, L"");
            return app.Running().Window(L"#32768") || std::any_of(forms.begin(), forms.end(), [](HWND form) {
                       return GetDlgItem(form, ids::dragNoteHeader) != nullptr;
                   });
        });
        SetForegroundWindow(other);
        Await("the other program is in front again", [&] { return GetForegroundWindow() == other; });
        raiseOther();
        EXPECT_TRUE(staysBelow());
        if (drag) {
            // With the foreground the drag has lost the pointer: it learns of a release above the program's own window.
            pointer.MoveTo(CentreOf(app.Control(ids::StatusBar1)), 3, Milliseconds(40));
            pointer.Release();
        } else
            Ask(app.Main(), WM_CANCELMODE);
        EXPECT_TRUE(WaitFor([&] { return UpperOf(app.Main(), other) == app.Main(); }));
    }

    Ask(app.Main(), WM_COMMAND, ids::mnuFileKeepOnTop);
    app.Activate();
    tick();
    SetForegroundWindow(other);
    Await("the other program is in front again", [&] { return GetForegroundWindow() == other; });
    raiseOther();
    EXPECT_TRUE(staysBelow());
}

TEST(Geometry, KeyboardReachesMenusAndControlsAndEveryControlHasItsName) {
    const Sandbox sandbox;
    const App app(sandbox);
    const auto focused = [&] {
        GUITHREADINFO information{};
        information.cbSize = sizeof information;
        GetGUIThreadInfo(GetWindowThreadProcessId(app.Main(), nullptr), &information);
        return GetDlgCtrlID(information.hwndFocus);
    };
    app.Activate();
    for (const int id : {ids::txtPassword, ids::sldTransparency, ids::tbToolbar, ids::txtPassword}) {
        EXPECT_TRUE(WaitFor([&] { return focused() == id; })) << focused() << " instead of " << id;
        Keys::Stroke(VK_TAB);
    }
    // On the toolbar: arrows, Home and End lead to a button, Space and Enter press it, Down opens its menu.
    const auto pressed = [&](int tool) { return (app.ToolState(tool) & TBSTATE_CHECKED) != 0; };
    const auto marked = [&](int tool) {
        const auto index = Ask(app.Control(ids::tbToolbar), TB_COMMANDTOINDEX, static_cast<WPARAM>(tool));
        return Ask(app.Control(ids::tbToolbar), TB_GETHOTITEM) == index;
    };
    Keys::Stroke(VK_TAB);
    EXPECT_TRUE(WaitFor([&] { return focused() == ids::tbToolbar && marked(ids::toolStandard); }));
    const struct {
        std::vector<WORD> keys;
        int tool;
        bool pressed;
    } presses[] = {
        {{VK_RIGHT, VK_RIGHT, VK_RIGHT, VK_SPACE}, ids::toolInject, true},
        {{VK_RETURN}, ids::toolInject, false},
        {{VK_END, VK_RIGHT, VK_LEFT, VK_LEFT, VK_RETURN}, ids::toolKeepOnTop, false},
        {{VK_SPACE}, ids::toolKeepOnTop, true},
        {{VK_HOME, VK_LEFT, VK_RIGHT, VK_SPACE}, ids::toolHover, true},
    };
    for (const auto& row : presses) {
        for (const WORD key : row.keys)
            Keys::Stroke(key);
        EXPECT_TRUE(WaitFor([&] { return pressed(row.tool) == row.pressed; })) << row.tool;
        EXPECT_TRUE(marked(row.tool)) << row.tool;
    }
    Keys::Stroke(VK_DOWN);
    Await("the drop-down opens", [&] { return app.Running().Window(L"#32768") != nullptr; });
    Keys::Stroke(VK_DOWN);
    Keys::Stroke(VK_RETURN);
    EXPECT_TRUE(WaitFor([&] { return sandbox.Setting(settings::hoverTimerInterval) == L"500"; }));
    EXPECT_EQ(focused(), ids::tbToolbar);
    Keys::Stroke('V', {VK_MENU});
    Await("the menu opens", [&] { return app.Running().Window(L"#32768") != nullptr; });
    Keys::Stroke('T');
    EXPECT_TRUE(WaitFor([&] { return !app.Visible(ids::tbToolbar); }));
    Ask(app.Main(), WM_COMMAND, ids::mnuViewToolbar);

    for (const auto& [slider, label, text] : {std::tuple{ids::sldHoverDelay, ids::lblHoverDelay, L"Hover delay"},
                                              std::tuple{ids::sldTransparency, ids::lblTransparency, L"Opacity"}}) {
        EXPECT_EQ(GetWindow(app.Control(slider), GW_HWNDPREV), app.Control(label));
        EXPECT_EQ(app.Text(label), text);
    }
    const RemoteMemory memory(app.Running(), 256 * sizeof(wchar_t));
    for (const ToolButton& tool : ToolButtons()) {
        wchar_t text[256]{};
        Ask(app.Control(ids::tbToolbar), TB_GETBUTTONTEXTW, static_cast<WPARAM>(tool.id),
            reinterpret_cast<LPARAM>(memory.Address()));
        memory.Read(text, sizeof text);
        EXPECT_STREQ(text, tool.toolTip);
    }
}

} // namespace
} // namespace vextrel::driver
