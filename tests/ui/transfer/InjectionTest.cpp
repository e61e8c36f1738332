#include "core/KeyTable.h"
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

constexpr const wchar_t* ownWindowNotice = L"Nothing injected here";
constexpr const wchar_t* closedWindowNotice = L"Refused by Windows (error 1400)";

/// The rounds of the wait take as long as a busy machine makes them.
constexpr Milliseconds injectionLimit{60000};

/// Every character of code page 1252 but the control characters, of which only 9 and 127 are there, in an order in
/// which they can be one key's caption in a layout file.
std::string CodePage() {
    std::string bytes = "A\t";
    for (int code = 32; code < 256; ++code)
        bytes += static_cast<char>(code);
    return bytes;
}

std::wstring Widened(const std::string& bytes) {
    std::wstring text(bytes.size(), L'\0');
    text.resize(static_cast<std::size_t>(MultiByteToWideChar(1252, 0, bytes.data(), static_cast<int>(bytes.size()),
                                                             text.data(), static_cast<int>(text.size()))));
    return text;
}

/// The program in injection mode.
struct Injecting {
    explicit Injecting(const std::string& settings = {}) {
        sandbox.Write("[Settings]\r\nDrag Drop Mode=Inject\r\n" + settings);
        app.emplace(sandbox);
    }

    [[nodiscard]] int BoxLength() const { return static_cast<int>(Ask(app->PasswordBox(), WM_GETTEXTLENGTH)); }
    [[nodiscard]] std::wstring Notice() const { return app->Text(ids::StatusBar1); }

    void ClickKey(int key) {
        const int length = BoxLength();
        pointer.Click(app->Control(ids::firstKey + key - 1));
        Await("a key enters something", [&] { return BoxLength() > length; });
    }
    /// Starts the transfer where the password is selected, or in the box's middle.
    void Pull(POINT to) {
        BringToFront(app->Main());
        const HWND box = app->PasswordBox();
        const App::Selection selection = App::SelectionOf(box);
        POINT from = CentreOf(box);
        if (selection.start != selection.end) {
            const auto place = Ask(box, EM_POSFROMCHAR, static_cast<WPARAM>(selection.start));
            POINT first{static_cast<short>(LOWORD(place)) + 2, 0};
            ClientToScreen(box, &first);
            from.x = first.x;
        }
        pointer.Pull(from, to);
        Await("the drag hint is shown", [&] { return Hint() != nullptr; });
    }
    void Drop(POINT to) {
        Pull(to);
        pointer.Release();
        Await("the drag hint has gone", [&] { return Hint() == nullptr; });
    }
    /// The end of what runs inside the drag: a message that is refused until then is taken.
    void AwaitEnd(const std::wstring& notice) {
        Await(
            "the status bar says " + Narrow(notice), [&] { return Notice() == notice; }, injectionLimit);
    }
    [[nodiscard]] HWND Hint() const {
        for (const HWND window : app->Running().Windows(formClass))
            if (window != app->Main() && GetDlgItem(window, ids::dragNoteText))
                return window;
        return nullptr;
    }
    void SelectMiddle(int start, int length) {
        app->Activate();
        Keys::Stroke(VK_HOME);
        for (int i = 0; i < start; ++i)
            Keys::Stroke(VK_RIGHT);
        for (int i = 0; i < length; ++i)
            Keys::Stroke(VK_RIGHT, {VK_SHIFT});
        Await("the selection", [&] {
            return App::SelectionOf(app->PasswordBox()) == App::Selection{start, start + length};
        });
    }

    Sandbox sandbox;
    std::optional<App> app;
    Pointer pointer;
};

