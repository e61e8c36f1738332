#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

#include <tlhelp32.h>

namespace vextrel::driver {
namespace {

int AlphaOf(HWND window) {
    COLORREF key = 0;
    BYTE alpha = 0;
    DWORD flags = 0;
    const bool layered = GetLayeredWindowAttributes(window, &key, &alpha, &flags) && flags == LWA_ALPHA;
    return layered ? alpha : -1;
}

/// Sees the keys that reach the system past the hooks that were set later.
class KeyWitness {
  public:
    KeyWitness() { MakeNewest(); }
    ~KeyWitness() { UnhookWindowsHookEx(hook_); }
    KeyWitness(const KeyWitness&) = delete;
    KeyWitness& operator=(const KeyWitness&) = delete;

    /// The newest hook is asked first.
    void MakeNewest() {
        UnhookWindowsHookEx(hook_);
        hook_ = SetWindowsHookExW(WH_KEYBOARD_LL, &See, GetModuleHandleW(nullptr), 0);
    }

    /// Presses Print Screen and then a key that nobody swallows; whether the first one came.
    static bool SeesPrintScreen() {
        // A thread that has long not looked for messages is taken for hung, and its hook is passed over: ask again.
        Await("the second key comes", [] {
            Pump();
            printScreens_ = 0;
            marks_ = 0;
            Keys::Stroke(VK_SNAPSHOT);
            Keys::Stroke(VK_F24);
            return WaitFor(
                [] {
                    Pump();
                    return marks_ == 2;
                },
                Milliseconds(3000));
        });
        return printScreens_ > 0;
    }

