#include "core/ids.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

using Selection = App::Selection;

/// Just behind the left edge of a character; behind the last one, its right edge.
POINT PlaceOf(const App& app, int character) {
    const HWND box = app.PasswordBox();
    const bool behind = character > 0 && character >= Ask(box, WM_GETTEXTLENGTH);
    const auto packed = Ask(box, EM_POSFROMCHAR, static_cast<WPARAM>(behind ? character - 1 : character));
    POINT place{static_cast<short>(LOWORD(packed)) + (behind ? 30 : 2), static_cast<short>(HIWORD(packed)) + 6};
    ClientToScreen(box, &place);
    return place;
}

TEST(Drag, HandsOverWhatIsSelectedAndKeepsTheRest) {
    Stage stage;
    const App& app = *stage.app;
    app.ClickPassword(stage.pointer, L"abcd");
    enum End { Dropped, NotTaken, Escaped };
    const struct {
        bool masked, keep;
        Selection selected;
        End end;
        const wchar_t *arrives, *left;
    } cases[] = {
        // Each goes on with what the one before left.
        {false, true, {1, 3}, Dropped, L"bc", L"abcd"}, {true, true, {4, 4}, Dropped, L"abcd", L"abcd"},
        {false, false, {1, 2}, NotTaken, L"", L"abcd"}, {true, false, {1, 2}, Escaped, L"", L"abcd"},
        {true, false, {1, 3}, Dropped, L"bc", L"ad"},   {false, false, {0, 1}, Dropped, L"a", L"d"},
        {true, false, {1, 1}, Dropped, L"d", L""},
    };
    constexpr const wchar_t* status[] = {L"Dropped", L"Not taken here: try Injection Mode", L"Standard"};
    for (const auto& c : cases) {
        SCOPED_TRACE("case " + std::to_string(&c - cases));
        app.Mask(c.masked);
        app.Switch(ids::mnuOptionsKeepPasswordAfterDragDrop, c.keep);
        app.Select(c.selected.start, c.selected.end);
        const POINT from = PlaceOf(app, c.selected.start);
        if (c.end == Dropped) {
            EXPECT_EQ(stage.target.TakeDrag(stage.pointer, from), c.arrives);
        } else if (c.end == NotTaken) {
            stage.pointer.Drag(from, CentreOf(stage.target.Field(target::editField)));
        } else {
            stage.target.PullHere(stage.pointer, from);
            Keys::Stroke(VK_ESCAPE);
            app.AwaitEndOfDrag();
            stage.pointer.Release();
        }
        app.AwaitEndOfDrag();
        app.AwaitStatus(status[c.end]);
        const int caret = std::min(c.selected.start, static_cast<int>(app.Shown().size()));
        EXPECT_EQ(app.Selected(), (Selection{caret, caret}));
        EXPECT_EQ(app.Password(), c.left);
    }
}

TEST(Drag, SelectsUntilThePointerHasLeftTheBoxThenShowsItsHint) {
    Stage stage("View Password Mask=False\r\nKeep Password after Drag Drop=True\r\n");
    const App& app = *stage.app;
    Pointer& pointer = stage.pointer;
    app.ClickPassword(pointer, L"abcd");
    pointer.Pull(PlaceOf(app, 0), PlaceOf(app, 4));
    Await("all is selected", [&] { return app.Selected() == Selection{0, 4}; });
    EXPECT_EQ(app.Hint(), nullptr);
    // Pulled on out of the box, the press carries what was selected before it: nothing, that is, the whole password.
    pointer.MoveTo(CentreOf(stage.target.Field(target::dropField)), 12, Milliseconds(40));
    Await("the hint is there", [&] { return app.Hint() != nullptr; });
    constexpr LONG_PTR inNobodysWay = WS_EX_LAYERED | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE | WS_EX_TOPMOST;
    EXPECT_EQ(GetWindowLongPtrW(app.Hint(), GWL_EXSTYLE) & inNobodysWay, inNobodysWay);
    pointer.Release();
    Await("the drop arrives", [&] { return stage.target.Drops() == 1; });
    EXPECT_EQ(stage.target.Text(), L"abcd");
    app.AwaitEndOfDrag();

    // A close request waits for the end of the drag.
    app.Select(1, 3);
    stage.target.PullHere(pointer, PlaceOf(app, 4));
    Ask(app.Main(), WM_CLOSE);
    EXPECT_NE(app.Hint(), nullptr);
    pointer.Release();
    EXPECT_EQ(app.Running().ExitCode(), 0U);
    EXPECT_EQ(stage.target.Text(), L"bc");
}

} // namespace
} // namespace vextrel::driver