TEST(Injection, BringsEveryCharacterOfTheCodePageWhileMessagesRun) {
    if (GetACP() != 1252)
        GTEST_SKIP() << "the system's code page is another";
    const std::wstring password = Widened(CodePage());
    const Target target;
    Injecting test("Keyboard Layout=Config\r\nKeep Password after Drag Drop=True\r\n[Row 2 Lower Case]\r\nKey 1=" +
                   CodePage() + "\r\n");
    target.KeepClearOf(BoundsOf(test.app->Main()));
    test.ClickKey(keys::tab + 1);
    const int length = static_cast<int>(password.size());
    ASSERT_EQ(test.BoxLength(), length);

    test.Drop(CentreOf(target.Field(target::editField)));
    int answersDuringTheWait = 0;
    Await(
        "the first character",
        [&] {
            Ask(test.app->Main(), WM_NULL);
            const bool started = !target.TypedCharacters().empty();
            answersDuringTheWait += started ? 0 : 1;
            return started;
        },
        injectionLimit);
    EXPECT_GT(answersDuringTheWait, 1);
    Await(
        "all characters", [&] { return target.TypedCharacters().size() >= password.size(); }, injectionLimit);
    EXPECT_EQ(target.TypedCharacters(), password);
    const auto withoutControls = [](std::wstring text) {
        std::erase_if(text, [](wchar_t c) { return c < L' ' || c == 127; });
        return text;
    };
    EXPECT_EQ(withoutControls(target.Text(target::editField)), withoutControls(password));
    EXPECT_EQ(test.BoxLength(), length);
    EXPECT_EQ(App::SelectionOf(test.app->PasswordBox()), (App::Selection{length, length}));
    EXPECT_EQ(target.Drops(), 0);
}

TEST(Injection, CarriesTabsLineBreaksAndSelections) {
    const Target target;
    Injecting test("View Password Mask=False\r\n");
    target.KeepClearOf(BoundsOf(test.app->Main()));
    const POINT field = CentreOf(target.Field(target::editField));
    std::wstring typed;
    const auto injects = [&](const std::wstring& text) {
        typed += text;
        test.Drop(field);
        static_cast<void>(WaitFor([&] { return target.TypedCharacters().size() >= typed.size(); }, injectionLimit));
        ASSERT_EQ(target.TypedCharacters(), typed) << Narrow(test.Notice());
    };
    // The tab key writes into the plain box alone, until the mask goes on.
    test.app->ClickPassword(test.pointer, L"a");
    test.ClickKey(keys::tab);
    test.app->ClickPassword(test.pointer, L"b");
    test.app->Command(ids::mnuViewPasswordMask);
    Await("masked, the tab has become a line break",
          [&] { return test.app->Visible(ids::txtPassword) && test.BoxLength() == 4; });
    injects(L"a\r\nb");
    Await("the password is gone", [&] { return test.BoxLength() == 0; });

    test.app->ClickPassword(test.pointer, L"qwerty");
    test.SelectMiddle(1, 3);
    injects(L"wer");
    Await("only the selection is gone", [&] { return test.BoxLength() == 3; });
    EXPECT_EQ(App::SelectionOf(test.app->PasswordBox()), (App::Selection{1, 1}));
    injects(L"qty");

    // Nothing to inject: the field is still clicked.
    Await("the password is gone", [&] { return test.BoxLength() == 0; });
    test.Drop(field);
    Await("the target is in front", [&] { return GetForegroundWindow() == target.Window(); });
    EXPECT_EQ(target.TypedCharacters(), typed);
    test.AwaitEnd(L"Posted");
}

