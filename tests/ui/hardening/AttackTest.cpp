// Another program of the same user, without any right over the process, after the password: each way that ever worked
// is tried against the program as users have it, and against one that answers others, so that the attempt itself is
// shown to be one.
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <cctype>

namespace vextrel::driver {
namespace {

using Others = Sandbox::Others;

constexpr const wchar_t* secret = L"kq7";

std::wstring ClipboardText() {
    std::wstring text;
    if (OpenClipboard(nullptr)) {
        if (const HANDLE data = GetClipboardData(CF_UNICODETEXT))
            text = static_cast<const wchar_t*>(GlobalLock(data));
        CloseClipboard();
    }
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

/// The program with the secret in it, masked, kept whatever is dragged out; and a field that drags end on.
class Victim {
  public:
    explicit Victim(Others others)
        : sandbox_(others) {
        sandbox_.SetSetting(L"Keep Password after Drag Drop", L"True");
        app_.emplace(sandbox_);
        field_.KeepClearOf(BoundsOf(app_->Main()));
        app_->Activate();
        for (const wchar_t* key = L"KQ7"; *key != L'\0'; ++key)
            Keys::Stroke(static_cast<WORD>(*key));
        // Input is taken in its order: what the drag brings was there before the attack.
        static_cast<void>(Password());
    }

    [[nodiscard]] const App& Program() const { return *app_; }
    [[nodiscard]] const Target& Field() const { return field_; }
    [[nodiscard]] const Sandbox& Folder() const { return sandbox_; }
    [[nodiscard]] HWND Box(int id) const { return app_->Control(id); }
    [[nodiscard]] Pointer& Mouse() { return pointer_; }

    /// What the user drags out: the password, whatever the boxes show.
    std::wstring Password() {
        const int drops = field_.Drops();
        app_->Activate();
        field_.PullHere(pointer_, CentreOf(app_->PasswordBox()));
        pointer_.Release();
        static_cast<void>(WaitFor([&] { return field_.Drops() > drops; }, Milliseconds(3000)));
        Await("the drag's hint has gone", [&] {
            return std::ranges::count_if(Process::AllBeside(app_->Main()),
                                         [](HWND window) { return ClassOf(window) == formClass; }) == 2;
        });
        return field_.Drops() > drops ? field_.Text() : L"";
    }

    void Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 3000, &answer);
    }

  private:
    const Target field_{L"--topmost"};
    Sandbox sandbox_;
    std::optional<App> app_;
    Pointer pointer_;
};

/// Every window of the program, hidden ones and those in others as well.
std::vector<HWND> AllWindows(const App& app) {
    std::vector<HWND> windows = Process::AllBeside(app.Main());
    // Of 65 keys, one; and what the system keeps for itself is its own affair.
    std::erase_if(windows, [&](HWND window) {
        const int id = GetDlgCtrlID(window);
        const std::wstring windowClass = ClassOf(window);
        return (id > ids::firstKey + 16 && id <= ids::lastKey) || (id >= ids::firstKey && id < ids::firstKey + 16) ||
               (GetAncestor(window, GA_ROOT) == window && windowClass != formClass &&
                windowClass != L"tooltips_class32");
    });
    return windows;
}

std::wstring Read(HWND window) {
    wchar_t text[100] = {};
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 3000,
                        &length);
    return text;
}

/// While a drag before it still ends, the program refuses whoever asks.
template <typename Order>
std::wstring UnmaskAndRead(Victim& victim, Order order) {
    static_cast<void>(WaitFor(
        [&] {
            order();
            Ask(victim.Program().Main(), WM_NULL);
            return victim.Program().Visible(ids::txtText);
        },
        Milliseconds(1000)));
    return Read(victim.Box(ids::txtText));
}

std::wstring UnmaskBySending(Victim& victim) {
    return UnmaskAndRead(victim, [&] { victim.Send(victim.Program().Main(), WM_COMMAND, ids::mnuViewPasswordMask); });
}