  private:
    static void Pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    static LRESULT CALLBACK See(int code, WPARAM wParam, LPARAM lParam) noexcept {
        const DWORD key = reinterpret_cast<const KBDLLHOOKSTRUCT*>(lParam)->vkCode;
        printScreens_ += key == VK_SNAPSHOT;
        marks_ += key == VK_F24;
        // Windows' own answer to Print Screen is in nobody's way.
        return key == VK_SNAPSHOT ? 1 : CallNextHookEx(nullptr, code, wParam, lParam);
    }
    static inline int printScreens_ = 0;
    static inline int marks_ = 0;
    HHOOK hook_ = nullptr;
};

/// Posts a message of no window to every thread of a program that takes messages.
void PostToThreads(DWORD processId, UINT message) {
    const HANDLE threads = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL more = Thread32First(threads, &thread); more; more = Thread32Next(threads, &thread))
        if (thread.th32OwnerProcessID == processId)
            PostThreadMessageW(thread.th32ThreadID, message, 0, 0);
    CloseHandle(threads);
}

TEST(StartUp, WithoutASettingsFileTakesTheDefaults) {
    const Target somewhereToType;
    KeyWitness witness;
    EXPECT_TRUE(KeyWitness::SeesPrintScreen());
    const Sandbox sandbox;
    const App app(sandbox);
    Await("the first value is written", [&] { return !sandbox.Setting(L"Transparency").empty(); });
    Await("Print Screen is swallowed", [] { return !KeyWitness::SeesPrintScreen(); });
    EXPECT_EQ(sandbox.Read(), "[Settings]\r\nTransparency=252\r\n");
    EXPECT_EQ(TextOf(app.Main()), L"Vextrel");
    Await("the layer is shown", [&] { return app.Layer() != nullptr; });
    // Wine gives the style to the windows that a topmost one owns, but not to itself.
    EXPECT_NE(GetWindowLongPtrW(app.Layer(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_EQ(AlphaOf(app.Main()), 252);
    Await("the layer has its alpha", [&] { return AlphaOf(app.Layer()) == 5; });
    // Windows may remove the program's hook and tell nobody, so it is made anew. Its thread is the one that takes the
    // timer's message, sent here before its time.
    witness.MakeNewest();
    EXPECT_TRUE(KeyWitness::SeesPrintScreen());
    PostToThreads(app.Running().Id(), WM_TIMER);
    Await("Print Screen is swallowed again", [] { return !KeyWitness::SeesPrintScreen(); });
    // Nothing that the rest of the program does, such as playing a sound, makes a key wait.
    SuspendThread(app.Running().MainThread());
    EXPECT_FALSE(KeyWitness::SeesPrintScreen());
    ResumeThread(app.Running().MainThread());
    EXPECT_TRUE(app.Visible(ids::txtPassword));
    EXPECT_TRUE(app.Checked(ids::mnuModeStandard));
    EXPECT_TRUE(app.Checked(ids::mnuFileKeepOnTop));
    EXPECT_TRUE(app.Checked(ids::mnuOptionsDragDrop));
    EXPECT_TRUE(app.Checked(ids::mnuOptionsSaveSettingsInINI));
    const HWND layer = app.Layer();
    EXPECT_EQ(app.Close(), 0U);
    EXPECT_FALSE(IsWindow(layer));
    EXPECT_TRUE(KeyWitness::SeesPrintScreen());
}

TEST(StartUp, WithoutHooksLeavesPrintScreenAloneAndShowsTheLayer) {
    const KeyWitness witness;
    const Sandbox sandbox({}, L"vextrel_unhooked.exe");
    const App app(sandbox);
    Await("the layer has its alpha", [&] { return AlphaOf(app.Layer()) == 100; });
    EXPECT_TRUE(KeyWitness::SeesPrintScreen());
    EXPECT_EQ(app.Close(), 0U);
}

TEST(StartUp, OpensNormallyHoweverAShortcutShowsIt) {
    for (const WORD show : {WORD{SW_SHOWMAXIMIZED}, WORD{SW_SHOWMINNOACTIVE}}) {
        SCOPED_TRACE(show);
        const Sandbox sandbox({}, L"vextrel_faults.exe");
        const Process process(sandbox.Program(), {}, show);
        const HWND main = process.AwaitWindow(formClass, L"Vextrel");
        Await("the layer is shown", [&] { return process.Window(formClass, L"") != nullptr; });
        EXPECT_FALSE(IsZoomed(main));
        EXPECT_FALSE(IsIconic(main));
        PostMessageW(main, WM_CLOSE, 0, 0);
        EXPECT_EQ(process.ExitCode(), 0U);
    }
}

TEST(ShutDown, EndsWhateverDialogIsOpen) {
    for (const int command : {ids::mnuHelpAbout, ids::mnuOptionsSaveSettingsInINI, ids::mnuModeHiddenMouseAndHover,
                              ids::mnuKeyboardLayoutImport}) {
        SCOPED_TRACE(command);
        const Sandbox sandbox;
        sandbox.SetSetting(L"Save Settings in INI", L"True");
        const App app(sandbox);
        app.Command(command);
        Await("the dialog has disabled the window", [&] { return !IsWindowEnabled(app.Main()); });
        EXPECT_EQ(app.Close(), 0U);
        EXPECT_EQ(sandbox.Setting(L"Save Settings in INI"), L"True");
        EXPECT_EQ(sandbox.Setting(L"MouseMode"), L"");
    }
}

TEST(SettingsFile, NeverStopsTheProgram) {
    const std::string good = "[Settings]\r\nTransparency=100\r\n";
    std::string wide = "\xFF\xFE";
    for (const char c : good)
        wide += {c, '\0'};
    std::string binary;
    for (int i = 0; i < 4096; ++i)
        binary += static_cast<char>(i * 31 + i / 7);
    std::string large = good;
    while (large.size() < 10'000'000)
        large += "Key" + std::to_string(large.size()) + "=" + std::string(200, 'x') + "\r\n";
    enum Access { Free, Locked, ReadOnly };
    const struct {
        const char* name;
        std::string bytes;
        Access access;
        int alpha; ///< 252 where nothing can be read
        std::wstring folder;
    } rows[] = {
        {"empty", "", Free, 252, {}},
        {"truncated", good.substr(0, 17), Free, 252, {}},
        {"no line end", good.substr(0, good.size() - 2), Free, 100, {}},
        {"binary", binary, Free, 252, {}},
        {"10 MB", large, Free, 100, {}},
        {"UTF-16", wide, Free, 100, {}},
        {"locked", good, Locked, 252, {}},
        {"read-only", good, ReadOnly, 100, {}},
        {"folder outside the code page", "[Settings]\r\nTransparency=100.4\r\n", Free, 100,
         L"\u043f\u0430\u0440\u043e\u043b\u044c \u5b57 \u2126"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Sandbox sandbox(row.folder);
        sandbox.Write(row.bytes);
        const auto file = sandbox.Folder() / Sandbox::settingsName;
        HANDLE lock = INVALID_HANDLE_VALUE;
        if (row.access == Locked)
            lock = CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        if (row.access == ReadOnly)
            SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
        const App app(sandbox);
        EXPECT_TRUE(WaitFor([&] { return AlphaOf(app.Main()) == row.alpha; })) << AlphaOf(app.Main());
        EXPECT_EQ(app.Close(), 0U);
        if (lock != INVALID_HANDLE_VALUE)
            CloseHandle(lock);
        SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (!row.folder.empty()) {
            EXPECT_EQ(sandbox.Read(), good);
        }
    }
}

} // namespace
} // namespace vextrel::driver
