// What goes wrong around the program while it runs: what the user sees of it, and what is kept.
#include "core/ids.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

/// Of the file's other faults, one that is read-only is among the claims: not every system keeps to it.
TEST(Faults, OfFileAndTargetCostNothingAndShowNothing) {
    const Sandbox sandbox(L"\u4E2D\u6587 \u0416");
    const App app(sandbox);
    const auto awaitUndisturbed = [&] {
        Await("its two windows are all that is shown",
              [&] { return app.Running().Windows(formClass).size() == 2 && !app.Running().Window(dialogClass); });
    };
    Await("the first value is written", [&] { return sandbox.Setting(L"Transparency") == L"252"; });
    HANDLE lock = nullptr;
    Await("another program locks the file", [&, file = sandbox.Folder() / Sandbox::settingsName] {
        lock = CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        return lock != INVALID_HANDLE_VALUE;
    });
    app.Switch(ids::mnuOptionsBeepOnHover, true);
    awaitUndisturbed();

    Pointer pointer;
    app.ClickPassword(pointer, L"ab");
    for (const bool hangs : {false, true}) {
        const Target target;
        target.KeepClearOf(BoundsOf(app.Main()));
        app.Activate();
        target.PullHere(pointer, CentreOf(app.PasswordBox()));
        if (hangs) {
            SuspendThread(target.Running().MainThread());
            pointer.Release();
        }
        TerminateProcess(target.Running().Handle(), 0);
        pointer.Release();
        app.AwaitEndOfDrag();
        awaitUndisturbed();
        EXPECT_EQ(app.Shown(), L"**") << (hangs ? "hangs, then ends" : "ends");
    }
    EXPECT_EQ(app.Close(), 0U);
    CloseHandle(lock);
    EXPECT_EQ(sandbox.Read(), "[Settings]\r\nTransparency=252\r\n");
}

} // namespace
} // namespace vextrel::driver
