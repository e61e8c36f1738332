#include "driver/App.h"
#include "keyboard/KeyTable.h"
#include "ui/ids.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

using Selection = App::Selection;

HWND KeyOf(const App& app, int number) {
    return app.Control(ids::firstKey + number - 1);
}

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

struct Step {
    enum { Click, ToggleMask } what;
    Selection selected; ///< before the click; the caret alone where both are equal
    int key;            ///< what is clicked
    std::wstring text;  ///< of the box afterwards
    Selection caret;
};

TEST(Typing, EditsAtTheCaretOfTheRealBox) {
    constexpr int a = 31;
    constexpr int x = 44;
    const std::vector<Step> steps{
        // Masked; the password is "abcdef" at first.
        {Step::Click, {0, 0}, keys::backspace, L"******", {0, 0}},
        {Step::Click, {1, 3}, x, L"*****", {2, 2}}, // over a selection: axdef
        {Step::Click, {3, 3}, keys::backspace, L"****", {2, 2}},
        {Step::Click, {1, 1}, keys::backspace, L"***", {0, 0}},
        {Step::Click, {3, 3}, keys::tab, L"***", {3, 3}},
        {Step::Click, {2, 2}, keys::enter, L"***", {2, 2}},
        {Step::Click, {2, 3}, keys::backspace, L"**", {1, 1}}, // the password stays as it is
        {Step::ToggleMask, {0, 2}, 0, L"xef", {0, 2}},
        // In clear.
        {Step::Click, {3, 3}, keys::tab, L"xef\t", {4, 4}},
        {Step::Click, {4, 4}, keys::enter, L"xef\t\r\n", {6, 6}},
        {Step::Click, {6, 6}, keys::backspace, L"xef\t", {4, 4}},
        {Step::Click, {4, 4}, keys::enter, L"xef\t\r\n", {6, 6}},
        {Step::Click, {6, 6}, a, L"xef\t\r\na", {7, 7}},
        {Step::Click, {1, 2}, keys::backspace, L"xf\t\r\na", {0, 0}},
        {Step::Click, {1, 2}, a, L"xa\t\r\na", {2, 2}},
        // What stands before the first line break, the tab as a line break.
        {Step::ToggleMask, {1, 2}, 0, L"****", {1, 2}},
        {Step::ToggleMask, {4, 4}, 0, L"xa\r\n", {4, 4}},
        {Step::Click, {4, 4}, keys::backspace, L"xa", {2, 2}},
        {Step::Click, {2, 2}, a, L"xaa", {3, 3}},
    };
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    app.ClickPassword(pointer, L"abcdef");
    for (const Step& step : steps) {
        SCOPED_TRACE("step " + std::to_string(&step - steps.data()));
        Ask(app.PasswordBox(), EM_SETSEL, static_cast<WPARAM>(step.selected.start), step.selected.end);
        if (step.what == Step::ToggleMask) {
            ToggleMask(app);
        } else {
            pointer.Click(KeyOf(app, step.key));
        }
        const auto done = [&] {
            return TextOf(app.PasswordBox()) == step.text && App::SelectionOf(app.PasswordBox()) == step.caret;
        };
        if (!WaitFor(done, Milliseconds(4000))) {
            const Selection caret = App::SelectionOf(app.PasswordBox());
            ADD_FAILURE() << Narrow(TextOf(app.PasswordBox())) << ' ' << caret.start << ' ' << caret.end;
        }
        const bool plain = app.Visible(ids::txtText);
        EXPECT_EQ(IsWindowEnabled(KeyOf(app, keys::tab)) != FALSE, plain);
        EXPECT_EQ(IsWindowEnabled(KeyOf(app, keys::enter)) != FALSE, plain);
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
