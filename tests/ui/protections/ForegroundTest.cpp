// The layer's place, and what it does when other windows are in front.

#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

#include <commctrl.h>

namespace vextrel::driver {
namespace {

/// Several ticks of the watch, for something that must not happen.
constexpr Milliseconds someTicks{300};

bool LiesOnTheKeys(const App& app) {
    const HWND layerWindow = app.Layer();
    if (layerWindow == nullptr) {
        return false;
    }
    const RECT layer = BoundsOf(layerWindow);
    const RECT first = BoundsOf(app.Key(1));
    return layer.left == first.left && layer.top == first.top && layer.right == BoundsOf(app.Key(29)).right &&
           layer.bottom == BoundsOf(app.Key(57)).bottom;
}

TEST(ProtectiveLayer, LiesOnTheKeysAndIsNoWindowOfItsOwn) {
    const Sandbox sandbox;
    const App app(sandbox);
    const HWND layer = app.Layer();
    EXPECT_EQ(TextOf(layer), L"");
    const LONG_PTR style = GetWindowLongPtrW(layer, GWL_EXSTYLE);
    EXPECT_EQ(style & (WS_EX_TOOLWINDOW | WS_EX_APPWINDOW), WS_EX_TOOLWINDOW); // neither taskbar nor Alt+Tab

    const auto resize = [&](int width, int height) {
        SetWindowPos(app.Main(), nullptr, 60, 40, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    };
    const struct {
        const char* name;
        std::function<void()> act;
    } steps[] = {{"shown", [] {}},
                 {"moved",
                  [&] {
                      app.MoveTo({33, 77});
                  }},
                 {"larger", [&] { resize(1001, 507); }},
                 {"smaller", [&] { resize(10, 10); }},
                 {"without toolbar", [&] { app.Command(ids::mnuViewToolbar); }},
                 {"with toolbar", [&] { app.Command(ids::mnuViewToolbar); }},
                 {"rearranged", [&] { app.Command(ids::toolRefresh); }}};
    for (const auto& step : steps) {
        step.act();
        Ask(app.Main(), WM_NULL);
        Await(std::string("the layer lies on the keys: ") + step.name, [&] { return LiesOnTheKeys(app); });
    }
    PostMessageW(app.Main(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    Await("the layer goes with the minimised window", [&] { return IsIconic(app.Main()) && !IsWindowVisible(layer); });
    PostMessageW(app.Main(), WM_SYSCOMMAND, SC_RESTORE, 0);
    Await("the layer comes back with it", [&] { return !IsIconic(app.Main()) && LiesOnTheKeys(app); });
}

TEST(ProtectiveLayer, TurnsInvisibleOnceWhileAnotherProgramIsInFront) {
    const Sandbox sandbox;
    const App app(sandbox);
    app.MoveTo({40, 40});
    const Target target;
    target.KeepClearOf(BoundsOf(app.Main()));
    const auto setFromOutside = [&](BYTE alpha) { SetLayeredWindowAttributes(app.Layer(), 0, alpha, LWA_ALPHA); };
    const auto stays = [&](int alpha) { return !WaitFor([&] { return app.LayerAlpha() != alpha; }, someTicks); };
    for (const int back : {5, 100}) {
        if (back == 100) {
            app.Command(ids::mnuViewProtectiveLayer);
            const HWND prompt = app.Running().AwaitWindow(formClass, L"Transparency Value");
            PostMessageW(prompt, WM_COMMAND, IDCANCEL, 0);
            app.AwaitLayerAlpha(100);
        }
        SCOPED_TRACE(back);
        BringToFront(target.Window());
        app.AwaitLayerAlpha(0);
        setFromOutside(77);
        EXPECT_TRUE(stays(77)) << "the layer is turned invisible once, opacity " << app.LayerAlpha();
        BringToFront(app.Main());
        app.AwaitLayerAlpha(back);
        setFromOutside(78);
        EXPECT_TRUE(stays(78)) << "the layer comes back once, opacity " << app.LayerAlpha();
        EXPECT_EQ(app.Focus(), app.PasswordBox());
    }

    // A slider that is held on the way back keeps the focus.
    Pointer pointer;
    Await("a press on the slider brings the keyboard to the front", [&] {
        pointer.Release();
        BringToFront(target.Window());
        app.AwaitLayerAlpha(0);
        pointer.MoveTo(CentreOf(app.Control(ids::sldTransparency)));
        pointer.Press();
        return WaitFor([&] { return app.LayerAlpha() == 100; }, Milliseconds(3000));
    });
    EXPECT_EQ(app.Focus(), app.Control(ids::sldTransparency));
    pointer.Release();
}

TEST(ProtectiveLayer, LetsNoKeyThroughBeneathDialogsAndMenus) {
    const Sandbox sandbox;
    const App app(sandbox);
    SetWindowPos(app.Main(), nullptr, 300, 300, 900, 500, SWP_NOZORDER | SWP_NOACTIVATE);
    Pointer pointer;
    app.Command(ids::mnuOptionsSaveSettingsInINI);
    const HWND question = app.AwaitDialog(L"Save the change?");
    BringToFront(question);
    const RECT keys = BoundsOf(app.Layer());
    SetWindowPos(question, nullptr, keys.left + 40, keys.bottom - 110, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Await("the question lies over the keys", [&] { return BoundsOf(question).left == keys.left + 40; });
    EXPECT_FALSE(WaitFor([&] { return app.LayerAlpha() != 5; }, someTicks))
        << "a window of our own is no other program";
    const auto isOver = [](const RECT& area, POINT place) { return PtInRect(&area, place) != FALSE; };
    const POINT text{CentreOf(question).x, BoundsOf(question).top + 50};
    ASSERT_TRUE(isOver(BoundsOf(app.Layer()), text));
    pointer.Click(text);
    for (const int key : {1, 65}) { // beside the question
        ASSERT_FALSE(isOver(BoundsOf(question), CentreOf(app.Key(key))));
        pointer.Click(app.Key(key));
    }
    App::Answer(pointer, question, IDNO); // behind the clicks in the same queue
    app.AwaitLength(0);

    // A menu item that lies over the keys: the box's own menu, opened at the bottom of the box.
    pointer.Click(app.FindKey(L"q"));
    app.AwaitLength(1);
    const RECT box = BoundsOf(app.PasswordBox());
    PostMessageW(app.PasswordBox(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(app.PasswordBox()),
                 MAKELPARAM(box.left + 20, box.bottom));
    const auto menu = [] { return FindWindowW(L"#32768", nullptr); };
    Await("the menu opens", [&] { return menu() != nullptr && IsWindowVisible(menu()); });
    const RECT items = BoundsOf(menu());
    const RECT layer = BoundsOf(app.Layer());
    const POINT last{items.left + 20, items.bottom - 12}; // Clear Password
    ASSERT_TRUE(isOver(layer, last));
    pointer.Click(last);
    app.AwaitLength(0);
    pointer.Click(app.FindKey(L"w"));
    pointer.Click(app.FindKey(L"e"));
    app.AwaitLength(2);
    EXPECT_EQ(app.Password(), L"we");
}

} // namespace
} // namespace vextrel::driver
