// What is left of a password in the program's memory, measured from outside in the real program.
#include "core/ids.h"
#include "driver/App.h"
#include "driver/MemoryScan.h"
#include "driver/Remote.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

namespace vextrel::driver {
namespace {

constexpr int secretLength = 24;

/// The program with a random password typed on its keys, and the memory scan.
class Traces : public testing::Test {
  protected:
    explicit Traces(const wchar_t* targetOptions = L"--topmost")
        : target_(targetOptions)
        , app_(sandbox_) {
        // Under Wine, a service that comes late to a new desktop makes the first entry.
        Await("the clipboard is in service", [] { return GetClipboardSequenceNumber() != 0; });
        clipboard_ = GetClipboardSequenceNumber();
        target_.KeepClearOf(BoundsOf(app_.Main()));
        app_.ClickPassword(pointer_, secret_);
    }
    ~Traces() override { EXPECT_EQ(GetClipboardSequenceNumber(), clipboard_) << "the clipboard was written"; }

    std::vector<Trace> Scan(const std::string& when) const {
        std::vector<Trace> traces = FindTraces(app_.Running(), secret_);
        std::cout << "[ measured ] " << when << ": " << Describe(traces) << '\n';
        return traces;
    }

    /// Closes the program and stops it behind the end of its main function.
    void CloseAndStop() const {
        StopAtExit(app_.Running());
        PostMessageW(app_.Main(), WM_CLOSE, 0, 0);
        AwaitStop(app_.Running());
    }

    /// No window and no control of the program, shown or not, has a part of the password (5 characters) in its
    /// text.
    void ExpectNoWindowToHoldAny() const {
        const std::vector<HWND> windows = Process::AllBeside(app_.Main());
        for (const int id : {ids::txtText, ids::txtSetup, ids::StatusBar1})
            EXPECT_NE(std::find(windows.begin(), windows.end(), app_.Control(id)), windows.end()) << id;
        for (const HWND window : windows) {
            const std::wstring text = TextOf(window);
            bool holds = false;
            for (std::size_t at = 0; at + 5 <= secret_.size(); ++at)
                holds = holds || text.find(secret_.substr(at, 5)) != std::wstring::npos;
            EXPECT_FALSE(holds) << "the window with the identifier " << GetDlgCtrlID(window);
        }
    }

    void PullOntoTarget() {
        app_.Activate();
        target_.PullHere(pointer_, CentreOf(app_.PasswordBox()));
    }

    void DragAndExpectNone() {
        PullOntoTarget();
        Scan("in the middle of a drag");
        ExpectNoWindowToHoldAny();
        pointer_.Release();
        Await("the drop arrives", [&] { return target_.Drops() == 1; });
        EXPECT_EQ(target_.Text(), secret_);
        Await("the box is empty", [&] { return app_.Text(ids::txtPassword).empty(); });
        // A target may read for two seconds after the drop.
        static_cast<void>(WaitFor([&] { return FindTraces(app_.Running(), secret_).empty(); }, Milliseconds(2500)));
        EXPECT_EQ(Scan("after a drag").size(), 0U);
        CloseAndStop();
        EXPECT_EQ(Scan("after a drag, closed").size(), 0U);
    }