std::wstring UnmaskByPosting(Victim& victim) {
    return UnmaskAndRead(victim, [&] {
        PostMessageW(victim.Program().Main(), WM_COMMAND, ids::toolToggleMask, 0);
        static_cast<void>(WaitFor([&] { return victim.Program().Visible(ids::txtText); }, Milliseconds(300)));
    });
}

/// The menu opened as any program may ask for it, and worked by keys that nobody presses.
std::wstring UnmaskByMenuAndRead(Victim& victim) {
    const HWND main = victim.Program().Main();
    PostMessageW(main, WM_SYSCOMMAND, SC_KEYMENU, 'v');
    PostMessageW(main, WM_KEYDOWN, VK_RETURN, 0);
    for (int times = 0; times < 2; ++times) {
        PostMessageW(main, WM_KEYDOWN, 'P', 1);
        PostMessageW(main, WM_CHAR, L'p', 1);
    }
    static_cast<void>(WaitFor([&] { return victim.Program().Visible(ids::txtText); }, Milliseconds(1000)));
    std::wstring loot = Read(victim.Box(ids::txtText));
    Keys::Stroke(VK_ESCAPE);
    Keys::Stroke(VK_ESCAPE);
    return loot;
}

void SwitchMaskByKeys(const Victim& victim) {
    const bool masked = victim.Program().Visible(ids::txtPassword);
    Keys::Stroke('V', {VK_MENU});
    Await("the menu", [&] { return victim.Program().Running().Window(L"#32768") != nullptr; });
    Keys::Stroke('P');
    Await("the other box", [&] { return victim.Program().Visible(ids::txtPassword) != masked; });
}

/// In the plain view, to which the user has switched and where all is selected.
template <typename Attack>
std::wstring InClear(Victim& victim, Attack attack) {
    SwitchMaskByKeys(victim);
    Keys::Stroke('A', {VK_CONTROL});
    std::wstring loot = attack();
    SwitchMaskByKeys(victim);
    return loot;
}

template <typename Copy>
std::wstring CopyInClear(Victim& victim, Copy copy) {
    return InClear(victim, [&] {
        SetClipboard(L"before");
        copy();
        static_cast<void>(WaitFor([] { return ClipboardText() != L"before"; }, Milliseconds(1000)));
        return ClipboardText();
    });
}

std::wstring CopyByMessages(Victim& victim) {
    return CopyInClear(victim, [&] {
        for (const UINT message : std::initializer_list<UINT>{WM_COPY, WM_CUT}) {
            victim.Send(victim.Box(ids::txtText), message);
            PostMessageW(victim.Box(ids::txtText), message, 0, 0);
        }
    });
}

std::wstring ReadInClear(Victim& victim) {
    return InClear(victim, [&] {
        const HWND box = victim.Box(ids::txtText);
        wchar_t line[100] = {99};
        victim.Send(box, EM_GETLINE, 0, reinterpret_cast<LPARAM>(line));
        return Read(box) + (line[0] != 99 ? line : L"");
    });
}

std::wstring MeasureInClear(Victim& victim) {
    return InClear(victim, [&]() -> std::wstring {
        const HWND box = victim.Box(ids::txtText);
        LRESULT length = 0;
        for (const UINT message : std::initializer_list<UINT>{WM_GETTEXTLENGTH, EM_LINELENGTH, EM_GETSEL})
            length |= Ask(box, message);
        return length != 0 ? secret : L"";
    });
}

std::wstring CopyByInjectedKeys(Victim& victim) {
    return CopyInClear(victim, [] {
        Keys::Stroke('C', {VK_CONTROL});
        Keys::Stroke(VK_INSERT, {VK_CONTROL});
    });
}

