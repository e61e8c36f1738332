#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

using Selection = App::Selection;

HWND HintOf(const App& app) {
    for (const HWND window : app.Running().Windows(formClass, L""))
        if (GetDlgItem(window, ids::dragNoteHeader))
            return window;
    return nullptr;
}

void Switch(const App& app, int command, bool on) {
    if (app.Checked(command) == on)
        return;
    app.Command(command);
    Await("the option has changed", [&] { return app.Checked(command) == on; });
}

void Select(const App& app, Selection selection) {
    Ask(app.PasswordBox(), EM_SETSEL, static_cast<WPARAM>(selection.start), selection.end);
}

/// Just behind the left edge of a character; behind the last one, its right edge.
POINT PlaceOf(const App& app, int character) {
    const HWND box = app.PasswordBox();
    const bool behind = character >= Ask(box, WM_GETTEXTLENGTH);
    POINT place{2, 8};
    if (character > 0 || !behind) {
        const auto packed = Ask(box, EM_POSFROMCHAR, static_cast<WPARAM>(behind ? character - 1 : character));
        place = {static_cast<short>(LOWORD(packed)) + (behind ? 30 : 2), static_cast<short>(HIWORD(packed)) + 6};
    }
    ClientToScreen(box, &place);
    return place;
}

/// The password, whichever box shows it.
std::wstring PasswordOf(const App& app) {
    const bool masked = app.Visible(ids::txtPassword);
    Switch(app, ids::mnuViewPasswordMask, false);
    std::wstring text = app.Text(ids::txtText);
    Switch(app, ids::mnuViewPasswordMask, masked);
    return text;
}

/// Until the drag has been wound up: commands are refused before.
void AwaitEnd(const App& app) {
    Await("the hint has gone", [&] { return HintOf(app) == nullptr; });
    Await("a drag may begin again", [&] { return (app.MenuState(ids::mnuViewPasswordMask) & MF_GRAYED) == 0; });
}

void AwaitStatus(const App& app, const std::wstring& start) {
    Await("the status bar says " + Narrow(start), [&] { return app.Text(ids::StatusBar1).starts_with(start); });
}

/// Of the text in the left half of the shown box; 0 when it is empty.
int InkIn(const App& app) {
    const RECT box = BoundsOf(app.PasswordBox());
    const HDC screen = GetDC(nullptr);
    int ink = 0;
    for (int x = box.left + 30; x < (box.left + box.right) / 2; ++x)
        ink += GetPixel(screen, x, (box.top + box.bottom) / 2) != GetPixel(screen, box.right - 6, box.top + 5) ? 1 : 0;
    ReleaseDC(nullptr, screen);
    return ink;
}

TEST(Drag, IsWhatBoxAndStatusBarInviteTo) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    const auto pointerAt = [&](POINT place) {
        pointer.MoveTo(place);
        return SettledPointer();
    };
    const POINT text = PlaceOf(app, 0);
    AwaitStatus(app, L"Click the keys to begin");
    Await("the empty box says what it is for", [&] { return InkIn(app) > 20; });
    const HCURSOR beam = pointerAt(text);
    app.ClickPassword(pointer, L"ab");
    EXPECT_EQ(InkIn(app), 0);
    AwaitStatus(app, L"Standard");
    const HCURSOR drags = pointerAt(text);
    EXPECT_NE(drags, beam);
    Switch(app, ids::mnuViewPasswordMask, false);
    for (const auto& [selected, expected] : {std::pair{Selection{1, 2}, beam}, {Selection{0, 1}, drags}}) {
        Select(app, selected);
        pointerAt(CentreOf(app.FindKey(L"g")));
        EXPECT_EQ(pointerAt(text), expected) << selected.start;
    }
    app.Command(ids::toolClear);
    Switch(app, ids::mnuViewPasswordMask, true);
    Await("the box is empty again", [&] { return InkIn(app) > 20; });
}

