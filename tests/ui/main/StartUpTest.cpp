#include "driver/App.h"
#include "driver/Target.h"
#include "main/KeyHook.h"

#include <gtest/gtest.h>

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

TEST(StartUp, TakesTheDefaultsAndSwallowsPrintScreenUntilTheEnd) {
    const Target somewhereToType;
    std::optional<KeyHook> hook(std::in_place, &CountKeys);
    ASSERT_TRUE(PrintScreenComes());
    const Sandbox sandbox;
    const App app(sandbox);
    EXPECT_FALSE(PrintScreenComes());
    // Windows may remove the program's hook and tell nobody, so it is made anew, each half minute.
    hook.reset();
    hook.emplace(&CountKeys);
    EXPECT_TRUE(PrintScreenComes());
    Await(
        "Print Screen is swallowed again", [] { return !PrintScreenComes(); }, Milliseconds(60000));
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
        const Sandbox sandbox({}, L"vextrel_faults.exe"); // shows its window as Windows would
        const Process process(sandbox.Program(), {}, show);
        const HWND main = process.AwaitWindow(formClass, L"Vextrel");
        static_cast<void>(process.AwaitWindow(formClass, L"")); // the layer
        EXPECT_FALSE(IsZoomed(main));
        EXPECT_FALSE(IsIconic(main));
        PostMessageW(main, WM_CLOSE, 0, 0);
        EXPECT_EQ(process.ExitCode(), 0U);
    }
}

TEST(SettingsFile, NeverStopsTheProgram) {
    const std::string good = "[Settings]\r\nTransparency=100\r\n";
    std::string large = good;
    large.resize(10'000'000, 'x');
    const std::tuple<std::string, DWORD, int> rows[] = {
        {std::string("\0\xFF[Settings\x80]=\r\0\n", 17), FILE_SHARE_READ | FILE_SHARE_WRITE, 252},
        {large, FILE_SHARE_READ | FILE_SHARE_WRITE, 100},
        {good, 0, 252}, // nobody else may read it
    };
    for (const auto& [bytes, shared, alpha] : rows) {
        SCOPED_TRACE(alpha);
        const Sandbox sandbox;
        sandbox.Write(bytes);
        const HANDLE file = CreateFileW((sandbox.Folder() / Sandbox::settingsName).c_str(), GENERIC_READ, shared,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        const App app(sandbox);
        BYTE now = 0;
        Await("it is as opaque as the file says, or as a new one",
              [&] { return GetLayeredWindowAttributes(app.Main(), nullptr, &now, nullptr) != FALSE && now == alpha; });
        EXPECT_EQ(app.Close(), 0U);
        CloseHandle(file);
    }
}

} // namespace
} // namespace vextrel::driver
