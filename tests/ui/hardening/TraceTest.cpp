// What is left of a password in the program's memory, measured from outside, and when it goes by itself.
#include "core/ids.h"
#include "driver/MemoryScan.h"
#include "driver/Remote.h"
#include "driver/Stage.h"
#include "faults/FaultyApp.h"

#include <gtest/gtest.h>

#include <iostream>

namespace vextrel::driver {
namespace {

/// The program with a random password typed on its keys, and a target that asks for what is dragged whenever it can.
struct Secret : Stage {
    Secret()
        : Stage({}, L"--topmost --read=always") {
        // Under Wine, a service that comes late to a new desktop makes the first entry.
        Await("the clipboard is in service", [] { return GetClipboardSequenceNumber() != 0; });
        clipboard = GetClipboardSequenceNumber();
        Enter();
    }
    ~Secret() { EXPECT_EQ(GetClipboardSequenceNumber(), clipboard) << "the clipboard was written"; }

    void Enter() {
        app->Activate();
        app->ClickPassword(pointer, secret);
    }
    [[nodiscard]] std::size_t Traces(const std::string& when) const {
        Ask(app->Main(), WM_NULL); // what it was told is done
        const std::vector<Trace> traces = FindTraces(app->Running(), secret);
        std::cout << "[ measured ] " << when << ": " << Describe(traces) << '\n';
        return traces.size();
    }

    DWORD clipboard = 0;
    const std::wstring secret = RandomSecret(24);
};

TEST(Traces, AreOneWhileThePasswordIsMaskedAndNoneOnceItHasGone) {
    Secret stage;
    const App& app = *stage.app;
    const std::string wide(reinterpret_cast<const char*>(stage.secret.data()), stage.secret.size() * sizeof(wchar_t));
    const std::string narrow = Narrow(stage.secret);
    for (const std::string& planted : {wide, std::string(wide.rbegin(), wide.rend()), narrow,
                                       std::string(narrow.rbegin(), narrow.rend()), narrow.substr(3, 8)}) {
        const RemoteMemory memory(app.Running(), 4096);
        memory.Write(planted.data(), planted.size());
        ASSERT_EQ(stage.Traces("one planted"), 2U) << "the scan misses it";
    }
    EXPECT_EQ(stage.Traces("masked"), 1U);
    app.Mask(false);
    app.AwaitShown(stage.secret);
    app.Mask(true);
    EXPECT_EQ(stage.Traces("masked again"), 1U);
    app.Restart(false);
    EXPECT_EQ(stage.Traces("cleared"), 0U);

    stage.Enter();
    app.Select(0, -1);
    PostMessageW(app.PasswordBox(), WM_KEYDOWN, VK_DELETE, 0);
    app.AwaitShown({});
    app.Mask(true);
    EXPECT_EQ(stage.Traces("deleted in the plain view, masked again"), 0U);
    stage.Enter();
    StopAtExit(app.Running()); // behind the end of its main function
    PostMessageW(app.Main(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return FindTraces(app.Running(), stage.secret).empty(); }));
}

TEST(TracesOfATransfer, AreNoneWhenItHasTakenThePasswordAway) {
    Secret stage;
    const App& app = *stage.app;
    app.Switch(ids::mnuOptionsInjectMode, true);
    stage.target.PullHere(stage.pointer, CentreOf(app.PasswordBox())); // crossed on the way
    stage.pointer.MoveTo(CentreOf(stage.target.Field(target::editField)), 10, Pointer::dragPace);
    stage.pointer.Release();
    app.AwaitShown({});
    EXPECT_EQ(stage.Traces("after an injection"), 0U);

    app.Switch(ids::mnuOptionsDragDrop, true);
    stage.Enter();
    EXPECT_EQ(stage.Dragged(), stage.secret);
    app.AwaitShown({});
    // The target may read for two seconds after the drop.
    EXPECT_TRUE(WaitFor([&] { return stage.Traces("after a drag") == 0; }));

    stage.Enter();
    stage.target.PullHere(stage.pointer, CentreOf(app.PasswordBox()));
    for (const HWND window : Process::AllBeside(app.Main()))
        for (std::size_t at = 0; at + 5 <= stage.secret.size(); ++at)
            EXPECT_EQ(TextOf(window).find(stage.secret.substr(at, 5)), std::wstring::npos) << GetDlgCtrlID(window);
    EXPECT_EQ(Ask(app.Main(), WM_QUERYENDSESSION), TRUE);
    Ask(app.Main(), WM_ENDSESSION, FALSE);
    EXPECT_EQ(app.Shown().size(), stage.secret.size()) << "another program has kept the session from ending";
    Ask(app.Main(), WM_ENDSESSION, TRUE);
    EXPECT_EQ(stage.Traces("the session ends during a drag"), 0U);
}

TEST(Absence, OfAMinuteClearsWhateverIsPosted) {
    SetEnvironmentVariableW(faults::faultAtStart, faults::fastClock);
    const Sandbox sandbox({}, L"vextrel_faults.exe");
    sandbox.SetSetting(L"Clear after Minutes", L"1");
    const App app(sandbox);
    SetEnvironmentVariableW(faults::faultAtStart, nullptr);
    Keys::Stroke('A');
    app.AwaitLength(1);
    const ULONGLONG lastInputMs = GetTickCount64();
    const auto clears = [&] {
        PostMessageW(app.Main(), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
        PostMessageW(app.PasswordBox(), WM_KEYDOWN, VK_END, 1);
        return app.Text(ids::StatusBar1) == L"Cleared after 1 minute without input";
    };
    EXPECT_TRUE(WaitFor(clears));
    // The program's start, at least half a second before the key, does not count.
    EXPECT_GE((GetTickCount64() - lastInputMs) * faults::clockRate, 55000U);
    app.AwaitLength(0);
}

} // namespace
} // namespace vextrel::driver