    DWORD clipboard_ = 0;
    const std::wstring secret_ = RandomSecret(secretLength);
    // First, so that the program is in the foreground.
    const Target target_;
    const Sandbox sandbox_;
    Pointer pointer_;
    const App app_;
};

TEST_F(Traces, AreOneWhileThePasswordIsMaskedAndNoneAfterClear) {
    {
        const std::string wide(reinterpret_cast<const char*>(secret_.data()), secret_.size() * sizeof(wchar_t));
        const std::string narrow = Narrow(secret_);
        for (const std::string& planted : {wide, narrow, std::string(wide.rbegin(), wide.rend()),
                                           std::string(narrow.rbegin(), narrow.rend()), narrow.substr(3, 8)}) {
            const RemoteMemory memory(app_.Running(), 4096);
            memory.Write(planted.data(), planted.size());
            const auto traces = FindTraces(app_.Running(), secret_);
            ASSERT_EQ(traces.size(), 2U) << "the scan misses what is planted: " << Describe(traces);
        }
    }
    const auto held = Scan("typed and held, masked");
    ASSERT_EQ(held.size(), 1U);
    EXPECT_EQ(held[0].characters, secretLength);

    ExpectNoWindowToHoldAny();

    app_.Command(ids::toolClear);
    Await("the box is empty", [&] { return app_.Text(ids::txtPassword).empty(); });
    EXPECT_EQ(Scan("after Clear").size(), 0U);
}

TEST_F(Traces, AreNoneOnceTheProgramHasClosed) {
    CloseAndStop();
    EXPECT_EQ(Scan("closed with the password held, masked").size(), 0U);
}

TEST_F(Traces, AreNoneAfterAnInjectionThatTakesThePasswordAway) {
    app_.Command(ids::mnuOptionsInjectMode);
    pointer_.Drag(CentreOf(app_.PasswordBox()), CentreOf(target_.Field(target::editField)));
    Await("the characters arrive", [&] { return target_.TypedCharacters() == secret_; });
    Await("the box is empty", [&] { return app_.Text(ids::txtPassword).empty(); });
    EXPECT_EQ(Scan("after an injection").size(), 0U);
    CloseAndStop();
    EXPECT_EQ(Scan("after an injection, closed").size(), 0U);
}

TEST_F(Traces, AfterADragAreNone) {
    DragAndExpectNone();
}

/// Onto a target that asks for the text at entry, whenever the pointer moves over it, and at the drop.
class TracesOfAskingAgain : public Traces {
  protected:
    TracesOfAskingAgain()
        : Traces(L"--topmost --read=always") {}
};

TEST_F(TracesOfAskingAgain, AfterADragAreNone) {
    DragAndExpectNone();
}

TEST_F(Traces, AreNoneWhenTheSessionHasEndedInTheMiddleOfADrag) {
    PullOntoTarget();
    EXPECT_EQ(Ask(app_.Main(), WM_QUERYENDSESSION), TRUE);
    Ask(app_.Main(), WM_ENDSESSION, FALSE);
    EXPECT_EQ(app_.Text(ids::txtPassword).size(), secretLength) << "another program has kept the session from ending";
    Ask(app_.Main(), WM_ENDSESSION, TRUE);
    EXPECT_EQ(Scan("the session ends during a drag").size(), 0U);
    EXPECT_EQ(app_.Text(ids::txtPassword), L"");
    pointer_.Release();
}

TEST_F(Traces, AfterThePlainViewAreNoneOnceTheMaskIsBackAndTheTextCleared) {
    app_.Command(ids::mnuViewPasswordMask);
    Await("the plain box is filled", [&] {
        return app_.Visible(ids::txtText) && Ask(app_.Control(ids::txtText), WM_GETTEXTLENGTH) == secretLength;
    });
    Scan("in the plain view");
    app_.Command(ids::mnuViewPasswordMask);
    Await("the masked box is shown, the plain one empty",
          [&] { return app_.Visible(ids::txtPassword) && Ask(app_.Control(ids::txtText), WM_GETTEXTLENGTH) == 0; });
    EXPECT_EQ(Scan("masked again").size(), 1U);
    app_.Command(ids::toolClear);
    Await("the box is empty", [&] { return app_.Text(ids::txtPassword).empty(); });
    EXPECT_EQ(Scan("after the plain view, cleared").size(), 0U);
    CloseAndStop();
    EXPECT_EQ(Scan("after the plain view, closed").size(), 0U);
}

TEST_F(Traces, OfWhatWasDeletedInThePlainViewAreNoneOnceTheMaskIsBack) {
    app_.Command(ids::mnuViewPasswordMask);
    Await("the plain box is filled", [&] { return Ask(app_.Control(ids::txtText), WM_GETTEXTLENGTH) == secretLength; });
    Ask(app_.Control(ids::txtText), EM_SETSEL, 0, -1);
    PostMessageW(app_.Control(ids::txtText), WM_KEYDOWN, VK_DELETE, 0);
    Await("the plain box is empty", [&] { return Ask(app_.Control(ids::txtText), WM_GETTEXTLENGTH) == 0; });
    app_.Command(ids::mnuViewPasswordMask);
    Await("the masked box is shown", [&] { return app_.Visible(ids::txtPassword); });
    EXPECT_EQ(Scan("deleted in the plain view, masked again").size(), 0U);
}

/// What assistive programs are told of the program's windows meanwhile.
class Events {
  public:
    explicit Events(const Process& process)
        : hook_(SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, &Note, process.Id(), 0, WINEVENT_OUTOFCONTEXT)) {
        Check(hook_ != nullptr, "SetWinEventHook");
        noted_.clear();
    }
    ~Events() { UnhookWinEvent(hook_); }
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;

