// What is left of a password in the program's memory, measured from outside in the real program.
#include "driver/App.h"
#include "driver/MemoryScan.h"
#include "driver/Remote.h"
#include "driver/Target.h"
#include "ui/ids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

namespace vextrel::driver {
namespace {

constexpr std::size_t secretLength = 24;

/// The program with a random password typed on its keys, and the memory scan.
class Traces : public testing::Test {
  protected:
    explicit Traces()
        : app_(sandbox_) {
        target_.KeepClearOf(BoundsOf(app_.Main()));
        app_.ClickPassword(pointer_, secret_);
    }

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

    const std::wstring secret_ = RandomSecret(secretLength);
    // First, so that the program is in the foreground.
    const Target target_{L"--topmost"};
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

    EnumChildWindows(
        app_.Main(),
        [](HWND control, LPARAM secret) -> BOOL {
            const std::wstring text = TextOf(control);
            EXPECT_EQ(text.find(*reinterpret_cast<const std::wstring*>(secret)), std::wstring::npos);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&secret_));

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

TEST_F(Traces, AfterADragAreNoneAndTheClipboardIsUntouched) {
    const DWORD clipboard = GetClipboardSequenceNumber();
    pointer_.Drag(CentreOf(app_.PasswordBox()), CentreOf(target_.Field(target::dropField)));
    Await("the drop arrives", [&] { return target_.Drops() == 1; });
    EXPECT_EQ(target_.Text(), secret_);
    Await("the box is empty", [&] { return app_.Text(ids::txtPassword).empty(); });
    EXPECT_EQ(Scan("after a drag").size(), 0U);
    CloseAndStop();
    EXPECT_EQ(Scan("after a drag, closed").size(), 0U);
    EXPECT_EQ(GetClipboardSequenceNumber(), clipboard);
}

TEST_F(Traces, AfterThePlainViewAreNoneOnceTheMaskIsBackAndTheTextCleared) {
    app_.Command(ids::mnuViewPasswordMask);
    Await("the plain box is shown", [&] { return app_.Visible(ids::txtText); });
    Scan("in the plain view");
    app_.Command(ids::mnuViewPasswordMask);
    Await("the masked box is shown", [&] { return app_.Visible(ids::txtPassword); });
    EXPECT_EQ(Scan("masked again").size(), 1U);
    app_.Command(ids::toolClear);
    Await("the box is empty", [&] { return app_.Text(ids::txtPassword).empty(); });
    EXPECT_EQ(Scan("after the plain view, cleared").size(), 0U);
    CloseAndStop();
    EXPECT_EQ(Scan("after the plain view, closed").size(), 0U);
}

} // namespace
} // namespace vextrel::driver
