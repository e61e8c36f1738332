// The user's ways with everything at its default: the program answers no other program, so that what has arrived is
// seen only where the password is dropped.
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

#include <oleacc.h>
#include <tpcshrd.h>

#include <optional>

namespace vextrel::driver {
namespace {

class ByDefault : public testing::Test {
  protected:
    ByDefault()
        : sandbox_(Sandbox::Others::Refused) {
        sandbox_.SetSetting(L"Keep Password after Drag Drop", L"True");
        app_.emplace(sandbox_);
        field_.KeepClearOf(BoundsOf(app_->Main()));
        app_->Activate();
    }

    static void Press(std::initializer_list<int> keys) {
        for (const int key : keys)
            Keys::Stroke(static_cast<WORD>(key));
    }

    /// What a drag brings.
    std::wstring Password() {
        const int drops = field_.Drops();
        app_->Activate();
        field_.PullHere(pointer_, CentreOf(app_->PasswordBox()));
        pointer_.Release();
        Await("the drop arrives", [&] { return field_.Drops() > drops; });
        return field_.Text();
    }

    const Target field_{L"--topmost"};
    Sandbox sandbox_;
    std::optional<App> app_;
    Pointer pointer_;
};

TEST_F(ByDefault, TypedClickedAndPastedCharactersArrive) {
    Keys::Stroke('A');
    Keys::Stroke('B', {VK_SHIFT});
    Keys::Type(L"c\u20AC");
    EXPECT_EQ(Password(), L"aBc\u20AC");
    Keys::Stroke(VK_BACK);
    SetClipboard(L"zz");
    Keys::Stroke('V', {VK_CONTROL});
    EXPECT_EQ(Password(), L"aBczz");
    for (const wchar_t* caption : {L"q", L"7"})
        pointer_.Click(app_->FindKey(caption));
    EXPECT_EQ(Password(), L"aBczzq7");
    // While another program is in front, the clicks go through the layer.
    Keys::Stroke(VK_BACK);
    BringToFront(field_.Window());
    Await("the layer lets clicks through",
          [&] { return (GetWindowLongPtrW(app_->Layer(), GWL_EXSTYLE) & WS_EX_TRANSPARENT) != 0; });
    pointer_.Click(app_->FindKey(L"7"));
    EXPECT_EQ(Password(), L"aBczzq7");
    // From the context menu.
    Keys::Stroke(VK_F10, {VK_SHIFT});
    Await("the menu", [&] { return app_->Running().Window(L"#32768") != nullptr; });
    Keys::Stroke('P');
    EXPECT_EQ(Password(), L"aBczzq7zz");
}

TEST_F(ByDefault, MenusToolbarAndSlidersObeyKeysAndPointer) {
    const auto plain = [&] { return app_->Visible(ids::txtText); };
    const auto menu = [&] { return app_->Running().Window(L"#32768"); };
    Keys::Stroke('V', {VK_MENU});
    Await("the menu", [&] { return menu() != nullptr; });
    Keys::Stroke('P');
    Await("an access key shows the password", plain);
    Keys::Stroke(VK_F10);
    Press({VK_RIGHT, VK_RIGHT, VK_DOWN});
    Await("the menu", [&] { return menu() != nullptr; });
    Keys::Stroke(VK_UP); // from the first item to the last
    Keys::Stroke(VK_RETURN);
    Await("arrows and Enter hide it", [&] { return !plain(); });
    Keys::Stroke('V', {VK_MENU});
    Await("the menu", [&] { return menu() != nullptr; });
    const RECT items = BoundsOf(menu());
    pointer_.Click(POINT{(items.left + items.right) / 2, items.bottom - 12});
    Await("a click on the last item shows it", plain);

    const auto hovers = [&] { return app_->Visible(ids::lblHoverDelay); };
    const RECT tools = BoundsOf(app_->Control(ids::tbToolbar));
    pointer_.Click(POINT{tools.left + 36, tools.top + 14});
    Await("a click on the second button", hovers);
    app_->Activate();
    Press({VK_TAB, VK_RIGHT});
    Await("an arrow moves the slider", [&] { return sandbox_.Setting(L"Hover Timer Interval") == L"1100"; });
    Press({VK_TAB, VK_TAB, VK_HOME, VK_SPACE});
    Await("Space on the first button", [&] { return !hovers(); });
    const RECT slider = BoundsOf(app_->Control(ids::sldTransparency));
    pointer_.Click(POINT{slider.left + 20, (slider.top + slider.bottom) / 2});
    Await("a click moves the other", [&] {
        const std::wstring transparency = sandbox_.Setting(L"Transparency");
        return !transparency.empty() && std::stoi(transparency) < 250;
    });
}

TEST_F(ByDefault, DialogsTakeTextAndAnswers) {
    Keys::Stroke('V', {VK_MENU});
    Await("the menu", [&] { return app_->Running().Window(L"#32768") != nullptr; });
    Press({VK_DOWN, VK_RETURN}); // the layer's command
    const HWND question = app_->Running().AwaitWindow(formClass, L"Transparency Value");
    BringToFront(question);
    Keys::Type(L"77");
    Keys::Stroke(VK_RETURN);
    Await("the layer gets what was typed", [&] {
        BYTE alpha = 0;
        return GetLayeredWindowAttributes(app_->Layer(), nullptr, &alpha, nullptr) != FALSE && alpha == 77;
    });
    app_->Activate();
    Keys::Stroke('M', {VK_MENU});
    Press({VK_UP, VK_RETURN}); // hidden mouse, which asks
    App::Answer(pointer_, app_->AwaitDialog(), IDCANCEL);
    EXPECT_FALSE(app_->Visible(ids::lblHoverDelay));
}

TEST_F(ByDefault, F1AsksForTheManualWhereverTheFocusIs) {
    PostMessageW(app_->PasswordBox(), WM_KEYDOWN, VK_F1, 1); // nobody's key
    EXPECT_FALSE(WaitFor([&] { return app_->Running().Window(dialogClass) != nullptr; }, Milliseconds(500)));
    for (const int tabs : {0, 1, 2}) { // the box, a slider, the toolbar
        app_->Activate();
        for (int tab = 0; tab < tabs; ++tab)
            Keys::Stroke(VK_TAB);
        Keys::Stroke(VK_F1);
        App::Answer(pointer_, app_->AwaitDialog(), IDOK); // there is none
    }
}

TEST_F(ByDefault, RestingThePointerAndInjectingWork) {
    sandbox_.SetSetting(L"MouseMode", L"Hover Entry Mode");
    sandbox_.SetSetting(L"Hover Timer Interval", L"500");
    EXPECT_EQ(app_->Close(), 0U);
    app_.reset();
    app_.emplace(sandbox_);
    field_.KeepClearOf(BoundsOf(app_->Main()));
    app_->Activate();
    std::wstring entered;
    Await("the pointer's rest enters the key", [&] {
        pointer_.MoveTo(CentreOf(app_->FindKey(L"k")), 3, Milliseconds(20));
        static_cast<void>(WaitFor([] { return false; }, Milliseconds(800)));
        return !(entered = Password()).empty();
    });
    EXPECT_EQ(entered.find_first_not_of(L'k'), std::wstring::npos);
    Keys::Stroke('O', {VK_MENU});
    Await("the menu", [&] { return app_->Running().Window(L"#32768") != nullptr; });
    Press({VK_UP, VK_UP, VK_RETURN}); // injection mode
    Await("the choice is stored", [&] { return sandbox_.Setting(L"Drag Drop Mode") == L"Inject"; });
    pointer_.Drag(CentreOf(app_->PasswordBox()), CentreOf(field_.Field(target::editField)));
    Await("the characters arrive", [&] { return field_.TypedCharacters() == entered; });
}

TEST_F(ByDefault, ScreenReadersLearnNameAndRoleOfAKey) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    // Wine has one role for all controls.
    const auto read = [&](int id, const wchar_t* expected, int role) {
        IAccessible* object = nullptr;
        ASSERT_EQ(AccessibleObjectFromWindow(app_->Control(id), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                             reinterpret_cast<void**>(&object)),
                  S_OK);
        VARIANT self{};
        self.vt = VT_I4;
        BSTR name = nullptr;
        VARIANT found{};
        EXPECT_EQ(object->get_accName(self, &name), S_OK);
        EXPECT_EQ(object->get_accRole(self, &found), S_OK);
        EXPECT_EQ(name ? std::wstring(name) : L"", expected);
        EXPECT_TRUE(found.lVal == role || found.lVal == ROLE_SYSTEM_CLIENT) << found.lVal;
        SysFreeString(name);
        object->Release();
    };
    read(ids::firstKey + 16, L"q", ROLE_SYSTEM_PUSHBUTTON);
    read(ids::lblTransparency, L"Opacity", ROLE_SYSTEM_STATICTEXT);
    CoUninitialize();
}

TEST_F(ByDefault, ALockedOrLeftSessionClearsOnceATransferHasEnded) {
    const auto says = [&](const wchar_t* text) {
        return WaitFor([&] { return TextOf(app_->Control(ids::StatusBar1)).starts_with(text); });
    };
    Keys::Stroke('A');
    Ask(app_->Main(), WM_WTSSESSION_CHANGE, WTS_SESSION_UNLOCK);
    EXPECT_EQ(Password(), L"a");
    const int drops = field_.Drops();
    field_.PullHere(pointer_, CentreOf(app_->PasswordBox()));
    Ask(app_->Main(), WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK);
    pointer_.Release();
    Await("the drop arrives", [&] { return field_.Drops() > drops; });
    EXPECT_EQ(field_.Text(), L"a");
    EXPECT_TRUE(says(L"Cleared: the session was locked"));
    app_->Activate();
    Keys::Stroke('B');
    EXPECT_TRUE(says(L"Standard"));
    EXPECT_EQ(Password(), L"b");
    PostMessageW(app_->Main(), WM_WTSSESSION_CHANGE, WTS_REMOTE_DISCONNECT, 0);
    EXPECT_TRUE(says(L"Cleared: the session was left"));
    app_->Activate();
    Keys::Stroke('C');
    EXPECT_EQ(Password(), L"c");
}

TEST_F(ByDefault, AFingerPressesAtOnceOnKeysLayerAndBox) {
    for (const HWND window : {app_->FindKey(L"q"), app_->Layer(), app_->PasswordBox()})
        EXPECT_NE(Ask(window, WM_TABLET_QUERYSYSTEMGESTURESTATUS) & TABLET_DISABLE_PRESSANDHOLD, 0)
            << GetDlgCtrlID(window);
}

} // namespace
} // namespace vextrel::driver
