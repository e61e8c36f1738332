#include "driver/App.h"
#include "driver/Target.h"
#include "main/KeyHook.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

namespace vextrel::driver {
namespace {

std::atomic<int> printScreens;
std::atomic<int> marks;

bool CountKeys(DWORD key, bool up) {
    printScreens += up && key == VK_SNAPSHOT;
    marks += up && key == VK_F24;
    return key == VK_SNAPSHOT; // Windows' own answer to it is in nobody's way
}

/// Presses Print Screen and then a key that nobody swallows; whether the first one came past the program.
bool PrintScreenComes() {
    printScreens = 0;
    marks = 0;
    Keys::Stroke(VK_SNAPSHOT);
    Keys::Stroke(VK_F24);
    Await("the second key comes", [] { return marks == 1; });
    return printScreens > 0;
}

/// Posts a timer's message of no window to every thread of a program that takes messages.
void PostTimerToThreadsOf(const Process& program) {
    const HANDLE threads = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL more = Thread32First(threads, &thread); more; more = Thread32Next(threads, &thread))
        if (thread.th32OwnerProcessID == program.Id())
            PostThreadMessageW(thread.th32ThreadID, WM_TIMER, 0, 0);
    CloseHandle(threads);
}

TEST(StartUp, TakesTheDefaultsAndSwallowsPrintScreenUntilTheEnd) {
    const Target somewhereToType;
    std::optional<KeyHook> hook(std::in_place, &CountKeys);
    ASSERT_TRUE(PrintScreenComes());
    const Sandbox sandbox;
    const App app(sandbox);
    EXPECT_FALSE(PrintScreenComes());
    // Windows may remove the program's hook and tell nobody, so it is made anew. Its thread is the one that takes the
    // timer's message, sent here before its time.
    hook.reset();
    hook.emplace(&CountKeys);
    EXPECT_TRUE(PrintScreenComes());
    PostTimerToThreadsOf(app.Running());
    Await("Print Screen is swallowed again", [] { return !PrintScreenComes(); });
    // Nothing that the rest of the program does, such as playing a sound, makes a key wait.
    SuspendThread(app.Running().MainThread());
    EXPECT_FALSE(PrintScreenComes());
    ResumeThread(app.Running().MainThread());

    Await("the first value is written", [&] { return sandbox.Read() == "[Settings]\r\nTransparency=252\r\n"; });
    app.AwaitLayerAlpha(5);
    EXPECT_EQ(app.Close(), 0U);
    EXPECT_TRUE(PrintScreenComes());
}

TEST(StartUp, WithoutHooksLeavesPrintScreenAloneAndShowsTheLayer) {
    const KeyHook hook(&CountKeys);
    const Sandbox sandbox({}, L"vextrel_unhooked.exe");
    const App app(sandbox);
    app.AwaitLayerAlpha(100);
    EXPECT_TRUE(PrintScreenComes());
}

TEST(StartUp, OpensNormallyHoweverAShortcutShowsIt) {
    for (const WORD show : {WORD{SW_SHOWMAXIMIZED}, WORD{SW_SHOWMINNOACTIVE}}) {
        SCOPED_TRACE(show);
        const Sandbox sandbox({}, L"vextrel_faults.exe");
        const Process process(sandbox.Program(), {}, show);
        const HWND main = process.AwaitWindow(formClass, L"Vextrel");
        Await("the layer is shown", [&] { return process.Window(formClass, L"") != nullptr; });
        EXPECT_FALSE(IsZoomed(main) || IsIconic(main));
    }
}

TEST(SettingsFile, NeverStopsTheProgram) {
    const std::string good = "[Settings]\r\nTransparency=100\r\n";
    const std::wstring wide = L"\uFEFF[Settings]\r\nTransparency=100\r\n";
    std::string large = good;
    large.resize(10'000'000, 'x');
    const struct {
        const char* name;
        std::string bytes;
        int alpha; ///< 252 where nothing can be read
        DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    } rows[] = {
        {"binary", std::string("\0\xFF[Settings\x80]=\r\0\n", 17), 252},
        {"10 MB", large, 100},
        {"UTF-16", {reinterpret_cast<const char*>(wide.data()), 2 * wide.size()}, 100},
        {"locked", good, 252, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Sandbox sandbox;
        sandbox.Write(row.bytes);
        const HANDLE file = CreateFileW((sandbox.Folder() / Sandbox::settingsName).c_str(), GENERIC_READ, row.shared,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        const App app(sandbox);
        BYTE alpha = 0;
        EXPECT_TRUE(WaitFor([&] {
            return GetLayeredWindowAttributes(app.Main(), nullptr, &alpha, nullptr) && alpha == row.alpha;
        })) << int{alpha};
        EXPECT_EQ(app.Close(), 0U);
        CloseHandle(file);
    }
}

} // namespace
} // namespace vextrel::driver
