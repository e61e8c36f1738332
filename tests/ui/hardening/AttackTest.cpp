// Another program of the same user, without any right over the process, after the password. Every way that ever worked
// is tried against the program as users have it; where the gate alone is in its way, also against one that answers
// others, so that the attempt itself is shown to be one.
#include "core/ids.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <set>

namespace vextrel::driver {
namespace {

constexpr const wchar_t* secret = L"kq7";

void Post(HWND window, std::initializer_list<UINT> messages, WPARAM wParam = 0, LPARAM lParam = 0) {
    for (const UINT message : messages)
        PostMessageW(window, message, wParam, lParam);
}

/// The program with the secret in it, kept whatever is dragged out; and a field that drags end on.
struct Victim : Stage {
    explicit Victim(Sandbox::Others others, const std::string& settings = {})
        : Stage("Keep Password after Drag Drop=True\r\n" + settings, L"--topmost", others)
        , answers(others == Sandbox::Others::Answered) {
        // Under Wine, a service that comes late to a new desktop makes the first entry.
        Await("the clipboard is in service", [] { return GetClipboardSequenceNumber() != 0; });
        Enter();
    }
    void Enter() {
        app->Activate();
        if (answers)
            app->Restart(masked);
        for (const wchar_t key : {L'K', L'Q', L'7'})
            Keys::Stroke(key);
        if (answers)
            app->AwaitLength(3);
        if (!masked)
            Keys::Stroke('A', {VK_CONTROL});
        clipboard = GetClipboardSequenceNumber();
    }
    /// As the user does it.
    void Unmask() {
        app->ChooseByKeys('V', {'P'});
        Await("the plain box", [&] { return !app->IsMasked(); });
        Keys::Stroke('A', {VK_CONTROL});
        masked = false;
    }
    /// As it says or, if it does not, as the user drags it out.
    bool HoldsSecret() { return (answers ? app->Password() : Dragged()) == secret; }

    /// An attempt has to fail, or to work where others are answered; after one that does not, nothing else is certain.
    void Expect(const std::string& attempt, bool worked) {
        if (worked != answers)
            throw Failure(attempt + (worked ? ": works" : ": proves nothing"));
        if (answers)
            return Enter();
        if (!app->Running().Runs() || app->IsMasked() != masked)
            throw Failure(attempt + ": ends or unmasks the program");
    }
    void ExpectSoon(const char* attempt, const std::function<bool()>& works) {
        Expect(attempt, WaitFor(works, answers ? usualLimit : Milliseconds(700)));
    }
    void ExpectCopy(const char* attempt) {
        ExpectSoon(attempt, [&] { return GetClipboardSequenceNumber() != clipboard; });
    }

    /// A press and moves that nobody made, the real pointer resting over a window of the attacker's.
    void DragByPosts(int field) {
        app->Activate();
        pointer.MoveTo(CentreOf(target.Field(field)));
        Post(box, {WM_LBUTTONDOWN, WM_MOUSEMOVE}, MK_LBUTTON, MAKELPARAM(40, 5));
        Post(box, {WM_MOUSEMOVE, WM_MOUSEMOVE}, MK_LBUTTON, MAKELPARAM(-300, -300));
    }

    /// Hidden windows, too; of the 65 keys one. What the system keeps for itself is its own affair.
    [[nodiscard]] std::vector<HWND> AllWindows() const {
        std::vector<HWND> windows = Process::AllBeside(main);
        std::erase_if(windows, [](HWND window) {
            wchar_t name[64] = {};
            GetClassNameW(window, name, 64);
            const bool isOurs = GetAncestor(window, GA_ROOT) != window || std::wcscmp(name, formClass) == 0 ||
                                std::wcscmp(name, L"tooltips_class32") == 0;
            return !isOurs || (GetDlgCtrlID(window) > ids::firstKey && GetDlgCtrlID(window) <= ids::lastKey);
        });
        return windows;
    }

