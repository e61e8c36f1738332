#include "core/KeyTable.h"
#include "core/ids.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

struct Injection : testing::Test {
    void Pull(POINT to) {
        app.Activate();
        pointer.Pull(CentreOf(app.PasswordBox()), to);
        Await("the drag hint is shown", [&] { return app.Hint() != nullptr; });
    }
    /// Drops and waits for the end. The rounds before the characters take as long as a busy machine makes them.
    void Drop(POINT to, const std::wstring& notice = L"Posted") {
        Pull(to);
        pointer.Release();
        const auto ended = [&] { return !app.Hint() && app.Text(ids::StatusBar1) == notice; };
        Await("the end: " + Narrow(notice), ended, limit);
    }
    void ExpectTyped(const std::wstring& text) {
        static_cast<void>(WaitFor([&] { return target.TypedCharacters().size() >= text.size(); }, limit));
        EXPECT_EQ(target.TypedCharacters(), text);
    }

    static constexpr Milliseconds limit{60000};
    Stage stage{"Drag Drop Mode=Inject\r\n", {}};
    const App& app = *stage.app;
    const Target& target = stage.target;
    Pointer& pointer = stage.pointer;
    const POINT field = CentreOf(target.Field(target::editField));
};

TEST_F(Injection, BringsEveryCharacterOfTheCodePageInOrder) {
    if (GetACP() != 1252)
        GTEST_SKIP() << "the system's code page is another";
    std::wstring password = L"\u20AC\u0152\u017E\u2122"; // of those that Unicode has elsewhere
    for (wchar_t unit = L' '; unit < 256; ++unit)
        if (unit < 127 || unit >= 160)
            password += unit;
    SetClipboard(password);
    Keys::Stroke('V', {VK_CONTROL});
    app.AwaitLength(password.size());
    Drop(field);
    ExpectTyped(password);
    app.AwaitLength(0);
    EXPECT_EQ(target.Drops(), 0);
}

TEST_F(Injection, CarriesLineBreaksAndSelectionsAndKeepsThemWhereNothingCouldBeInjected) {
    // The tab key writes into the plain box alone, until the mask goes on.
    app.Mask(false);
    app.ClickPassword(pointer, L"a");
    pointer.Click(app.Key(keys::tab));
    app.AwaitShown(L"a\t");
    app.ClickPassword(pointer, L"b");
    app.Mask(true);
    Drop(field);
    ExpectTyped(L"a\r\nb");
    app.AwaitLength(0);
    app.Activate();
    app.ClickPassword(pointer, L"werty");
    Pull(field);
    Keys::Stroke(VK_ESCAPE);
    app.AwaitEndOfDrag();
    pointer.Release();
    EXPECT_EQ(GetForegroundWindow(), app.Main());
    app.Select(1, 4);
    Drop(CentreOf(app.FindKey(L"b")), L"Nothing injected here");
    app.Select(1, 4);
    Drop(field);
    ExpectTyped(L"a\r\nbert");
    EXPECT_EQ(app.Selected(), (App::Selection{1, 1}));
    EXPECT_EQ(app.Password(), L"wy");
    // Who takes a drop gets nothing by it, and the characters as everybody does.
    Drop(CentreOf(target.Field(target::dropField)));
    Await("the drop and the characters", [&] { return target.Drops() == 1 && target.Text() == L"wy"; });
    app.AwaitLength(0);
}

TEST_F(Injection, DoesNotWaitForATargetThatHangs) {
    for (const int id : {target::editField, target::dropField}) { // OLE knows the second one, and would ask it
        SCOPED_TRACE(id);
        app.Activate();
        app.ClickPassword(pointer, L"wert");
        const POINT place = CentreOf(target.Field(id));
        SuspendThread(target.Running().MainThread());
        Drop(place);
        app.AwaitLength(0);
        ResumeThread(target.Running().MainThread());
        Await("the target is awake", [&] { return !IsHungAppWindow(target.Window()); });
        Await("it takes what was posted", [&] { return target.Text(id) == L"wert"; });
    }
    EXPECT_EQ(target.Entries(), 0);
}

TEST_F(Injection, IsFollowedByWhatWasAskedForMeanwhile) {
    app.ClickPassword(pointer, L"as");
    Pull(field);
    EXPECT_EQ(app.ToolState(ids::toolRefresh) & TBSTATE_ENABLED, 0);
    Ask(app.Main(), WM_COMMAND, ids::toolClear);
    Ask(app.Main(), WM_CLOSE);
    pointer.Release();
    ExpectTyped(L"as");
    EXPECT_EQ(app.Running().ExitCode(), 0U);
}

} // namespace
} // namespace vextrel::driver
