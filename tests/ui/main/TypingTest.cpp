#include "core/ids.h"
#include "driver/App.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

using Selection = App::Selection;

void ToggleMask(const App& app) {
    const HWND before = app.PasswordBox();
    app.Command(ids::mnuViewPasswordMask);
    Await("the other box is shown", [&] { return app.PasswordBox() != before; });
}

HWND FocusOf(const App& app) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(app.Main(), nullptr), &info) ? info.hwndFocus : nullptr;
}

TEST(Typing, ShowsAsterisksOrThePasswordAndKeepsTheHiddenBoxClean) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    const std::wstring password = L"Ab& 1?";
    app.ClickPassword(pointer, password);
    EXPECT_EQ(app.Text(ids::txtPassword), L"******");
    EXPECT_EQ(app.Text(ids::txtText), L"");
    ToggleMask(app);
    EXPECT_EQ(app.Text(ids::txtText), password);
    EXPECT_EQ(app.Text(ids::txtPassword), L"******") << "the masked box keeps its asterisks";
    app.Command(ids::toolClear);
    Await("the box is empty", [&] { return app.Text(ids::txtText).empty(); });
    app.ClickPassword(pointer, password);
    EXPECT_EQ(app.Text(ids::txtText), password);
    ToggleMask(app);
    EXPECT_EQ(app.Text(ids::txtPassword), L"******");
    EXPECT_EQ(app.Text(ids::txtText), L"") << "nothing may wait in the hidden box";
    ToggleMask(app);
    EXPECT_EQ(app.Text(ids::txtText), password);
}

TEST(Typing, ABoxThatShowsSomethingElseIsRemarkedOn) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    app.ClickPassword(pointer, L"abc");
    // Where room is short, the end is missing.
    const auto says = [&](const wchar_t* start) { return app.Text(ids::StatusBar1).starts_with(start); };
    Keys::Stroke('A', {VK_CONTROL});
    Keys::Stroke(VK_BACK);
    Await("the box is not the password", [&] { return says(L"The box does"); });
    ToggleMask(app);
    EXPECT_EQ(app.Text(ids::txtText), L"abc");
    Await("it is again", [&] { return says(L"Standard"); });
    Keys::Stroke(VK_RETURN);
    Await("a second line", [&] { return says(L"Only the first"); });
    Keys::Stroke(VK_BACK);
    Await("one line again", [&] { return says(L"Standard"); });
}

TEST(Typing, TheKeyboardAndTheBoxsMenuClearEverything) {
    const Sandbox sandbox;
    const App app(sandbox);
    for (const bool masked : {true, false}) {
        for (const bool byMenu : {false, true}) {
            const HWND box = app.PasswordBox();
            Keys::Type(L"abc");
            Await("it is there", [&] { return TextOf(box).size() == 3; });
            Keys::Stroke(VK_HOME);
            if (byMenu) {
                Keys::Stroke(VK_F10, {VK_SHIFT});
                Await("the menu", [&] { return app.Running().Window(L"#32768") != nullptr; });
                Keys::Stroke('W');
            } else {
                Keys::Stroke(VK_DELETE, {VK_CONTROL});
            }
            Await("it is gone", [&] { return TextOf(box).empty(); });
            ToggleMask(app);
            EXPECT_EQ(TextOf(app.PasswordBox()), L"") << "the password itself";
            ToggleMask(app);
        }
        if (masked)
            ToggleMask(app);
    }
}

TEST(Typing, TabAndEscapeLeaveTheBoxesAsTheyAre) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    app.ClickPassword(pointer, L"abcd");
    for (const bool masked : {true, false}) {
        SCOPED_TRACE(masked ? "masked" : "in clear");
        const HWND box = app.PasswordBox();
        const std::wstring text = TextOf(box);
        Await("the box has the focus", [&] { return FocusOf(app) == box; });
        Ask(box, EM_SETSEL, 1, 3);
        Keys::Stroke(VK_ESCAPE);
        Keys::Stroke(VK_TAB);
        Await("the focus goes on", [&] { return FocusOf(app) != box; });
        const HWND next = FocusOf(app);
        EXPECT_EQ(GetParent(next), app.Main());
        Keys::Stroke(VK_TAB, {VK_SHIFT});
        Await("the focus comes back", [&] { return FocusOf(app) == box; });
        EXPECT_EQ(App::SelectionOf(box), (Selection{1, 3}));
        EXPECT_EQ(TextOf(box), text);
        ToggleMask(app);
    }
    EXPECT_EQ(app.Close(), 0U);
}

} // namespace
} // namespace vextrel::driver