TEST(Drag, HandsOverWhatIsSelectedAndKeepsTheRest) {
    const Sandbox sandbox;
    const App app(sandbox);
    app.MoveTo({100, 330}); // below the row of targets
    const Target atEntry(L"--read=entry --at=0,0");
    const Target atDrop(L"--read=drop --at=480,0");
    const Target later(L"--read=later --at=960,0");
    const Target laterAnsi(L"--read=later --ansi --at=1440,0");
    app.Activate();
    const struct {
        const Target& target;
        bool masked;
        bool keep;
        Selection selected;
        const wchar_t* arrives;
        const wchar_t* left;
        int caret;
    } cases[] = {
        // Each goes on with what the one before left. Who is merely dragged across gets no characters.
        {atEntry, true, true, {4, 4}, L"", L"abcd", 4},   {laterAnsi, true, true, {1, 3}, L"bc", L"abcd", 1},
        {atDrop, false, true, {1, 3}, L"bc", L"abcd", 1}, {atDrop, true, false, {1, 3}, L"bc", L"ad", 1},
        {atDrop, false, false, {0, 1}, L"a", L"d", 0},    {later, true, false, {1, 1}, L"d", L"", 0},
    };
    Pointer pointer;
    app.ClickPassword(pointer, L"abcd");
    for (const auto& c : cases) {
        SCOPED_TRACE("case " + std::to_string(&c - cases));
        Switch(app, ids::mnuViewPasswordMask, c.masked);
        Switch(app, ids::mnuOptionsKeepPasswordAfterDragDrop, c.keep);
        Select(app, c.selected);
        const int drops = c.target.Drops();
        c.target.PullHere(pointer, PlaceOf(app, c.selected.start));
        pointer.Release();
        Await("the drop arrives in case " + std::to_string(&c - cases), [&] { return c.target.Drops() == drops + 1; });
        AwaitEnd(app);
        AwaitStatus(app, L"Dropped");
        c.target.ReadNow();
        EXPECT_EQ(c.target.Text(), c.arrives);
        EXPECT_EQ(TextOf(app.PasswordBox()), c.masked ? std::wstring(std::wcslen(c.left), L'*') : c.left);
        EXPECT_EQ(App::SelectionOf(app.PasswordBox()), (Selection{c.caret, c.caret}));
        EXPECT_EQ(PasswordOf(app), c.left);
    }
}

TEST(Drag, TakesNothingAwayWhenNothingIsHandedOver) {
    const Sandbox sandbox;
    const App app(sandbox);
    const Target target(L"--refuse");
    target.KeepClearOf(BoundsOf(app.Main()));
    app.Activate();
    Pointer pointer;
    app.ClickPassword(pointer, L"abc");
    for (const bool escape : {false, true}) {
        for (const bool masked : {true, false}) {
            SCOPED_TRACE(std::string(escape ? "Escape" : "refused") + (masked ? ", masked" : ", in clear"));
            Switch(app, ids::mnuViewPasswordMask, masked);
            Select(app, {1, 2});
            target.PullHere(pointer, PlaceOf(app, 1));
            if (escape)
                Keys::Stroke(VK_ESCAPE);
            else
                pointer.Release();
            AwaitEnd(app);
            if (escape)
                pointer.Release();
            AwaitStatus(app, escape ? L"Standard" : L"Not taken here: try Injection Mode");
            EXPECT_EQ(App::SelectionOf(app.PasswordBox()), (Selection{1, 1}));
            EXPECT_EQ(PasswordOf(app), L"abc");
        }
    }
    EXPECT_EQ(target.Text(), L"");

    // Faster than the program: the button is up again, and the pointer anywhere, when it learns of the pull.
    SuspendThread(app.Running().MainThread());
    for (const auto& [message, x] :
         {std::pair{UINT{WM_LBUTTONDOWN}, 5}, {UINT{WM_MOUSEMOVE}, -500}, {UINT{WM_LBUTTONUP}, -500}})
        PostMessageW(app.PasswordBox(), message, message == WM_MOUSEMOVE ? MK_LBUTTON : 0, MAKELPARAM(x, 5));
    ResumeThread(app.Running().MainThread());
    EXPECT_FALSE(WaitFor([&] { return HintOf(app) != nullptr; }, Milliseconds(500))) << "a drag began";
}

