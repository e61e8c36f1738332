// Typing on the real keyboard into both boxes.

#include "driver/App.h"
#include "driver/Machine.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

void Ctrl(char letter) {
    Keys::Stroke(static_cast<WORD>(letter), {VK_CONTROL});
}

/// From the box's context menu, by the keyboard. Waits for the menu, since it opens a loop of its own.
void ChooseFromMenu(WORD accessKey) {
    const auto menu = [] { return FindWindowW(L"#32768", nullptr); };
    Keys::Stroke(VK_APPS);
    Await("the context menu opens", [&] { return menu() != nullptr && IsWindowVisible(menu()); });
    Keys::Stroke(accessKey);
    Await("the context menu closes", [&] { return menu() == nullptr || !IsWindowVisible(menu()); });
}

TEST(PhysicalKeys, TypeEditAndPasteInBothViews) {
    if (!HasAmericanKeyboard() || !SpeaksEnglish())
        GTEST_SKIP() << "the keyboard is not American, or Windows' own words are not English";
    const Sandbox sandbox;
    const App app(sandbox);
    // Each step starts with "abcd" and a selection, and ends with the End key and "#".
    const struct {
        const char* name;
        int start;
        int end;
        void (*act)();
        const wchar_t* masked; ///< the password afterwards, per view
        const wchar_t* plain;
    } steps[] = {
        {"keys", 4, 4, [] { Keys::Stroke('E'), Keys::Stroke('F', {VK_SHIFT}), Keys::Stroke('1', {VK_RSHIFT}); },
         L"abcdeF!", L"abcdeF!"},
        {"characters without a key", 1, 3, [] { Keys::Type(L"\u00E4\u20AC\u00DF"); }, L"a\u00E4\u20AC\u00DFd",
         L"a\u00E4\u20AC\u00DFd"},
        {"Backspace", 2, 2, [] { Keys::Stroke(VK_BACK); }, L"acd", L"acd"},
        {"Delete a character", 1, 1, [] { Keys::Stroke(VK_DELETE); }, L"acd", L"acd"},
        {"Delete a selection", 1, 3, [] { Keys::Stroke(VK_DELETE); }, L"ad", L"ad"},
        {"Delete at the end", 4, 4, [] { Keys::Stroke(VK_DELETE); }, L"abcd", L"abcd"},
        {"paste", 1, 2, [] { Ctrl('V'); }, L"axYZcd", L"axYZcd"},
        {"paste by Insert", 4, 4, [] { Keys::Stroke(VK_INSERT, {VK_SHIFT}); }, L"abcdxYZ", L"abcdxYZ"},
        {"paste from the menu", 0, 4, [] { ChooseFromMenu('P'); }, L"xYZ", L"xYZ"},
        {"cut", 1, 3, [] { Ctrl('X'); }, L"abcd", L"ad"},
        {"cut by Delete", 1, 3, [] { Keys::Stroke(VK_DELETE, {VK_SHIFT}); }, L"ad", L"ad"},
        {"delete from the menu", 1, 3, [] { ChooseFromMenu('D'); }, L"ad", L"ad"},
        {"cut and undo", 1, 3, [] { Ctrl('X'), Ctrl('Z'); }, L"abcd", L"abcd"},
        {"select all and type", 2, 2, [] { Ctrl('A'), Keys::Stroke('E'); }, L"e", L"e"},
        {"copy", 1, 3, [] { Ctrl('C'); }, L"abcd", L"abcd"},
        {"control characters", 2, 2, [] { Ctrl('G'), Ctrl('T'), Ctrl('L'); }, L"abcd", L"abcd"},
        {"line break", 2, 2, [] { Keys::Stroke(VK_RETURN); }, L"abcd", nullptr},
    };
    for (const bool masked : {true, false}) {
        for (const auto& step : steps) {
            const wchar_t* const expected = masked ? step.masked : step.plain;
            if (expected == nullptr) {
                continue;
            }
            SCOPED_TRACE(std::string(step.name) + (masked ? ", masked" : ", plain"));
            SetClipboard(masked ? L"x\tY\r\n\x01Z" : L"xYZ");
            app.Restart(masked);
            Keys::Type(L"abcd");
            app.AwaitLength(4);
            app.Select(step.start, step.end);
            step.act();
            Keys::Stroke(VK_END);
            Keys::Type(L"#");
            const std::wstring shown =
                masked ? std::wstring(std::wcslen(expected) + 1, L'*') : expected + std::wstring(L"#");
            // As many asterisks may have stood there before; the caret did not stand behind them.
            const App::Selection behind{static_cast<int>(shown.size()), static_cast<int>(shown.size())};
            EXPECT_TRUE(WaitFor([&] { return app.Shown() == shown && App::SelectionOf(app.PasswordBox()) == behind; },
                                Milliseconds(5000)))
                << Narrow(app.Shown());
            EXPECT_EQ(app.Password(), expected + std::wstring(L"#"));
            if (std::string_view(step.name) == "copy") {
                ASSERT_TRUE(OpenClipboard(nullptr));
                const HANDLE data = GetClipboardData(CF_UNICODETEXT);
                EXPECT_EQ(std::wstring(static_cast<const wchar_t*>(GlobalLock(data))),
                          masked ? L"x\tY\r\n\x01Z" : L"bc");
                CloseClipboard();
            }
        }
    }

    // A text set from outside the password follows; the asterisks are no text to set.
    for (const bool masked : {false, true}) {
        app.Restart(masked);
        Keys::Type(L"ab");
        app.AwaitLength(2);
        Ask(app.PasswordBox(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"pqr"));
        EXPECT_EQ(app.Shown(), masked ? L"**" : L"pqr");
        EXPECT_EQ(app.Password(), masked ? L"ab" : L"pqr");
    }

    // Tabs and line breaks are in the plain box, not in the password: what a drag carries shows it.
    app.Restart(false);
    SetClipboard(L"x\tY\r\nZ");
    Keys::Stroke('A');
    Keys::Stroke(VK_RETURN);
    Ctrl('V');
    app.AwaitShown(L"a\r\nx\tY\r\nZ");
    const Target target(L"--topmost");
    target.KeepClearOf(BoundsOf(app.Main()));
    BringToFront(app.Main());
    Pointer pointer;
    pointer.Drag(CentreOf(app.PasswordBox()), CentreOf(target.Field(target::dropField)));
    Await("the drop arrives", [&] { return target.Drops() == 1; });
    EXPECT_EQ(target.Text(), L"axYZ");
}

