// What other programs can do to the running program and see of it, and what planted libraries do.
#include "core/ids.h"
#include "driver/Target.h"
#include "faults/FaultyApp.h"

#include <gtest/gtest.h>

#include <memory>

namespace vextrel::driver {
namespace {

/// What an owner may do to the access list itself is among the claims: Wine knows no entry for owners.
TEST(OtherPrograms, MaySeeAndEndTheProgramButNotReachIntoItUnlessTheUserAllowsIt) {
    for (const bool hardened : {true, false}) {
        const Sandbox sandbox;
        sandbox.SetSetting(L"Harden Process", hardened ? L"True" : L"False");
        const App app(sandbox);
        const auto opens = [](HANDLE opened) { return opened != nullptr && CloseHandle(opened) != FALSE; };
        const DWORD id = app.Running().Id();
        EXPECT_TRUE(opens(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE | PROCESS_TERMINATE, FALSE, id)));
        for (const int right : {PROCESS_VM_READ, PROCESS_VM_WRITE, PROCESS_VM_OPERATION, PROCESS_CREATE_THREAD,
                                PROCESS_DUP_HANDLE, PROCESS_SUSPEND_RESUME})
            EXPECT_EQ(opens(OpenProcess(static_cast<DWORD>(right), FALSE, id)), !hardened) << right;
        const DWORD thread = GetWindowThreadProcessId(app.Main(), nullptr);
        EXPECT_EQ(opens(OpenThread(THREAD_SET_CONTEXT, FALSE, thread)), !hardened);
    }
}

/// Of the file's other faults, one that is read-only is among the claims: not every system keeps to it.
TEST(OtherPrograms, ThatLockTheFileOrHangInADragCostNothingAndShowNothing) {
    const Sandbox sandbox(L"\u4E2D\u6587 \u0416");
    const Target target;
    const App app(sandbox);
    Await("the first value is written", [&] { return sandbox.Setting(L"Transparency") == L"252"; });
    HANDLE lock = nullptr;
    Await("another program locks the file", [&, file = sandbox.Folder() / Sandbox::settingsName] {
        lock = CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        return lock != INVALID_HANDLE_VALUE;
    });
    app.Switch(ids::mnuOptionsBeepOnHover, true);

    Pointer pointer;
    target.KeepClearOf(BoundsOf(app.Main()));
    app.ClickPassword(pointer, L"ab");
    target.PullHere(pointer, CentreOf(app.PasswordBox()));
    SuspendThread(target.Running().MainThread());
    pointer.Release();
    TerminateProcess(target.Running().Handle(), 0);
    app.AwaitEndOfDrag();
    EXPECT_EQ(app.Shown(), L"**") << "the target hung and ended";
    Await("its two windows are all that is shown",
          [&] { return app.Running().Windows(formClass).size() == 2 && !app.Running().Window(dialogClass); });
    EXPECT_EQ(app.Close(), 0U);
    CloseHandle(lock);
    EXPECT_EQ(sandbox.Read(), "[Settings]\r\nTransparency=252\r\n");
}

TEST(ScreenCapture, IsDeniedOfEveryWindowBeforeItIsSeenUnlessTheUserAllowsIt) {
    for (const auto& [system, allowed, expected] : {std::tuple{L"", L"False", WDA_EXCLUDEFROMCAPTURE},
                                                    {faults::olderCapture, L"False", WDA_MONITOR},
                                                    {L"", L"True", WDA_NONE}}) {
        SCOPED_TRACE(expected);
        SetEnvironmentVariableW(faults::faultAtStart, system);
        const Sandbox sandbox({}, L"vextrel_faults.exe");
        sandbox.SetSetting(L"Allow Screen Capture", allowed);
        const App app(sandbox);
        SetEnvironmentVariableW(faults::faultAtStart, nullptr);
        Pointer pointer;
        app.ClickPassword(pointer, L"a");
        const POINT box = CentreOf(app.PasswordBox());
        const auto shown = [&] {
            std::vector<HWND> windows = Process::AllBeside(app.Main());
            std::erase_if(windows, [](HWND w) { return !IsWindowVisible(w) || GetAncestor(w, GA_ROOT) != w; });
            return windows;
        };
        const std::pair<const char*, std::function<void()>> steps[] = {
            {"About", [&] { app.Command(ids::mnuHelpAbout); }},
            {"a message box", [&] { app.Command(ids::mnuModeHiddenMouseAndHover); }},
            {"a file dialog", [&] { app.Command(ids::mnuKeyboardLayoutImport); }},
            {"a menu", [&] { PostMessageW(app.PasswordBox(), WM_CONTEXTMENU, 0, MAKELPARAM(box.x, box.y)); }},
            {"a tool tip", [&] { pointer.MoveTo(app.ToolPlace(ids::toolClear), 5, Milliseconds(20)); }},
            {"the drag's hint", [&] { pointer.Pull(box, POINT()); }},
        };
        for (const auto& [name, show] : steps) {
            app.Activate();
            show();
            Await(name, [&] { return shown().size() > 2; });
            for (const HWND window : shown()) {
                const auto asked = reinterpret_cast<UINT_PTR>(GetPropW(window, faults::affinityProperty));
                EXPECT_EQ(asked, static_cast<UINT_PTR>(expected)) << name;
                PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
            }
            Ask(app.Main(), WM_CANCELMODE);
            pointer.Release();
            pointer.MoveTo({0, 0});
            Await(std::string(name) + " has gone", [&] { return shown().size() == 2; });
        }
    }
}

TEST(PlantedLibraries, BesideTheProgramAreNotLoaded) {
    const Sandbox sandbox;
    sandbox.SetSetting(L"Harden Process", L"False"); // it would keep them out by itself
    CopyFileW((OwnFolder() / L"vextrel_planted.dll").c_str(), (sandbox.Folder() / L"comdlg32.dll").c_str(), TRUE);
    // Wine takes its own libraries wherever a program looks, unless it is told otherwise.
    const auto forget = [](const wchar_t* key) { RegDeleteTreeW(HKEY_CURRENT_USER, key); };
    const std::unique_ptr<const wchar_t, decltype(forget)> told(L"Software\\Wine\\AppDefaults\\vextrel.exe", forget);
    RegSetKeyValueW(HKEY_CURRENT_USER, (told.get() + std::wstring(L"\\DllOverrides")).c_str(), L"comdlg32", REG_SZ,
                    L"native,builtin", 30);
    const App app(sandbox);
    app.Command(ids::mnuKeyboardLayoutImport);
    app.Dismiss(app.AwaitDialog(), IDCANCEL);
    EXPECT_FALSE(sandbox.Read(L"comdlg32.dll.loaded"));
}

} // namespace
} // namespace vextrel::driver