    const bool answers;
    bool masked = true;
    DWORD clipboard = 0;
    const HWND main = app->Main();
    const HWND box = app->Control(ids::txtPassword);
    const HWND plain = app->Control(ids::txtText);
    const HWND letter = app->FindKey(L"q");
};

TEST(AttacksOnTheGate, FailAndWorkOnceItIsOpen) {
    for (const auto others : {Sandbox::Others::Refused, Sandbox::Others::Answered}) {
        Victim v(others);
        const auto shows = [&] { return TextOf(v.plain).starts_with(secret); };
        Ask(v.main, WM_COMMAND, ids::mnuViewPasswordMask);
        v.ExpectSoon("a sent command unmasks", shows);
        Post(v.main, {WM_COMMAND}, ids::toolToggleMask);
        v.ExpectSoon("a posted command unmasks", shows);
        // Any program may ask for a menu to be opened.
        Post(v.main, {WM_SYSCOMMAND}, SC_KEYMENU, 'v');
        Post(v.main, {WM_KEYDOWN}, VK_RETURN);
        Post(v.main, {WM_KEYDOWN, WM_CHAR}, 'P', 1);
        v.ExpectSoon("a menu that posted keys work unmasks", shows);
        Keys::Stroke(VK_ESCAPE);
        Keys::Stroke(VK_ESCAPE);

        Ask(v.letter, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"z"));
        v.Expect("another caption on a key", TextOf(v.letter) == L"z");
        v.Expect("the length of the box", Ask(v.box, WM_GETTEXTLENGTH) != 0);
        // The system's libraries lie at the same address everywhere: a part of one stands for any memory of the
        // program.
        const auto* known = reinterpret_cast<const wchar_t*>(GetModuleHandleW(L"ntdll.dll"));
        Ask(v.app->Control(ids::StatusBar1), SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(known));
        v.Expect("any memory by way of the status bar", v.app->Text(ids::StatusBar1).starts_with(known[0]));
        Post(v.main, {WM_ENDSESSION}, TRUE);
        v.Expect("the session's end, posted", !v.HoldsSecret());
        Post(v.app->Layer(), {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP}, 0, MAKELPARAM(40, 60));
        Ask(v.letter, BM_CLICK);
        Post(v.box, {WM_CHAR}, 'x', 1);
        Post(v.box, {WM_KEYDOWN}, VK_DELETE, 1);
        v.Expect("keys by messages", !v.HoldsSecret());

        EXPECT_TRUE(v.HoldsSecret());
        v.Unmask();
        wchar_t line[100] = {99};
        v.Expect("read in clear", Ask(v.plain, EM_GETLINE, 0, reinterpret_cast<LPARAM>(line)) != 0 || shows());
        for (const UINT message : std::initializer_list<UINT>{WM_GETTEXTLENGTH, EM_LINELENGTH, EM_GETSEL})
            v.Expect("the length in clear", Ask(v.plain, message) != 0);
        Ask(v.plain, WM_COPY);
        Post(v.plain, {WM_COPY, WM_CUT});
        v.ExpectCopy("copy and cut in clear by messages");
        Keys::Stroke('C', {VK_CONTROL});
        Keys::Stroke(VK_INSERT, {VK_CONTROL});
        v.ExpectCopy("copy by keys that a program presses");
        Keys::Stroke('X', {VK_CONTROL});
        Keys::Stroke(VK_DELETE, {VK_SHIFT});
        v.ExpectCopy("cut by keys that a program presses");
        Keys::Stroke(VK_F10, {VK_SHIFT});
        v.app->AwaitMenu();
        Keys::Stroke('C');
        Await("the menu has gone", [&] { return v.app->OpenMenu() == nullptr; });
        v.ExpectCopy("copy by a menu that a program works");
        const std::wstring library = v.sandbox.Folder() / L"w.dll";
        CopyFileW((OwnFolder() / L"vextrel_planted.dll").c_str(), library.c_str(), TRUE);
        Ask(v.plain, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(library.c_str()));
        Ask(v.plain, EM_SETWORDBREAKPROC, 0, reinterpret_cast<LPARAM>(&LoadLibraryW));
        Post(v.plain, {WM_LBUTTONDBLCLK}, MK_LBUTTON, MAKELPARAM(3, 3));
        v.ExpectSoon("code by way of the word break", [&] { return std::filesystem::exists(library + L".loaded"); });
    }
}

TEST(AttacksBesideTheGate, Fail) {
    Victim v(Sandbox::Others::Refused);
    // Whoever asks, a button has to be down.
    v.DragByPosts(target::dropField);
    v.ExpectSoon("a drag that no button began", [&] { return v.target.Drops() > 0; });

    // The user's own drag comes by a window that keeps the data, and asks it while it is there: two seconds.
    const Target crossed(L"--read=always --topmost");
    MoveWindow(crossed.Window(), 700, 20, 480, 235, FALSE);
    v.app->Activate();
    crossed.PullHere(v.pointer, CentreOf(v.box));
    const POINT field = CentreOf(v.target.Field(target::dropField));
    Await("the drag goes on to the field", [&, shift = 0]() mutable {
        v.pointer.MoveTo({field.x + (shift = 1 - shift), field.y}, 10, Milliseconds(40));
        return v.target.Entries() > 0;
    });
    v.pointer.Release();
    const auto tells = [&] {
        crossed.ReadNow();
        return crossed.Text() == secret;
    };
    v.Expect("data of a drag that came by", WaitFor(tells, Milliseconds(2500)));
    EXPECT_EQ(v.target.Text(), secret) << "the drop itself";

    // What is shown is no window's style.
    SetWindowLongPtrW(v.box, GWL_STYLE, GetWindowLongPtrW(v.box, GWL_STYLE) & ~LONG_PTR{WS_VISIBLE});
    Keys::Type(L"x");
    const bool told = WaitFor([&] { return !TextOf(v.plain).empty(); }, Milliseconds(700));
    ShowWindow(v.box, SW_SHOWNA);
    Keys::Stroke(VK_BACK);
    v.Expect("the masked box hidden from outside", told);

    v.pointer.MoveTo(CentreOf(v.letter));
    v.pointer.Press();
    v.ExpectSoon("the pushed key", [&] { return (Ask(v.letter, BM_GETSTATE) & BST_PUSHED) != 0; });
    v.pointer.MoveTo({5, 5}, 3, Milliseconds(20)); // so that it is not entered
    v.pointer.Release();

    const HANDLE thread = OpenThread(THREAD_SET_CONTEXT, FALSE, GetWindowThreadProcessId(v.main, nullptr));
    v.Expect("a thread's context", thread != nullptr);

    // Beside each window there is room that every program can read and write.
    for (const HWND window : v.AllWindows()) {
        v.Expect("the windows' user data tells", GetWindowLongPtrW(window, GWLP_USERDATA) != 0);
        SetWindowLongPtrW(window, GWLP_USERDATA, 0x10);
        Post(window, {WM_NOTIFY, WM_DPICHANGED, WM_GETMINMAXINFO, WM_COPYDATA});
    }
    v.ExpectSoon("null pointers, posted and as user data", [&] { return !v.app->Running().Runs(); });
    EXPECT_TRUE(v.HoldsSecret());
}

TEST(AttacksBesideTheGate, OnTheInjectionFail) {
    Victim victim(Sandbox::Others::Refused, "Drag Drop Mode=Inject\r\n");
    victim.DragByPosts(target::editField);
    victim.ExpectSoon("an injection that no button began", [&] { return !victim.target.TypedCharacters().empty(); });
}

/// Of what controls and programs number by themselves, a part; all of it where the environment has
/// VEXTREL_EVERY_MESSAGE, in some ten minutes. Not what any program may ask of any window, and what ends a session.
void SendAndPostEverything(HWND window) {
    static const bool all = GetEnvironmentVariableW(L"VEXTREL_EVERY_MESSAGE", nullptr, 0) != 0;
    const std::set<UINT> meant{WM_CLOSE, WM_SYSCOMMAND, WM_ENDSESSION,
                               WM_QUIT,  WM_SHOWWINDOW, WM_INPUTLANGCHANGEREQUEST};
    const std::pair<WPARAM, LPARAM> parameters[] = {
        {0, 0}, {1, 7}, {static_cast<WPARAM>(-1), -1}, {0x41414141, static_cast<LPARAM>(0x4242424242424242)}};
    for (UINT message = 0; message <= 0xFFFF; ++message) {
        for (const auto& [wParam, lParam] : parameters) {
            if (meant.contains(message) || (!all && message >= 0x800 && (message + wParam) % 64 != 0))
                continue;
            SendNotifyMessageW(window, message, wParam, lParam);
            Post(window, {message}, wParam, lParam);
        }
        if (message % 512 == 511) { // the queue holds 10,000, and the user's input waits behind them
            Ask(window, WM_NULL);
            Sleep(all ? 100 : 0);
        }
    }
}

TEST(EveryMessage, ChangesNothing) {
    Victim victim(Sandbox::Others::Refused);
    const App& app = *victim.app;
    const auto state = [&] {
        std::wstring captions;
        for (int id = ids::firstKey; id <= ids::lastKey; ++id)
            captions += app.Text(id) + L'|';
        return std::tuple(captions, victim.sandbox.Read(), GetClipboardSequenceNumber(), app.IsMasked(),
                          BoundsOf(victim.main).left, app.Running().Windows(formClass).size());
    };
    const auto before = state();
    for (const HWND window : victim.AllWindows())
        SendAndPostEverything(window);
    EXPECT_TRUE(state() == before);
    EXPECT_TRUE(victim.HoldsSecret());
}

} // namespace
} // namespace vextrel::driver
