// Entering characters by clicks, by resting the pointer and on the real keyboard, and the layer that stands guard.

#include "core/KeyTable.h"
#include "driver/Machine.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

struct Entry : testing::Test, Stage {
    Entry()
        : Stage("Hover Timer Interval=500\r\nView Password Mask=False\r\n", {}) {}
    /// The layer lets clicks through to the keys while another program is in front.
    void LayerGivesWay() const {
        BringToFront(target.Window());
        app->AwaitLayerAlpha(0);
    }
    void Press(HWND window) {
        pointer.MoveTo(CentreOf(window));
        pointer.Press();
    }
    /// At a delay of half a second.
    [[nodiscard]] bool NothingIsEntered() const {
        return !WaitFor([&, before = app->Shown()] { return app->Shown() != before; }, Milliseconds(800));
    }
};

TEST_F(Entry, ByEveryKeyThroughTheLayerAndDirectly) {
    for (const bool directly : {false, true}) {
        for (int key = 1; key <= 65; ++key) {
            if (!IsWindowVisible(app->Key(key)))
                continue;
            if (directly)
                LayerGivesWay();
            Press(app->Key(key));
            if (key % 2 == 0) { // slow: the layer comes back while the button is down
                app->AwaitLayerAlpha(5);
                Await("the key is down", [&] { return app->IsPushed(key); });
                EXPECT_EQ(app->Gui().hwndCapture, directly ? app->Main() : app->Layer()) << "is told to listeners";
            }
            pointer.Release();
            app->AwaitLayerAlpha(5);
            Await("the key is up", [&] { return !app->IsPushed(key); });
        }
        // In the buttons' order: Backspace takes "=" back, Caps Lock stands before "a", each Shift before one key.
        app->AwaitShown(L"`1234567890-\tqwertyuiop[]\r\nASDFGHJKL:\"zXCVBNM<>? |");
        pointer.Click(app->Key(keys::capsLock));
        app->Restart(false);
    }
}

TEST_F(Entry, ByPressesDragsAndClicksOfEveryKind) {
    const HWND q = app->FindKey(L"q"), w = app->FindKey(L"w"), e = app->FindKey(L"e");
    const auto pushed = [](HWND key) { return Ask(key, BM_GETSTATE) == BST_PUSHED; };
    const auto pullToW = [&] {
        Press(q);
        Await("q is down", [&] { return pushed(q); });
        pointer.MoveTo(CentreOf(w), 5, Milliseconds(10));
        EXPECT_TRUE(WaitFor([&] { return pushed(w) && !pushed(q); }));
        pointer.Release();
        Await("no key is down", [&] { return !pushed(q) && !pushed(w); });
    };
    pullToW(); // the click goes to the key under the release
    LayerGivesWay();
    pullToW();
    app->AwaitShown(L"ww");
    // A press on a dialog that ends by it, as a file dialog does, enters nothing when it is released over a key.
    app->Command(ids::mnuHelpAbout);
    const HWND about = app->AwaitForm(L"About Vextrel");
    Press(q);
    Keys::Stroke(VK_ESCAPE);
    Await("the layer takes the mouse again", [&] { return !IsWindow(about) && IsWindowEnabled(app->Layer()); });
    pointer.MoveTo({CentreOf(q).x + 2, CentreOf(q).y});
    pointer.Release();
    // Double clicks enter twice; clicks in the middle of the flash come in, and a new flash ends the older one.
    pointer.DoubleClick(CentreOf(q));
    pointer.Click(w);
    pointer.DoubleClick(CentreOf(e));
    app->AwaitShown(L"wwqqwee");
    Await("no key stays down", [&] { return !pushed(q) && !pushed(w) && !pushed(e); });
}

