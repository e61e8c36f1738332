// Another program of the same user, without any right over the process, after the password. The ways that once worked
// are tried against the program as users have it; where the gate alone is in their way, also against one that answers
// others, so that the attempt itself is shown to be one.
#include "core/ids.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

#include <set>

namespace vextrel::driver {
namespace {

constexpr const wchar_t* secret = L"kq7";
constexpr Milliseconds timeToFail{700};

void Post(HWND window, std::initializer_list<UINT> messages, WPARAM wParam = 0, LPARAM lParam = 0) {
    for (const UINT message : messages)
        PostMessageW(window, message, wParam, lParam);
}

/// The program with the secret in it, kept whatever is dragged out; and a field that drags end on.
struct Victim : Stage {
    explicit Victim(Sandbox::Others others)
        : Stage("Keep Password after Drag Drop=True\r\n", L"--topmost", others)
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
        Expect(attempt, WaitFor(works, answers ? usualLimit : timeToFail));
    }

    const bool answers;
    bool masked = true;
    DWORD clipboard = 0;
    const HWND main = app->Main();
    const HWND box = app->Control(ids::txtPassword);
    const HWND plain = app->Control(ids::txtText);
};

TEST(AttacksOnTheGate, FailAndWorkOnceItIsOpen) {
    for (const auto others : {Sandbox::Others::Refused, Sandbox::Others::Answered}) {
        Victim v(others);
        const auto shows = [&] { return TextOf(v.plain).starts_with(secret); };
        const auto copied = [&] { return GetClipboardSequenceNumber() != v.clipboard; };
        Ask(v.main, WM_COMMAND, ids::mnuViewPasswordMask);
        v.ExpectSoon("a sent command unmasks", shows);
        Post(v.main, {WM_COMMAND}, ids::toolToggleMask);
        v.ExpectSoon("a posted command unmasks", shows);
        // Any program may ask for a menu to be opened.
        Post(v.main, {WM_SYSCOMMAND}, SC_KEYMENU, 'v');
        v.app->AwaitMenu();
        Post(v.main, {WM_KEYDOWN, WM_CHAR}, 'P', 1);
        v.ExpectSoon("a menu that posted keys work unmasks", shows);
        Keys::Stroke(VK_ESCAPE);
        Keys::Stroke(VK_ESCAPE);

        // A press and moves that nobody made, while the pointer rests over a window of the attacker's.
        v.pointer.MoveTo(CentreOf(v.target.Field(target::dropField)));
        Post(v.box, {WM_LBUTTONDOWN, WM_MOUSEMOVE}, MK_LBUTTON, MAKELPARAM(40, 5));
        Post(v.box, {WM_MOUSEMOVE, WM_MOUSEMOVE}, MK_LBUTTON, MAKELPARAM(-300, -300));
        EXPECT_FALSE(WaitFor([&] { return v.target.Drops() > 0; }, timeToFail)) << "whoever is answered";
        v.Expect("the length of the box", Ask(v.box, WM_GETTEXTLENGTH) != 0);
        Post(v.app->Layer(), {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP}, 0, MAKELPARAM(40, 60));
        Ask(v.app->Key(17), BM_CLICK); // the letter q, or its capital
        Post(v.box, {WM_CHAR}, 'x', 1);
        Post(v.box, {WM_KEYDOWN}, VK_DELETE, 1);
        v.Expect("keys by messages", !v.HoldsSecret());
        v.app->ChooseByKeys('V', {'P'}); // as the user does it
        Await("the plain box", [&] { return !v.app->IsMasked(); });
        Keys::Stroke('A', {VK_CONTROL});
        v.masked = false;
        v.Expect("read in clear", shows());
        Keys::Stroke('C', {VK_CONTROL});
        Keys::Stroke(VK_INSERT, {VK_CONTROL});
        Keys::Stroke('X', {VK_CONTROL});
        Keys::Stroke(VK_DELETE, {VK_SHIFT});
        v.ExpectSoon("copy and cut by keys that a program presses", copied);
        Keys::Stroke(VK_F10, {VK_SHIFT});
        v.app->AwaitMenu();
        Keys::Stroke('C');
        Await("the menu has gone", [&] { return v.app->OpenMenu() == nullptr; });
        v.ExpectSoon("copy by a menu that a program works", copied);
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
    // The user's own drag comes by a window that keeps the data, and asks it while it is there: two seconds. Both
    // targets stand above the program.
    v.app->MoveTo({40, 260});
    v.target.KeepClearOf(BoundsOf(v.main));
    const Target crossed(L"--read=always --keep --topmost");
    crossed.KeepClearOf(BoundsOf(v.target.Window()));
    v.app->Activate();
    crossed.PullHere(v.pointer, CentreOf(v.box));
    const POINT field = CentreOf(v.target.Field(target::dropField));
    Await("the drag goes on to the field", [&, shift = 0]() mutable {
        v.pointer.MoveTo({field.x + (shift = 1 - shift), field.y}, 10, Pointer::dragPace);
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
    const bool told = WaitFor([&] { return !TextOf(v.plain).empty(); }, timeToFail);
    ShowWindow(v.box, SW_SHOWNA);
    Keys::Stroke(VK_BACK);
    v.Expect("the masked box hidden from outside", told);
}

/// To the main window, the layer and what is in them; of the 65 keys to one. Of what controls and programs number by
/// themselves, a part. Not what any program may ask of any window, and what ends a session.
TEST(EveryMessage, ChangesNothing) {
    const std::set<UINT> meant{WM_CLOSE, WM_SYSCOMMAND, WM_ENDSESSION,
                               WM_QUIT,  WM_SHOWWINDOW, WM_INPUTLANGCHANGEREQUEST};
    const std::pair<WPARAM, LPARAM> parameters[] = {
        {0, 0}, {1, 7}, {static_cast<WPARAM>(-1), -1}, {0x41414141, static_cast<LPARAM>(0x4242424242424242)}};
    Victim victim(Sandbox::Others::Refused);
    const App& app = *victim.app;
    const auto state = [&] {
        std::wstring captions;
        for (int id = ids::firstKey; id <= ids::lastKey; ++id)
            captions += app.Text(id) + L'|';
        return std::tuple(captions, victim.sandbox.Read(), GetClipboardSequenceNumber(), app.IsMasked(),
                          BoundsOf(victim.main).left, app.Running().Windows(formClass).size());
    };
    // The queue holds 10,000; painting comes when nothing is left in it.
    const auto awaitEndOfQueue = [&] {
        RedrawWindow(victim.main, nullptr, nullptr, RDW_INVALIDATE);
        const auto painted = [&] { return GetUpdateRect(victim.main, nullptr, FALSE) == FALSE; };
        Await("the program is done with its messages", painted, Milliseconds(60000));
    };
    const auto before = state();
    std::vector<HWND> windows = Process::AllBeside(victim.main);
    std::erase_if(windows, [&](HWND window) {
        const HWND root = GetAncestor(window, GA_ROOT);
        const int id = GetDlgCtrlID(window);
        return (root != victim.main && root != app.Layer()) || (id > ids::firstKey && id <= ids::lastKey);
    });
    for (const HWND window : windows) {
        // Every program can read and write it.
        EXPECT_EQ(SetWindowLongPtrW(window, GWLP_USERDATA, 0x10), 0) << "tells an address";
        for (UINT message = 0, posted = 0; message <= 0xFFFF; message += message < 0x800 ? 1 : 61) {
            for (const auto& [wParam, lParam] : parameters) {
                if (meant.contains(message))
                    continue;
                SendNotifyMessageW(window, message, wParam, lParam);
                Post(window, {message}, wParam, lParam);
                if (++posted % 1000 == 0)
                    awaitEndOfQueue();
            }
        }
        awaitEndOfQueue();
    }
    EXPECT_TRUE(state() == before);
    EXPECT_TRUE(victim.HoldsSecret());
}

} // namespace
} // namespace vextrel::driver