std::wstring CutByInjectedKeys(Victim& victim) {
    return CopyInClear(victim, [] {
        Keys::Stroke('X', {VK_CONTROL});
        Keys::Stroke(VK_DELETE, {VK_SHIFT});
    });
}

std::wstring CopyByInjectedMenuChoice(Victim& victim) {
    return CopyInClear(victim, [&] {
        Keys::Stroke(VK_F10, {VK_SHIFT});
        Await("the box's menu", [&] { return victim.Program().Running().Window(L"#32768") != nullptr; });
        Keys::Stroke('C');
        Await("the menu has gone", [&] { return victim.Program().Running().Window(L"#32768") == nullptr; });
    });
}

/// A press and moves that nobody made, the real pointer resting over a window of the attacker's.
void DragByPosts(Victim& victim, int field) {
    victim.Program().Activate();
    victim.Mouse().MoveTo(CentreOf(victim.Field().Field(field)));
    const HWND box = victim.Box(ids::txtPassword);
    const RECT area = BoundsOf(box);
    const LPARAM middle = MAKELPARAM((area.right - area.left) / 2, (area.bottom - area.top) / 2);
    PostMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    for (int step = 1; step < 10; ++step)
        PostMessageW(box, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-50 * step, -50 * step));
}

std::wstring DropByPosts(Victim& victim) {
    const int drops = victim.Field().Drops();
    DragByPosts(victim, target::dropField);
    const bool dropped = WaitFor([&] { return victim.Field().Drops() > drops; }, Milliseconds(2000));
    return dropped ? victim.Field().Text() : L"";
}

/// Chooses the injection, or the drag again, in the menu: so many items from its end.
void SwitchInjection(const Victim& victim, int up, const wchar_t* mode) {
    victim.Program().Activate();
    Keys::Stroke('O', {VK_MENU});
    Await("the menu", [&] { return victim.Program().Running().Window(L"#32768") != nullptr; });
    for (; up > 0; --up)
        Keys::Stroke(VK_UP);
    Keys::Stroke(VK_RETURN);
    Await("the choice is stored", [&] { return victim.Folder().Setting(L"Drag Drop Mode") == mode; });
}

std::wstring InjectByPosts(Victim& victim) {
    SwitchInjection(victim, 2, L"Inject");
    DragByPosts(victim, target::editField);
    static_cast<void>(WaitFor([&] { return victim.Field().TypedCharacters() == secret; }, Milliseconds(2000)));
    SwitchInjection(victim, 3, L"Drag Drop");
    return victim.Field().TypedCharacters();
}

/// A window that the user's own drag merely comes by keeps the data and asks it after the drop.
std::wstring AskAfterTheDrop(Victim& victim) {
    const Target crossed(L"--read=crossed --topmost --at=700,20");
    victim.Program().Activate();
    crossed.PullHere(victim.Mouse(), CentreOf(victim.Box(ids::txtPassword)));
    const POINT there = CentreOf(victim.Field().Field(target::dropField));
    victim.Mouse().MoveTo(there, 10, Milliseconds(40));
    Await("the drag goes on to the field", [&] {
        victim.Mouse().MoveTo({there.x + static_cast<LONG>(GetTickCount64() & 1), there.y}, 1, Milliseconds(40));
        return victim.Field().Entries() > 0;
    });
    victim.Mouse().Release();
    std::wstring loot;
    for (int attempt = 0; attempt < 40; ++attempt) {
        crossed.ReadNow();
        loot += crossed.Text();
        std::ignore = WaitFor([] { return false; }, Milliseconds(50));
    }
    EXPECT_EQ(victim.Field().Text(), secret) << "the drop itself";
    return loot;
}

/// The system's libraries lie at the same address everywhere: a part of one stands for any memory of the program.
std::wstring ReadMemoryByStatusBar(Victim& victim) {
    const HWND bar = victim.Box(ids::StatusBar1);
    const auto* known = reinterpret_cast<const wchar_t*>(GetModuleHandleW(L"ntdll.dll"));
    victim.Send(bar, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(known));
    const std::wstring text = Read(bar);
    return !text.empty() && text[0] == known[0] ? secret : L"";
}

