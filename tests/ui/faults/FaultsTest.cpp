// What goes wrong around the program while it runs: what the user sees of it, and what is kept.
#include "core/ids.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

/// Nothing but its two windows: no error, no question.
void AwaitUndisturbed(const App& app) {
    Await("nothing is reported",
          [&] { return app.Running().Windows(formClass).size() == 2 && !app.Running().Window(dialogClass); });
}

/// Of other faults of the file one that is read-only is among the claims: not every system keeps to it.
TEST(Faults, OfTheSettingsFileKeepTheOptionForTheRunAndShowNothing) {
    const Sandbox sandbox(L"\u4E2D\u6587 \u0416");
    const App app(sandbox);
    Await("the first value is written", [&] { return sandbox.Setting(L"Transparency") == L"252"; });
    HANDLE lock = nullptr;
    Await("another program locks the file", [&, file = sandbox.Folder() / Sandbox::settingsName] {
        lock = CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        return lock != INVALID_HANDLE_VALUE;
    });
    app.Switch(ids::mnuOptionsBeepOnHover, true);
    AwaitUndisturbed(app);
    EXPECT_EQ(app.Close(), 0U);
    CloseHandle(lock);
    EXPECT_EQ(sandbox.Read(), "[Settings]\r\nTransparency=252\r\n");
}

TEST(Faults, OfADropTargetKeepThePassword) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    app.ClickPassword(pointer, L"ab");
    for (const bool hangs : {false, true}) {
        SCOPED_TRACE(hangs ? "hangs, then ends" : "ends");
        const Target target;
        target.KeepClearOf(BoundsOf(app.Main()));
        app.Activate();
        target.PullHere(pointer, CentreOf(app.PasswordBox()));
        if (hangs) {
            SuspendThread(target.Running().MainThread());
            pointer.Release();
        }
        TerminateProcess(target.Running().Handle(), 0);
        if (!hangs)
            pointer.Release();
        app.AwaitEndOfDrag();
        AwaitUndisturbed(app);
        EXPECT_EQ(app.Shown(), L"**");
    }
}

} // namespace
} // namespace vextrel::driver
