// Every key by the real pointer: through the layer, and directly where the layer lets clicks fall through.

#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

// All keys in the order of their buttons: Backspace takes "=" back, Caps Lock stands before "a", each Shift before one
// key only ("z" and the space bar), and the key beside Enter's row comes last.
constexpr const wchar_t* everyKey = L"`1234567890-\tqwertyuiop[]\r\nASDFGHJKL:\"zXCVBNM<>? |";
constexpr int shownKeys = 54;

std::vector<int> ShownKeys(const App& app) {
    std::vector<int> keys;
    for (int key = 1; key <= 65; ++key) {
        if (app.Visible(ids::firstKey + key - 1)) {
            keys.push_back(key);
        }
    }
    return keys;
}

TEST(KeysByPointer, EachDoesWhatItSaysThroughTheLayerAndDirectly) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    app.Mask(false);
    ASSERT_EQ(ShownKeys(app).size(), static_cast<std::size_t>(shownKeys));
    for (const int key : ShownKeys(app)) {
        pointer.Click(app.Key(key));
    }
    app.AwaitShown(everyKey);

    pointer.Click(app.Key(30)); // Caps Lock off
    Await("Caps Lock is off", [&] { return app.FindKey(L"q") != nullptr; });
    app.Restart(false);
    const Target target;
    target.KeepClearOf(BoundsOf(app.Main()));
    for (const int key : ShownKeys(app)) {
        SetForegroundWindow(target.Window());
        app.AwaitLayerAlpha(0);
        const std::wstring before = app.Shown();
        pointer.MoveTo(CentreOf(app.Key(key)));
        pointer.Press();
        if (key % 2 == 0) { // slow: the layer comes back while the button is down
            app.AwaitLayerAlpha(5);
            EXPECT_TRUE(app.IsPushed(key)) << key;
            EXPECT_EQ(app.Gui().hwndCapture, app.Main()) << "the system tells listeners who takes the mouse";
        }
        pointer.Release();
        Await("the keyboard comes to the front", [&] { return GetForegroundWindow() == app.Main(); });
        app.AwaitLayerAlpha(5);
        Await("the key comes up", [&] { return !app.IsPushed(key); });
    }
    app.AwaitShown(everyKey);
}

TEST(KeysByPointer, PressesDragsAndClicksOfEveryKind) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    app.Mask(false);
    Await("the box has the focus", [&] { return app.Focus() == app.PasswordBox(); });
    const HWND q = app.FindKey(L"q");
    const HWND w = app.FindKey(L"w");
    const auto pushed = [](HWND key) { return Ask(key, BM_GETSTATE) == BST_PUSHED; };

    // The pushed look goes along; the click goes to the key under the release.
    pointer.MoveTo(CentreOf(q));
    pointer.Press();
    Await("q is down", [&] { return pushed(q); });
    // A hand does not jump: where the layer has just come under the pointer, a single move may go unseen.
    pointer.MoveTo(CentreOf(w), 5, Milliseconds(10));
    EXPECT_TRUE(WaitFor([&] { return pushed(w) && !pushed(q); }, Milliseconds(3000)))
        << "q " << pushed(q) << ", w " << pushed(w) << ", in front " << (GetForegroundWindow() == app.Main());
    pointer.Release();
    app.AwaitShown(L"w");

    // Off the keys, the remembered key comes up and nothing is entered; the next click counts.
    for (const POINT off : {CentreOf(app.PasswordBox()), POINT{BoundsOf(app.Main()).right + 20, 10}}) {
        pointer.MoveTo(CentreOf(q));
        pointer.Press();
        Await("q is down", [&] { return pushed(q); });
        pointer.MoveTo(off);
        pointer.Release();
        Await("q is up", [&] { return !pushed(q) && !pushed(w); });
    }
    app.AwaitShown(L"w");
    app.Activate();

    // A press on a dialog that ends by it, as a file dialog does, enters nothing when it is released over a key.
    app.Command(ids::mnuHelpAbout);
    const HWND about = app.Running().AwaitWindow(formClass, L"About Vextrel");
    pointer.MoveTo(CentreOf(q));
    pointer.Press();
    Keys::Stroke(VK_ESCAPE);
    Await("the layer takes the mouse again", [&] { return !IsWindow(about) && IsWindowEnabled(app.Layer()); });
    pointer.MoveTo({CentreOf(q).x + 2, CentreOf(q).y});
    pointer.Release();
    pointer.Click(w);
    app.AwaitShown(L"ww");
    Keys::Stroke(VK_BACK);

    // Double clicks enter twice; clicks in the middle of the flash come in, and a new flash ends the older one.
    pointer.DoubleClick(CentreOf(q));
    pointer.Click(w);
    pointer.DoubleClick(CentreOf(app.FindKey(L"e")));
    pointer.DoubleClick(CentreOf(app.FindKey(L"r")));
    app.AwaitShown(L"wqqweerr");
    Await("no key stays down", [&] { return !pushed(q) && !pushed(w) && !app.IsPushed(19) && !app.IsPushed(20); });

    // Every button of the mouse, and a selection that a click replaces without the box losing the focus.
    const struct {
        DWORD down;
        DWORD up;
        DWORD which;
    } buttons[] = {{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, 0},
                   {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, 0},
                   {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP, 0},
                   {MOUSEEVENTF_XDOWN, MOUSEEVENTF_XUP, XBUTTON1}};
    app.Select(2, 7);
    pointer.MoveTo(CentreOf(app.FindKey(L"t")));
    std::wstring expected = L"wq";
    for (const auto& button : buttons) {
        Pointer::SendButton(button.down, button.which);
        Pointer::SendButton(button.up, button.which);
        app.AwaitShown((expected += L"t") + L"r");
    }
    EXPECT_EQ(App::SelectionOf(app.PasswordBox()), (App::Selection{6, 6}));
    EXPECT_EQ(app.Focus(), app.PasswordBox());
    EXPECT_EQ(GetForegroundWindow(), app.Main());
    EXPECT_EQ(app.Password(), L"wqttttr");

    // The keys themselves, while another program is in front, go by the release as well.
    const Target target;
    target.KeepClearOf(BoundsOf(app.Main()));
    BringToFront(target.Window());
    app.AwaitLayerAlpha(0);
    pointer.MoveTo(CentreOf(q));
    pointer.Press();
    Await("q is down", [&] { return pushed(q); });
    pointer.MoveTo(CentreOf(w), 5, Milliseconds(10));
    EXPECT_TRUE(WaitFor([&] { return pushed(w) && !pushed(q); }, Milliseconds(3000)));
    pointer.Release();
    app.AwaitShown(L"wqttttwr");
}

} // namespace
} // namespace vextrel::driver