TEST(Injection, KeepsThePasswordWhereNothingCouldBeInjected) {
    const Target target;
    const Target closing(L"--close-on-click --at=600,40");
    Injecting test;
    test.app->ClickPassword(test.pointer, L"asdf");
    const std::wstring atRest = test.Notice();

    // The program itself: a click would enter one character more.
    test.Drop(CentreOf(test.app->FindKey(L"b")));
    test.AwaitEnd(ownWindowNotice);
    EXPECT_EQ(test.BoxLength(), 4);

    // Escape.
    target.KeepClearOf(BoundsOf(test.app->Main()));
    test.Pull(CentreOf(target.Field(target::editField)));
    Keys::Stroke(VK_ESCAPE);
    Await("the drag is over", [&] { return test.Hint() == nullptr; });
    test.pointer.Release();
    test.AwaitEnd(atRest);
    EXPECT_EQ(test.BoxLength(), 4);
    EXPECT_EQ(target.TypedCharacters(), L"");
    EXPECT_EQ(GetForegroundWindow(), test.app->Main());

    // A window that goes when it is clicked.
    closing.KeepClearOf(BoundsOf(test.app->Main()));
    test.app->Activate();
    test.Drop(CentreOf(closing.Field(target::editField)));
    test.AwaitEnd(closedWindowNotice);
    EXPECT_EQ(test.BoxLength(), 4);
    EXPECT_EQ(closing.Running().ExitCode(), 0U);
}

TEST(Injection, DoesNotWaitForATargetThatHangs) {
    // OLE knows the second field, and would ask it.
    for (const int id : {target::editField, target::dropField}) {
        SCOPED_TRACE(id);
        const Target target;
        Injecting test;
        target.KeepClearOf(BoundsOf(test.app->Main()));
        test.app->ClickPassword(test.pointer, L"qwer");
        const HWND field = target.Field(id);
        const POINT place = CentreOf(field);

        SuspendThread(target.Running().MainThread());
        test.Pull(place);
        Await("the hint follows", [&] {
            const RECT hint = BoundsOf(test.Hint());
            return hint.left > place.x && hint.left < place.x + 50 && hint.top > place.y;
        });
        Keys::Stroke(VK_ESCAPE);
        Await("the drag is over", [&] { return test.Hint() == nullptr; });
        test.pointer.Release();
        EXPECT_EQ(test.BoxLength(), 4);

        test.Drop(place);
        Await(
            "the transfer ends", [&] { return test.BoxLength() == 0; }, injectionLimit);
        test.ClickKey(keys::tab + 1); // and the next may come
        ResumeThread(target.Running().MainThread());
        Await("the target is awake", [&] { return !IsHungAppWindow(target.Window()); });
        Await("it takes what was posted", [&] { return TextOf(field) == L"qwer"; });
        EXPECT_EQ(target.Entries(), 0);
    }
}

TEST(Injection, IsFollowedByWhatWasAskedForMeanwhile) {
    const Target target;
    Injecting test("Keep Password after Drag Drop=True\r\n");
    target.KeepClearOf(BoundsOf(test.app->Main()));
    const POINT field = CentreOf(target.Field(target::editField));
    const auto isGreyed = [&] { return (test.app->MenuState(ids::mnuKeyboardLayoutEnglish) & MF_GRAYED) != 0; };
    const auto isEnabled = [&](int tool) { return (test.app->ToolState(tool) & TBSTATE_ENABLED) != 0; };
    std::wstring typed;
    for (const bool closes : {false, true}) {
        test.app->ClickPassword(test.pointer, L"as");
        test.Pull(field);
        EXPECT_TRUE(isGreyed() && !isEnabled(ids::toolRefresh) && isEnabled(ids::toolClear));
        test.pointer.Release();
        Await("the wait has begun", [&] { return test.Hint() == nullptr; });
        if (closes)
            PostMessageW(test.app->Main(), WM_CLOSE, 0, 0);
        test.app->Command(ids::toolClear);
        EXPECT_EQ(target.TypedCharacters(), typed) << "the wait is over already";
        typed += L"as";
        Await(
            "the characters", [&] { return target.TypedCharacters() == typed; }, injectionLimit);
        if (!closes)
            Await("it is cleared, and nothing looks refused",
                  [&] { return test.BoxLength() == 0 && !isGreyed() && isEnabled(ids::toolRefresh); });
    }
    EXPECT_EQ(test.app->Running().ExitCode(), 0U);
}

} // namespace
} // namespace vextrel::driver