TEST(PhysicalKeys, CaptionsFollowShiftAndCapsLock) {
    const Sandbox sandbox;
    const App app(sandbox);
    const auto awaitCaptions = [&](const wchar_t* letter, const wchar_t* digit) {
        Await("the captions change", [&] { return app.FindKey(letter) != nullptr && app.FindKey(digit) != nullptr; });
    };
    awaitCaptions(L"q", L"1");
    for (const WORD shift : std::initializer_list<WORD>{VK_LSHIFT, VK_RSHIFT}) {
        Keys::Down(shift);
        awaitCaptions(L"Q", L"!");
        Keys::Up(shift);
        awaitCaptions(L"q", L"1");
    }
    Keys::Stroke(VK_CAPITAL);
    awaitCaptions(L"Q", L"!");
    Keys::Down(VK_SHIFT);
    awaitCaptions(L"q", L"1");
    Keys::Up(VK_SHIFT);
    awaitCaptions(L"Q", L"!");
    Keys::Stroke('E');
    Keys::Stroke(VK_CAPITAL);
    awaitCaptions(L"q", L"1");
    app.AwaitLength(1);
    EXPECT_EQ(app.Password(), L"E");

    // With Alt, too. What becomes of the keys elsewhere shows on the way back; a click of Shift on screen stays.
    const Target target;
    target.KeepClearOf(BoundsOf(app.Main()));
    const auto away = [&] { BringToFront(target.Window()); };
    const struct {
        const char* name;
        std::function<void()> before, elsewhere;
        const wchar_t* key;
    } steps[] = {
        {"on screen", [&] { Pointer().Click(app.Key(42)); }, [] {}, L"Q"},
        {"nothing elsewhere", away, [] {}, L"Q"},
        {"Shift held", [] { Keys::Down(VK_SHIFT); }, [] {}, L"Q"},
        {"released elsewhere", away, [] { Keys::Up(VK_SHIFT); }, L"q"},
        {"Caps Lock", [] { Keys::Stroke(VK_CAPITAL); }, [] {}, L"Q"},
        {"off elsewhere", away, [] { Keys::Stroke(VK_CAPITAL); }, L"q"},
        {"with Alt", [] { Keys::Down(VK_MENU), Keys::Down(VK_SHIFT); }, [] {}, L"Q"},
        {"released", [] { Keys::Up(VK_SHIFT), Keys::Up(VK_MENU); }, [] {}, L"q"},
    };
    for (const auto& step : steps) {
        step.before();
        step.elsewhere();
        BringToFront(app.Main());
        app.AwaitLayerAlpha(5);
        EXPECT_TRUE(WaitFor([&] { return app.FindKey(step.key) != nullptr; }, Milliseconds(2000))) << step.name;
    }
}

} // namespace
} // namespace vextrel::driver