std::wstring CallByWordBreak(Victim& victim) {
    const auto library = victim.Folder().Folder() / L"w.dll";
    CopyFileW((OwnFolder() / L"vextrel_planted.dll").c_str(), library.c_str(), TRUE);
    const HWND box = victim.Box(ids::txtText);
    return InClear(victim, [&]() -> std::wstring {
        victim.Send(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(library.c_str()));
        victim.Send(box, EM_SETWORDBREAKPROC, 0, reinterpret_cast<LPARAM>(&LoadLibraryW));
        PostMessageW(box, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 3));
        const bool called =
            WaitFor([&] { return std::filesystem::exists(library.wstring() + L".loaded"); }, Milliseconds(1000));
        return called ? secret : L"";
    });
}

std::wstring HideTheMaskedBox(Victim& victim) {
    const HWND box = victim.Box(ids::txtPassword);
    SetWindowLongPtrW(box, GWL_STYLE, GetWindowLongPtrW(box, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_VISIBLE));
    Keys::Type(L"x");
    std::wstring loot;
    static_cast<void>(WaitFor([&] { return !(loot = Read(victim.Box(ids::txtText))).empty(); }, Milliseconds(1000)));
    ShowWindow(box, SW_SHOWNA);
    Keys::Stroke(VK_BACK);
    return loot.empty() ? L"" : secret;
}

/// The box's length beside the pointer tells which key was clicked and when.
std::wstring WatchTheLength(Victim& victim) {
    DWORD_PTR length = 0;
    SendMessageTimeoutW(victim.Box(ids::txtPassword), WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 3000, &length);
    return length == 3 ? secret : L"";
}

std::wstring WatchThePushedKey(Victim& victim) {
    const HWND key = victim.Program().FindKey(L"q");
    victim.Mouse().MoveTo(CentreOf(key), 3, Milliseconds(20));
    victim.Mouse().Press();
    const bool seen = WaitFor([&] { return (Ask(key, BM_GETSTATE) & BST_PUSHED) != 0; }, Milliseconds(500));
    victim.Mouse().MoveTo({5, 5}, 3, Milliseconds(20));
    victim.Mouse().Release();
    return seen ? secret : L"";
}

std::wstring ChangeAKey(Victim& victim) {
    const HWND key = victim.Program().FindKey(L"q");
    victim.Send(key, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"z"));
    const bool changed = TextOf(key) != L"q";
    victim.Send(key, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"q"));
    return changed ? secret : L"";
}

std::wstring EndTheSessionByPost(Victim& victim) {
    PostMessageW(victim.Program().Main(), WM_ENDSESSION, TRUE, 0);
    return victim.Password() == secret ? L"" : secret;
}

/// Beside each window there is room that every program can read and write.
std::wstring UseTheUserData(Victim& victim) {
    constexpr LONG_PTR nowhere = 0x10;
    bool told = false;
    for (const HWND window : AllWindows(victim.Program())) {
        told = told || GetWindowLongPtrW(window, GWLP_USERDATA) != 0;
        SetWindowLongPtrW(window, GWLP_USERDATA, nowhere);
        EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA), nowhere);
        Ask(window, WM_NULL);
    }
    return told || victim.Password() != secret ? secret : L"";
}

std::wstring PostNullPointers(Victim& victim) {
    for (const HWND window : AllWindows(victim.Program()))
        for (const UINT message : std::initializer_list<UINT>{WM_NOTIFY, WM_DPICHANGED, WM_GETMINMAXINFO, WM_COPYDATA})
            PostMessageW(window, message, 0, 0);
    victim.Send(victim.Program().Main(), WM_NULL);
    return WaitFor([&] { return !victim.Program().Running().Runs(); }, Milliseconds(500)) ? secret : L"";
}