TEST(Drag, SelectsTextUntilThePointerHasLeftTheBox) {
    const Sandbox sandbox;
    const App app(sandbox);
    const Target target;
    target.KeepClearOf(BoundsOf(app.Main()));
    app.Activate();
    Pointer pointer;
    app.ClickPassword(pointer, L"abcd");
    Switch(app, ids::mnuViewPasswordMask, false);
    Switch(app, ids::mnuOptionsKeepPasswordAfterDragDrop, true);
    const POINT field = CentreOf(target.Field(target::dropField));

    Select(app, {4, 4});
    pointer.Pull(PlaceOf(app, 0), PlaceOf(app, 4));
    Await("all is selected", [&] { return App::SelectionOf(app.PasswordBox()) == (Selection{0, 4}); });
    EXPECT_EQ(HintOf(app), nullptr);
    // Pulled on out of the box, the press carries what was selected before it: nothing, that is, the whole password.
    pointer.MoveTo(field, 12, Milliseconds(40));
    Await("the hint is there", [&] { return HintOf(app) != nullptr; });
    EXPECT_EQ(App::SelectionOf(app.PasswordBox()), (Selection{4, 4}));
    pointer.Release();
    Await("the drop arrives", [&] { return target.Drops() == 1; });
    AwaitEnd(app);
    EXPECT_EQ(target.Text(), L"abcd");

    Select(app, {1, 3});
    target.PullHere(pointer, PlaceOf(app, 4));
    pointer.Release();
    Await("the next drop arrives", [&] { return target.Drops() == 2; });
    AwaitEnd(app);
    EXPECT_EQ(target.Text(), L"bc");

    Select(app, {1, 3});
    pointer.Click(PlaceOf(app, 2));
    Await("a click on the selection places the caret", [&] {
        return App::SelectionOf(app.PasswordBox()) == (Selection{2, 2});
    });
    EXPECT_EQ(target.Drops(), 2);
}

TEST(Drag, ShowsAHintThatIsInNobodysWay) {
    constexpr const wchar_t* keepPressed =
        L"Keep the mouse pressed while you drag the password, then drop the password onto the destination control.";
    const std::wstring noDrop = L"\r\nThe 'no drop' icon may display - that's okay,"
                                L"\r\nVextrel will still try to inject the data.";
    const Sandbox sandbox;
    const App app(sandbox);
    const Target target(L"--read=later");
    target.KeepClearOf(BoundsOf(app.Main()));
    app.Activate();
    Pointer pointer;
    app.ClickPassword(pointer, L"ab");
    Switch(app, ids::mnuOptionsKeepPasswordAfterDragDrop, true);
    for (const bool inject : {false, true}) {
        SCOPED_TRACE(inject ? "injection" : "drag and drop");
        Switch(app, inject ? ids::mnuOptionsInjectMode : ids::mnuOptionsDragDrop, true);
        target.PullHere(pointer, CentreOf(app.PasswordBox()));
        const HWND hint = HintOf(app);
        EXPECT_EQ(TextOf(GetDlgItem(hint, ids::dragNoteHeader)),
                  inject ? L"Vextrel Injection mode:" : L"Vextrel Drag and Drop mode:");
        EXPECT_EQ(TextOf(GetDlgItem(hint, ids::dragNoteText)), keepPressed + (inject ? noDrop : std::wstring()));
        constexpr LONG_PTR styles = WS_EX_LAYERED | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE | WS_EX_TOPMOST;
        EXPECT_EQ(GetWindowLongPtrW(hint, GWL_EXSTYLE) & styles, styles);
        EXPECT_EQ(GetForegroundWindow(), app.Main());
        Await("the hint follows the pointer", [&] {
            const POINT pointerNow = Pointer::Place();
            const RECT bounds = BoundsOf(hint);
            const auto distance = static_cast<LONG>(GetDpiForWindow(hint) * 250 / 1440);
            return std::abs(bounds.left - pointerNow.x - distance) <= 1 &&
                   std::abs(bounds.top - pointerNow.y - distance) <= 1;
        });
        pointer.Release();
        AwaitEnd(app);
        EXPECT_FALSE(IsWindow(hint));
        if (inject)
            Await("the characters are injected", [&] { return target.Text().find(L"ab") != std::wstring::npos; });
        target.ReadNow();
        EXPECT_EQ(target.Text(), inject ? L"" : L"ab") << "what the dropped data holds";
    }
}

TEST(Drag, CarriesOutACloseRequestWhenItIsOver) {
    const Sandbox sandbox;
    const App app(sandbox);
    const Target target;
    target.KeepClearOf(BoundsOf(app.Main()));
    app.Activate();
    Pointer pointer;
    app.ClickPassword(pointer, L"ab");
    target.PullHere(pointer, CentreOf(app.PasswordBox()));
    Ask(app.Main(), WM_CLOSE);
    EXPECT_TRUE(app.Running().Runs());
    EXPECT_NE(HintOf(app), nullptr);
    pointer.Release();
    Await("the drop arrives", [&] { return target.Drops() == 1; });
    EXPECT_EQ(target.Text(), L"ab");
    EXPECT_EQ(app.Running().ExitCode(), 0U);
}

} // namespace
} // namespace vextrel::driver