TEST_F(Entry, ByRestingThePointerOncePerArrival) {
    const auto entersNotBefore = [&](HWND key, const wchar_t* shown, DWORD least) {
        const DWORD start = GetTickCount();
        pointer.MoveTo(CentreOf(key));
        app->AwaitShown(shown);
        EXPECT_GE(GetTickCount() - start, least);
    };
    const HWND q = app->FindKey(L"q"), w = app->FindKey(L"w");
    app->MoveTo({40, 40});
    const POINT before = CentreOf(q);
    pointer.MoveTo({BoundsOf(app->Main()).right + 20, 500});
    app->Command(ids::mnuModeHover);
    EXPECT_TRUE(NothingIsEntered());
    app->MoveTo({40 + Pointer::Place().x - before.x, 40 + Pointer::Place().y - before.y});
    EXPECT_TRUE(NothingIsEntered()) << "it has come under the resting pointer";
    pointer.MoveTo({Pointer::Place().x + 3, Pointer::Place().y});
    app->AwaitShown(L"q");
    pointer.MoveTo({BoundsOf(app->Layer()).left + 3, BoundsOf(app->Layer()).bottom - 3}); // beside the space bar
    pointer.MoveTo(CentreOf(q));
    EXPECT_TRUE(NothingIsEntered()) << "it is still the same key";
    entersNotBefore(w, L"qw", 450);
    app->Command(ids::hoverDelayOneAndAHalfSeconds);
    entersNotBefore(app->FindKey(L"r"), L"qwr", 1400);
    pointer.Click(app->FindKey(L"t"));
    app->AwaitShown(L"qwrt");
    app->Command(ids::hoverDelayHalfSecond);
    EXPECT_TRUE(NothingIsEntered()) << "the click was the entry";
    pointer.MoveTo(CentreOf(app->Key(keys::leftShift)));
    Await("Shift is down", [&] { return TextOf(q) == L"Q"; });
    entersNotBefore(q, L"qwrtQ", 450);
}

TEST_F(Entry, OnTheRealKeyboardInBothViews) {
    if (!HasAmericanKeyboard() || !SpeaksEnglish())
        GTEST_SKIP() << "the keyboard is not American, or Windows' own words are not English";
    using Stroke = std::pair<WORD, WORD>; // a key and what is held
    constexpr Stroke paste{'V', VK_CONTROL}, toEnd{VK_END, 0};
    // Each starts with "abcd" and a selection, and ends with the End key and a character that no key has.
    const struct {
        int start, end;
        std::vector<Stroke> strokes;
        const wchar_t *masked, *plain;
    } rows[] = {
        {1, 2, {paste}, L"axYZcd", L"axYZcd"},
        {2, 4, {{VK_DELETE, 0}, {VK_INSERT, VK_SHIFT}}, L"abxYZ", L"abxYZ"},
        {0, 4, {{VK_APPS, 0}, {'P', 0}}, L"xYZ", L"xYZ"},
        // The clipboard gets nothing from the masked box.
        {1, 3, {{'C', VK_CONTROL}, toEnd, paste}, L"abcdxYZ", L"abcdbc"},
        {1, 3, {{'X', VK_CONTROL}, toEnd, paste}, L"abcdxYZ", L"adbc"},
        {1, 3, {{VK_DELETE, VK_SHIFT}, toEnd, paste}, L"adxYZ", L"adbc"},
    };
    for (const bool masked : {true, false}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << "row " << &row - rows << (masked ? ", masked" : ", plain"));
            SetClipboard(masked ? L"x\tY\r\n\x01Z" : L"xYZ");
            app->Restart(masked);
            Keys::Type(L"abcd");
            app->AwaitLength(4);
            app->Select(row.start, row.end);
            for (const auto& [key, held] : row.strokes) {
                if (held != 0)
                    Keys::Stroke(key, {held});
                else
                    Keys::Stroke(key);
                if (key == VK_APPS)
                    app->AwaitMenu();
            }
            Keys::Stroke(VK_END);
            Keys::Type(L"\u20AC");
            const std::wstring password = (masked ? row.masked : row.plain) + std::wstring(L"\u20AC");
            const std::wstring shown = masked ? std::wstring(password.size(), L'*') : password;
            // As many asterisks may have stood there before; the caret did not stand behind them.
            const int end = static_cast<int>(shown.size());
            EXPECT_TRUE(WaitFor([&] { return app->Shown() == shown && app->Selected() == App::Selection{end, end}; }));
            EXPECT_EQ(app->Password(), password);
        }
    }
}

