// What other programs can do to the running program and see of it, and what planted libraries do.
#include "core/ids.h"
#include "faults/FaultyApp.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

/// What an owner may do to the access list itself is among the claims: Wine knows no entry for owners.
TEST(OtherPrograms, MaySeeAndEndTheProgramButNotReachIntoItUnlessTheUserAllowsIt) {
    for (const bool hardened : {true, false}) {
        const Sandbox sandbox;
        sandbox.SetSetting(L"Harden Process", hardened ? L"True" : L"False");
        const App app(sandbox);
        const auto mayOpen = [&](long right) {
            const HANDLE opened = OpenProcess(static_cast<DWORD>(right), FALSE, app.Running().Id());
            return opened != nullptr && CloseHandle(opened) != FALSE;
        };
        for (const long right : {long{PROCESS_QUERY_LIMITED_INFORMATION}, SYNCHRONIZE, long{PROCESS_TERMINATE}})
            EXPECT_TRUE(mayOpen(right)) << right;
        for (const int right : {PROCESS_VM_READ, PROCESS_VM_WRITE, PROCESS_VM_OPERATION, PROCESS_CREATE_THREAD,
                                PROCESS_DUP_HANDLE, PROCESS_SUSPEND_RESUME})
            EXPECT_EQ(mayOpen(right), !hardened) << right;
    }
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
            {"the drag's hint",
             [&] {
                 pointer.Pull(box, {5, 5});
             }},
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

/// Two that the program loads by name; of all others Wine takes its own wherever the program looks.
TEST(PlantedLibraries, BesideTheProgramAreNotLoaded) {
    const Sandbox sandbox;
    for (const wchar_t* name : {L"winmm.dll", L"comdlg32.dll", L"trap.dll"})
        CopyFileW((OwnFolder() / L"vextrel_planted.dll").c_str(), (sandbox.Folder() / name).c_str(), TRUE);
    sandbox.Write("RIFF", L"beep.wav");
    const wchar_t* usual = _wgetenv(L"WINEDLLOVERRIDES");
    SetEnvironmentVariableW(L"WINEDLLOVERRIDES", L"winmm,comdlg32=n,b");
    const App app(sandbox);
    SetEnvironmentVariableW(L"WINEDLLOVERRIDES", usual);
    app.Command(ids::mnuKeyboardLayoutImport);
    app.Dismiss(app.AwaitDialog(), IDCANCEL);
    app.Switch(ids::mnuOptionsBeepOnHover, true);
    app.Switch(ids::mnuModeHover, true);
    Pointer().MoveTo(CentreOf(app.FindKey(L"k")));
    app.AwaitLength(1); // with a beep
    EXPECT_FALSE(sandbox.Read(L"winmm.dll.loaded") || sandbox.Read(L"comdlg32.dll.loaded"));
    FreeLibrary(LoadLibraryW((sandbox.Folder() / L"trap.dll").c_str()));
    EXPECT_TRUE(sandbox.Read(L"trap.dll.loaded")) << "what is planted does not tell";
}

} // namespace
} // namespace vextrel::driver
