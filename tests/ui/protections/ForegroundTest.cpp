// What the layer does when other windows are in front.

#include "driver/Stage.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

/// Several ticks of the watch, for something that must not happen.
constexpr Milliseconds someTicks{300};

TEST(ProtectiveLayer, TurnsInvisibleOnceWhileAnotherProgramIsInFront) {
    const Stage stage({}, {});
    const App& app = *stage.app;
    const auto staysAsSetFromOutside = [&](BYTE alpha) {
        SetLayeredWindowAttributes(app.Layer(), 0, alpha, LWA_ALPHA);
        return !WaitFor([&] { return app.LayerAlpha() != alpha; }, someTicks);
    };
    for (const int back : {5, 100}) {
        SCOPED_TRACE(back);
        if (back == 100) {
            app.Command(ids::mnuViewProtectiveLayer);
            app.Dismiss(app.AwaitForm(L"Transparency Value"), IDCANCEL);
        }
        BringToFront(stage.target.Window());
        app.AwaitLayerAlpha(0);
        EXPECT_TRUE(staysAsSetFromOutside(77));
        app.Activate();
        app.AwaitLayerAlpha(back);
        EXPECT_TRUE(staysAsSetFromOutside(78));
        EXPECT_EQ(app.Focus(), app.PasswordBox());
    }
}

TEST(ProtectiveLayer, LeavesTheFocusToASliderThatIsHeldOnTheWayBack) {
    Stage stage({}, {});
    const App& app = *stage.app;
    BringToFront(stage.target.Window());
    app.AwaitLayerAlpha(0);
    stage.pointer.MoveTo(CentreOf(app.Control(ids::sldTransparency)));
    stage.pointer.Press();
    app.AwaitLayerAlpha(5);
    EXPECT_EQ(app.Focus(), app.Control(ids::sldTransparency));
}

TEST(ProtectiveLayer, LetsNoKeyThroughBeneathDialogsAndMenus) {
    const Sandbox sandbox;
    const App app(sandbox);
    app.MoveTo({300, 300});
    app.Resize(900, 500);
    Pointer pointer;
    app.Command(ids::mnuOptionsSaveSettingsInINI);
    const HWND question = app.AwaitDialog(L"Save the change?");
    BringToFront(question);
    const RECT layer = BoundsOf(app.Layer());
    SetWindowPos(question, nullptr, layer.left + 40, layer.bottom - 110, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Await("the question lies over the keys", [&] { return BoundsOf(question).left == layer.left + 40; });
    EXPECT_FALSE(WaitFor([&] { return app.LayerAlpha() != 5; }, someTicks))
        << "a window of our own is no other program";
    const POINT text{CentreOf(question).x, BoundsOf(question).top + 50};
    ASSERT_TRUE(PtInRect(&layer, text));
    pointer.Click(text);
    for (const int beside : {1, 65}) {
        const RECT covered = BoundsOf(question);
        ASSERT_FALSE(PtInRect(&covered, CentreOf(app.Key(beside))));
        pointer.Click(app.Key(beside));
    }
    App::Answer(pointer, question, IDNO); // behind the clicks in the same queue
    app.AwaitLength(0);

    // A menu item that lies over the keys: the box's own menu, opened at the bottom of the box.
    pointer.Click(app.FindKey(L"q"));
    app.AwaitLength(1);
    const RECT box = BoundsOf(app.PasswordBox());
    PostMessageW(app.PasswordBox(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(app.PasswordBox()),
                 MAKELPARAM(box.left + 20, box.bottom));
    const RECT items = BoundsOf(app.AwaitMenu());
    const POINT last{items.left + 20, items.bottom - 12}; // Clear Password
    ASSERT_TRUE(PtInRect(&layer, last));
    pointer.Click(last);
    app.AwaitLength(0);
    app.ClickPassword(pointer, L"we");
    EXPECT_EQ(app.Password(), L"we");
}

} // namespace
} // namespace vextrel::driver