TEST_F(Entry, GoesByCaptionsThatFollowShiftAndCapsLock) {
    // What becomes of the keys elsewhere shows on the way back; a click of Shift on screen stays.
    const std::pair<std::function<void()>, const wchar_t*> steps[] = {
        {[&] { pointer.Click(app->Key(keys::leftShift)); }, L"Q"},
        {[] { Keys::Down(VK_LSHIFT); }, L"Q"},
        {[] { Keys::Up(VK_LSHIFT); }, L"q"},
        {[] { Keys::Down(VK_RSHIFT); }, L"Q"},
        {[&] { LayerGivesWay(), Keys::Up(VK_RSHIFT); }, L"q"},
        {[] { Keys::Stroke(VK_CAPITAL); }, L"Q"},
        {[&] { LayerGivesWay(), Keys::Stroke(VK_CAPITAL); }, L"q"},
        {[] { Keys::Down(VK_MENU), Keys::Down(VK_SHIFT); }, L"Q"},
        {[] { Keys::Up(VK_SHIFT), Keys::Up(VK_MENU); }, L"q"},
    };
    for (const auto& step : steps) {
        step.first();
        app->Activate();
        EXPECT_TRUE(WaitFor([&] { return app->FindKey(step.second) != nullptr; })) << "step " << &step - steps;
    }
}

TEST_F(Entry, HasALayerThatTurnsInvisibleWhileAnotherProgramIsInFront) {
    const HWND slider = app->Control(ids::sldTransparency);
    LayerGivesWay();
    Press(slider);
    app->AwaitLayerAlpha(5);
    EXPECT_EQ(app->Focus(), slider) << "held on the way back";
    pointer.Release();
    app->Command(ids::mnuViewProtectiveLayer);
    app->AwaitLayerAlpha(100);
    app->Dismiss(app->AwaitForm(L"Transparency Value"), IDCANCEL);
    app->AwaitLayerAlpha(0);
    LayerGivesWay();
    app->Activate();
    app->AwaitLayerAlpha(100);
    EXPECT_EQ(app->Focus(), app->PasswordBox());
}

TEST_F(Entry, IsByNoKeyBeneathADialogOrAMenu) {
    app->MoveTo({300, 300});
    app->Resize(900, 500);
    app->Command(ids::mnuOptionsSaveSettingsInINI);
    const HWND question = app->AwaitDialog();
    const RECT layer = BoundsOf(app->Layer());
    SetWindowPos(question, nullptr, layer.left + 40, layer.bottom - 110, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    Await("the question lies over the keys", [&] { return BoundsOf(question).left == layer.left + 40; });
    EXPECT_FALSE(WaitFor([&] { return app->LayerAlpha() != 5; }, Milliseconds(300))) << "it is no other program";
    pointer.Click(POINT{CentreOf(question).x, BoundsOf(question).top + 50});
    pointer.Click(app->Key(1));           // beside it
    App::Answer(pointer, question, IDNO); // behind the clicks in the same queue
    app->AwaitLength(0);
    app->ClickPassword(pointer, L"q");
    const HWND box = app->PasswordBox();
    PostMessageW(box, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(box), MAKELPARAM(layer.left, BoundsOf(box).bottom));
    const RECT items = BoundsOf(app->AwaitMenu());
    const POINT last{items.left + 20, items.bottom - 12}; // Clear Password
    ASSERT_TRUE(PtInRect(&layer, last));
    pointer.Click(last);
    app->AwaitLength(0);
    PostMessageW(box, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(box), MAKELPARAM(layer.left, layer.top));
    app->AwaitMenu();
    EXPECT_EQ(app->Close(), 0U) << "while a menu is open";
}

TEST_F(Entry, ShowsThePointerAsADotWhereAskedForAndOverTheKeysOnly) {
    const POINT key = CentreOf(app->FindKey(L"g"));
    const RECT layer = BoundsOf(app->Layer());
    pointer.MoveTo(key);
    const HCURSOR arrow = SettledPointer();
    app->Mask(true);
    app->Command(ids::mnuModeHiddenMouseAndHover);
    App::Answer(pointer, app->AwaitDialog(L"Hide mouse - turn it into grey dot?"), IDOK);
    pointer.MoveTo(key);
    for (const POINT place : {app->ToolPlace(ids::toolClear), {layer.left + 3, layer.bottom - 3}}) { // or beside them
        Await("the dot is shown", [&] { return ShownPointer() != arrow; });
        pointer.MoveTo(place);
        EXPECT_TRUE(WaitFor([&] { return ShownPointer() == arrow; })) << place.y;
        pointer.MoveTo(key);
    }
    Await("the dot is back", [&] { return ShownPointer() != arrow; });
    app->Command(ids::mnuModeStandard);
    EXPECT_TRUE(WaitFor([&] { return ShownPointer() == arrow; })) << "at once, without a move";
}

} // namespace
} // namespace vextrel::driver