    /// Which event has named the control of which identifier; they come while this thread takes messages.
    static const std::vector<std::pair<DWORD, int>>& Noted() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        return noted_;
    }

  private:
    static void CALLBACK Note(HWINEVENTHOOK, DWORD event, HWND window, LONG, LONG, DWORD, DWORD) noexcept {
        noted_.emplace_back(event, GetDlgCtrlID(window));
    }
    static inline std::vector<std::pair<DWORD, int>> noted_;
    HWINEVENTHOOK hook_;
};

TEST(Accessibility, HearsOfNoticesAndOfNoKeyThatIsEntered) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    const Events events(app.Running());
    const auto named = [](int first, int last) {
        const auto& all = Events::Noted();
        return std::any_of(all.begin(), all.end(),
                           [&](const auto& noted) { return noted.second >= first && noted.second <= last; });
    };
    const auto alerts = [] {
        const auto& all = Events::Noted();
        return std::count(all.begin(), all.end(), std::pair(DWORD{EVENT_SYSTEM_ALERT}, ids::StatusBar1));
    };
    app.ClickPassword(pointer, L"qW1");
    PostMessageW(app.FindKey(L"z"), WM_LBUTTONDOWN, 0, 0);
    PostMessageW(app.FindKey(L"z"), WM_LBUTTONUP, 0, 0);
    Await("a click beside the layer enters a character", [&] { return app.Text(ids::txtPassword).size() == 4; });
    EXPECT_FALSE(named(ids::firstKey, ids::lastKey));
    // Of what the system tells by itself, Wine has hardly more than the focus; that a key's would be seen it proves.
    Keys::Stroke(VK_TAB);
    Await("the focus is heard of", [&] { return named(ids::sldTransparency, ids::sldTransparency); });
    EXPECT_EQ(alerts(), 0);
    PostMessageW(app.Main(), WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK, 0);
    Await("the notice is heard of", [&] { return alerts() == 1; });
    EXPECT_EQ(app.Text(ids::StatusBar1), L"Cleared: the session was locked");
    app.ClickPassword(pointer, L"a");
    EXPECT_TRUE(app.Text(ids::StatusBar1).starts_with(L"Standard"));
    EXPECT_EQ(alerts(), 1);
}

TEST(Absence, OfAMinuteClearsWhateverIsPosted) {
    const Sandbox sandbox;
    sandbox.SetSetting(L"Clear after Minutes", L"1");
    const App app(sandbox);
    Pointer pointer;
    Keys::Stroke('A');
    static_cast<void>(WaitFor([] { return false; }, Milliseconds(5000)));
    pointer.MoveTo(CentreOf(app.PasswordBox()));
    const ULONGLONG lastMs = GetTickCount64();
    const auto cleared = [&] {
        PostMessageW(app.Main(), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
        PostMessageW(app.PasswordBox(), WM_KEYDOWN, VK_END, 1);
        return app.Text(ids::StatusBar1) == L"Cleared after 1 minute without input";
    };
    EXPECT_TRUE(WaitFor(cleared, Milliseconds(70000)));
    EXPECT_GE(GetTickCount64() - lastMs, 59000U);
    EXPECT_EQ(app.Text(ids::txtPassword), L"");
}

} // namespace
} // namespace vextrel::driver