std::wstring PressAKeyByMessages(Victim& victim) {
    const HWND layer = victim.Program().Layer();
    RECT there = BoundsOf(layer);
    const LPARAM middle = MAKELPARAM((there.right - there.left) / 2, (there.bottom - there.top) / 2);
    for (const int message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP})
        PostMessageW(layer, static_cast<UINT>(message), 0, middle);
    victim.Send(victim.Program().FindKey(L"q"), BM_CLICK);
    PostMessageW(victim.Box(ids::txtPassword), WM_CHAR, 'x', 1);
    PostMessageW(victim.Box(ids::txtPassword), WM_KEYDOWN, VK_DELETE, 1);
    return victim.Password() == secret ? L"" : secret;
}

std::wstring SteerItsThread(Victim& victim) {
    const HANDLE thread =
        OpenThread(THREAD_SET_CONTEXT, FALSE, GetWindowThreadProcessId(victim.Program().Main(), nullptr));
    if (thread)
        CloseHandle(thread);
    return thread ? secret : L"";
}

struct Row {
    const char* name;
    std::wstring (*attack)(Victim& victim);
    bool worksOnceAnswered = true;
    bool endsTheProgram = false; ///< answered, it does; not tried, for the debugger that Wine starts would stay
};

const Row rows[] = {
    {"mask off by a sent command, then read", UnmaskBySending},
    {"mask off by a posted command, then read", UnmaskByPosting},
    {"mask off by a menu that posted keys work, then read", UnmaskByMenuAndRead},
    {"read in clear", ReadInClear},
    {"the length in clear", MeasureInClear},
    {"copy and cut in clear by messages", CopyByMessages},
    {"copy by keys that a program presses", CopyByInjectedKeys},
    {"cut by keys that a program presses", CutByInjectedKeys},
    {"copy by a menu that a program works", CopyByInjectedMenuChoice},
    {"a drag that no button began", DropByPosts, false}, // whoever asks: a button has to be down
    {"an injection that no button began", InjectByPosts, false},
    {"data of a drag that came by", AskAfterTheDrop, false}, // it serves who it was dropped on
    {"any memory by way of the status bar", ReadMemoryByStatusBar},
    {"code by way of the word break", CallByWordBreak},
    {"the masked box hidden from outside", HideTheMaskedBox, false}, // what is shown is no window's style
    {"the length of the box", WatchTheLength},
    {"the pushed key", WatchThePushedKey, false}, // the layer pushes it, and only while the pointer is there
    {"another caption on a key", ChangeAKey},
    {"the windows' user data", UseTheUserData, false}, // nothing is kept there
    {"null pointers, posted", PostNullPointers, true, true},
    {"the session's end, posted", EndTheSessionByPost},
    {"keys by messages", PressAKeyByMessages},
    {"a thread's context", SteerItsThread, false}, // that is the hardening's
};

class Attacks : public testing::TestWithParam<Row> {};

TEST_P(Attacks, FailsAndWorksWhereTheProgramAnswersOthers) {
    const Row& row = GetParam();
    {
        Victim victim(Others::Refused);
        EXPECT_EQ(row.attack(victim).find(secret), std::wstring::npos);
        EXPECT_TRUE(victim.Program().Running().Runs());
        EXPECT_TRUE(victim.Program().Visible(ids::txtPassword));
        EXPECT_EQ(victim.Password(), secret);
    }
    if (row.endsTheProgram)
        return;
    Victim victim(Others::Answered);
    const bool works = row.attack(victim).find(secret) != std::wstring::npos;
    EXPECT_TRUE(works || !row.worksOnceAnswered) << "the attempt proves nothing";
}

