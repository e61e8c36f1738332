// Measures how long the running program delays a key that is pressed in another program: this one watches the keys with
// a hook of its own, which is called first, and takes the time until the program's hook behind it has answered. That
// is what every key waits, whichever window it goes to.
//
// usage: vextrel_hook_bench [PATH OF vextrel.exe]
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace {

using namespace vextrel;
using namespace vextrel::driver;

/// On no keyboard and with no meaning: it disturbs nobody.
constexpr WORD probe = VK_F24;

double NowMs() {
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// The hook that is called first, on a thread that does nothing else.
class Watch {
  public:
    Watch()
        : thread_([this] { Serve(); }) {
        Await("the watching hook is in place", [this] { return ready_.load(); });
    }
    ~Watch() {
        PostThreadMessageW(threadId_, WM_QUIT, 0, 0);
        thread_.join();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    [[nodiscard]] std::vector<double> Take() {
        const std::lock_guard lock(mutex());
        return std::exchange(delaysMs(), {});
    }

  private:
    static std::vector<double>& delaysMs() {
        static std::vector<double> delays;
        return delays;
    }
    static std::mutex& mutex() {
        static std::mutex m;
        return m;
    }

    static LRESULT CALLBACK OnKey(int code, WPARAM wParam, LPARAM lParam) noexcept {
        const bool probes = code == HC_ACTION && reinterpret_cast<const KBDLLHOOKSTRUCT*>(lParam)->vkCode == probe;
        const double start = NowMs();
        const LRESULT result = CallNextHookEx(nullptr, code, wParam, lParam);
        if (probes) {
            const std::lock_guard lock(mutex());
            delaysMs().push_back(NowMs() - start);
        }
        return result;
    }

    void Serve() {
        threadId_ = GetCurrentThreadId();
        SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_HIGHEST);
        const HHOOK hook = SetWindowsHookExW(WH_KEYBOARD_LL, OnKey, GetModuleHandleW(nullptr), 0);
        MSG message;
        PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
        ready_ = true;
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
        UnhookWindowsHookEx(hook);
    }

    std::atomic<bool> ready_{false};
    std::atomic<DWORD> threadId_{0};
    std::thread thread_;
};

/// Strokes for as long as the state lasts, at least one. The watching hook is made anew each time: the newest hook is
/// called first, and the program renews its own.
std::vector<double> Stroke(const std::function<bool()>& lasts, int atMost) {
    Watch watch;
    for (int i = 0; i < atMost && (i == 0 || lasts()); ++i) {
        Keys::Stroke(probe);
        Sleep(5);
    }
    return watch.Take();
}

void Report(const char* state, std::vector<double> delaysMs) {
    std::sort(delaysMs.begin(), delaysMs.end());
    const auto at = [&](double part) {
        return delaysMs.empty() ? -1.0
                                : delaysMs[static_cast<std::size_t>(part * static_cast<double>(delaysMs.size() - 1))];
    };
    std::printf("%-28s %5zu keys   p50 %9.3f ms   p99 %9.3f ms   max %9.3f ms\n", state, delaysMs.size(), at(0.5),
                at(0.99), at(1.0));
    std::fflush(stdout);
}

/// One second of a quiet tone, 8 bits, 8000 a second.
void WriteBeep(const Sandbox& sandbox) {
    constexpr std::uint32_t rate = 8000;
    const auto number = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i)
            text += static_cast<char>(value >> (8 * i));
        return text;
    };
    std::string tone;
    for (std::uint32_t i = 0; i < rate; ++i)
        tone += static_cast<char>(i / 10 % 2 == 0 ? 124 : 132);
    sandbox.Write("RIFF" + number(36 + rate, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) +
                      number(rate, 4) + number(rate, 4) + number(1, 2) + number(8, 2) + "data" + number(rate, 4) + tone,
                  L"beep.wav");
}

constexpr int strokes = 300;

void Measure(const Sandbox& sandbox) {
    Report("without the program", Stroke([] { return true; }, strokes));

    const Target target(L"--topmost");
    const App app(sandbox);
    target.KeepClearOf(BoundsOf(app.Main()));
    Pointer pointer;
    Report("at rest", Stroke([] { return true; }, strokes));

    // As it is while a sound plays, which a machine without a sound device does not do.
    SuspendThread(app.Running().MainThread());
    Report("user interface stands still", Stroke([] { return true; }, strokes));
    ResumeThread(app.Running().MainThread());

    app.Command(ids::mnuHelpAbout);
    const HWND about = app.Running().AwaitWindow(formClass, L"About Vextrel");
    Report("modal dialog", Stroke([] { return true; }, strokes));
    PostMessageW(about, WM_COMMAND, IDOK, 0);
    Await("the dialog has gone", [&] { return !IsWindow(about); });

    app.ClickPassword(pointer, L"abc");
    std::vector<double> flash;
    for (int i = 0; i < 40; ++i) {
        pointer.DoubleClick(CentreOf(app.FindKey(L"k")));
        const auto some = Stroke([&] { return (Ask(app.FindKey(L"k"), BM_GETSTATE) & BST_PUSHED) != 0; }, strokes);
        flash.insert(flash.end(), some.begin(), some.end());
    }
    Report("flash", flash);

    pointer.Pull(CentreOf(app.PasswordBox()), CentreOf(target.Field(target::dropField)));
    Report("drag", Stroke([] { return true; }, strokes));
    pointer.Release();
    Await("the drop arrives", [&] { return target.Drops() == 1; });
    Await("the box is empty", [&] { return app.Text(ids::txtPassword).empty(); });

    app.ClickPassword(pointer, L"abc");
    app.Command(ids::mnuOptionsInjectMode);
    pointer.Drag(CentreOf(app.PasswordBox()), CentreOf(target.Field(target::editField)));
    Report("injection waits", Stroke([&] { return target.TypedCharacters().empty(); }, strokes));
    Await("the characters arrive", [&] { return target.TypedCharacters() == L"abc"; });

    app.Command(ids::mnuOptionsBeepOnHover);
    app.Command(ids::mnuModeHover);
    pointer.MoveTo(CentreOf(app.FindKey(L"k")));
    const double end = NowMs() + 8000;
    Report("hover with a beep of 1 s", Stroke([&] { return NowMs() < end; }, strokes));
    pointer.MoveTo({0, 0});
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    try {
        if (argc > 1)
            SetEnvironmentVariableW(L"VEXTREL_EXE", argv[1]);
        const Sandbox sandbox;
        WriteBeep(sandbox);
        Measure(sandbox);
        return 0;
    } catch (const std::exception& error) {
        std::printf("failed: %s\n", error.what());
        return 1;
    }
}
