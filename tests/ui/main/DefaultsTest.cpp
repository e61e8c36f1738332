// The user's ways with everything at its default: the program answers no other program, so that what has arrived is
// seen only where the password is dropped.
#include "core/KeyTable.h"
#include "core/ids.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

#include <oleacc.h>

namespace vextrel::driver {
namespace {

struct ByDefault : testing::Test {
    static void Press(std::initializer_list<WORD> keys) {
        for (const WORD key : keys)
            Keys::Stroke(key);
    }

    Stage stage{"Keep Password after Drag Drop=True\r\nHover Timer Interval=500\r\n", L"--topmost",
                Sandbox::Others::Refused};
    const App& app = *stage.app;
    Pointer& pointer = stage.pointer;
};

TEST_F(ByDefault, WhatIsEnteredInWhateverWayArrives) {
    Keys::Stroke('A');
    Keys::Stroke('B', {VK_SHIFT});
    Keys::Type(L"c\u20AC");
    EXPECT_EQ(stage.Dragged(), L"aBc\u20AC");
    Keys::Stroke(VK_BACK);
    SetClipboard(L"zz");
    Keys::Stroke('V', {VK_CONTROL});
    for (const wchar_t* caption : {L"q", L"7"})
        pointer.Click(app.FindKey(caption));
    EXPECT_EQ(stage.Dragged(), L"aBczzq7");
    Keys::Stroke(VK_F10, {VK_SHIFT});
    app.AwaitMenu();
    Press({'W', VK_ESCAPE, 'D'});
    EXPECT_EQ(stage.Dragged(), L"d");
    Keys::Stroke(VK_DELETE, {VK_CONTROL});
    Keys::Type(L"ef");
    Keys::Stroke('A', {VK_CONTROL});
    Keys::Stroke(VK_BACK);
    app.AwaitStatus(L"The box does"); // not show the whole password
    EXPECT_EQ(stage.Dragged(), L"ef");
    app.Activate();
    Keys::Stroke(VK_DELETE, {VK_CONTROL});

    app.ChooseByKeys('M', {VK_DOWN, VK_RETURN}); // hover entry
    Await("hover entry", [&] { return app.Visible(ids::lblHoverDelay); });
    pointer.MoveTo(CentreOf(app.Key(keys::leftShift)), 3, Milliseconds(20));
    Await("Shift is down", [&] { return app.FindKey(L"K") != nullptr; });
    pointer.MoveTo(CentreOf(app.FindKey(L"K")), 3, Milliseconds(20));
    Await("a character lets go of it", [&] { return app.FindKey(L"k") != nullptr; });
    EXPECT_EQ(stage.Dragged(), L"K");
    app.Activate();
    app.ChooseByKeys('O', {VK_UP, VK_UP, VK_RETURN}); // injection mode
    Await("the choice is stored", [&] { return stage.sandbox.Setting(L"Drag Drop Mode") == L"Inject"; });
    pointer.Drag(CentreOf(app.PasswordBox()), CentreOf(stage.target.Field(target::editField)));
    Await("the character arrives", [&] { return stage.target.TypedCharacters() == L"K"; });
}

TEST_F(ByDefault, MenusToolbarDialogsAndScreenReadersWork) {
    app.ChooseByKeys('V', {'P'});
    Await("an access key shows the password", [&] { return !app.IsMasked(); });
    const auto hovers = [&] { return app.Visible(ids::lblHoverDelay); };
    const RECT tools = BoundsOf(app.Control(ids::tbToolbar));
    pointer.Click(POINT{tools.left + 36, tools.top + 14});
    Await("a click on the second button", hovers);
    app.Activate();
    Press({VK_TAB, VK_RIGHT});
    Await("an arrow moves the slider", [&] { return stage.sandbox.Setting(L"Hover Timer Interval") == L"600"; });
    Press({VK_TAB, VK_TAB, VK_HOME, VK_RIGHT, VK_RIGHT, VK_RIGHT, VK_SPACE});
    Await("Space presses a button", [&] { return stage.sandbox.Setting(L"Drag Drop Mode") == L"Inject"; });
    Press({VK_END, VK_LEFT, VK_LEFT, VK_RETURN});
    Await("so does Enter", [&] { return (GetWindowLongPtrW(app.Main(), GWL_EXSTYLE) & WS_EX_TOPMOST) == 0; });
    Press({VK_HOME, VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN});
    Await("Down opens the menu", [&] { return stage.sandbox.Setting(L"Hover Timer Interval") == L"500"; });
    const RECT slider = BoundsOf(app.Control(ids::sldTransparency));
    ASSERT_EQ(stage.sandbox.Setting(L"Transparency"), L"252");
    pointer.Click(POINT{slider.left + 20, (slider.top + slider.bottom) / 2});
    Await("a click moves the other", [&] { return stage.sandbox.Setting(L"Transparency") != L"252"; });

    app.Activate();
    app.ChooseByKeys('V', {VK_DOWN, VK_RETURN}); // the layer's command
    BringToFront(app.AwaitForm(L"Transparency Value"));
    Keys::Type(L"77");
    Keys::Stroke(VK_RETURN);
    app.AwaitLayerAlpha(77);
    app.Activate();
    Keys::Stroke(VK_F1);
    App::Answer(pointer, app.AwaitDialog(), IDOK); // there is no manual

    IAccessible* key = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(app.FindKey(L"q"), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                         reinterpret_cast<void**>(&key)),
              S_OK);
    VARIANT self{};
    self.vt = VT_I4;
    BSTR name = nullptr;
    EXPECT_EQ(key->get_accName(self, &name), S_OK);
    EXPECT_EQ(std::wstring(name ? name : L""), L"q");
    SysFreeString(name);
    key->Release();
}

TEST_F(ByDefault, ALockedSessionClearsOnceATransferHasEnded) {
    Keys::Stroke('A');
    stage.target.PullHere(pointer, CentreOf(app.PasswordBox()));
    Ask(app.Main(), WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK);
    pointer.Release();
    Await("the drop arrives", [&] { return stage.target.Drops() == 1; });
    EXPECT_EQ(stage.target.Text(), L"a");
    app.AwaitStatus(L"Cleared: the session was locked");
    app.Activate();
    Keys::Stroke('B');
    EXPECT_EQ(stage.Dragged(), L"b");
}

} // namespace
} // namespace vextrel::driver