std::string NameOf(const testing::TestParamInfo<Row>& info) {
    std::string name = info.param.name;
    std::ranges::replace_if(
        name, [](unsigned char sign) { return std::isalnum(sign) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Ways, Attacks, testing::ValuesIn(rows), &NameOf);

/// What any program may ask of any window, and what ends a session.
bool MeansWhatItSays(UINT message) {
    return message == WM_CLOSE || message == WM_SYSCOMMAND || message == WM_ENDSESSION || message == WM_QUIT ||
           message == WM_INPUTLANGCHANGEREQUEST || message == WM_SHOWWINDOW;
}

/// Of what controls and programs number by themselves, a part; all of it where the environment has
/// VEXTREL_EVERY_MESSAGE, in some ten minutes.
bool IsAllTried() {
    static const bool all = GetEnvironmentVariableW(L"VEXTREL_EVERY_MESSAGE", nullptr, 0) != 0;
    return all;
}

void SendAndPostEverything(HWND window) {
    const std::pair<WPARAM, LPARAM> parameters[] = {
        {0, 0}, {1, 7}, {static_cast<WPARAM>(-1), -1}, {0x41414141, static_cast<LPARAM>(0x4242424242424242)}};
    for (UINT message = 0; message <= 0xFFFF; ++message) {
        if (MeansWhatItSays(message))
            continue;
        for (const auto& [wParam, lParam] : parameters) {
            if (!IsAllTried() && message >= 0x800 && (message + wParam) % 64 != 0)
                continue;
            SendNotifyMessageW(window, message, wParam, lParam);
            PostMessageW(window, message, wParam, lParam);
        }
        if (message % 512 == 511) { // the queue holds 10,000, and the user's input waits behind them
            Ask(window, WM_NULL);
            if (IsAllTried())
                std::ignore = WaitFor([] { return false; }, Milliseconds(100));
        }
    }
}

TEST(EveryMessage, ChangesNothing) {
    Victim victim(Others::Refused);
    const App& app = victim.Program();
    const DWORD clipboard = GetClipboardSequenceNumber();
    const auto settings = victim.Folder().Read();
    const RECT place = BoundsOf(app.Main());
    std::wstring captions;
    const auto readCaptions = [&] {
        std::wstring read;
        for (int id = ids::firstKey; id <= ids::lastKey; ++id)
            read += TextOf(app.Control(id)) + L'|';
        return read;
    };
    captions = readCaptions();
    const auto expectUnchanged = [&] {
        ASSERT_TRUE(app.Running().Runs());
        EXPECT_TRUE(app.Running().Windows(dialogClass).empty()) << "a box";
        EXPECT_TRUE(app.Visible(ids::txtPassword));
        EXPECT_EQ(readCaptions(), captions);
        EXPECT_EQ(victim.Folder().Read(), settings);
        EXPECT_EQ(GetClipboardSequenceNumber(), clipboard);
        EXPECT_EQ(victim.Password(), secret);
    };
    for (const HWND window : AllWindows(app))
        SendAndPostEverything(window);
    EXPECT_EQ(app.Running().Windows(formClass).size(), 2U);
    const RECT now = BoundsOf(app.Main());
    EXPECT_TRUE(EqualRect(&place, &now));
    expectUnchanged();
    // The same with one of its dialogs open.
    Keys::Stroke('V', {VK_MENU});
    Await("the menu", [&] { return app.Running().Window(L"#32768") != nullptr; });
    Keys::Stroke(VK_DOWN);
    Keys::Stroke(VK_RETURN);
    const HWND question = app.Running().AwaitWindow(formClass, L"Transparency Value");
    for (const HWND window : AllWindows(app))
        if (GetAncestor(window, GA_ROOT) == question)
            SendAndPostEverything(window);
    ASSERT_TRUE(IsWindow(question)) << "answered by somebody";
    BringToFront(question);
    Keys::Stroke(VK_ESCAPE);
    Await("the question has gone", [&] { return !IsWindow(question); });
    expectUnchanged();
}

} // namespace
} // namespace vextrel::driver
