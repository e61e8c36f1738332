#pragma once

#include "core/Pinned.h"
#include "driver/Wait.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace vextrel::driver {

/// For messages; what is not ASCII becomes '?'.
[[nodiscard]] inline std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t c : text)
        narrow += c < 0x80 ? static_cast<char>(c) : '?';
    return narrow;
}

[[nodiscard]] inline std::filesystem::path OwnFolder() {
    wchar_t path[MAX_PATH] = {};
    Check(GetModuleFileNameW(nullptr, path, MAX_PATH) < MAX_PATH, "GetModuleFileName");
    return std::filesystem::path(path).parent_path();
}

/// A program that the test started. Killed, if it still runs, when this object goes.
class Process : Pinned {
  public:
    /// Starts a program; its folder becomes the current one. `show` is how a shortcut would have its window shown.
    explicit Process(const std::filesystem::path& program, const std::wstring& arguments = {},
                     std::optional<WORD> show = {}) {
        std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = show ? STARTF_USESHOWWINDOW : 0;
        startup.wShowWindow = show.value_or(0);
        Check(CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                             program.parent_path().c_str(), &startup, &information_) != FALSE,
              "starting " + Narrow(program.wstring()));
    }
    ~Process() {
        TerminateProcess(Handle(), 99);
        WaitForSingleObject(Handle(), 5000);
        CloseHandle(MainThread());
        CloseHandle(Handle());
    }

    [[nodiscard]] DWORD Id() const { return information_.dwProcessId; }
    [[nodiscard]] HANDLE Handle() const { return information_.hProcess; }
    [[nodiscard]] HANDLE MainThread() const { return information_.hThread; }
    [[nodiscard]] bool Runs() const { return WaitForSingleObject(Handle(), 0) == WAIT_TIMEOUT; }
    [[nodiscard]] DWORD ExitCode(Milliseconds limit = usualLimit) const {
        DWORD code = 0;
        const auto ended = [this] { return !Runs(); };
        Await("the program ends", ended, limit);
        Check(GetExitCodeProcess(Handle(), &code) != FALSE, "GetExitCodeProcess");
        return code;
    }

    using Title = std::optional<std::wstring>;
    /// Its visible top-level windows of one class, topmost first; with a title, only those that bear it.
    [[nodiscard]] std::vector<HWND> Windows(const std::wstring& className, const Title& title = {}) const {
        std::vector<HWND> windows;
        EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
        std::erase_if(windows, [&](HWND window) {
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            wchar_t name[256] = {};
            wchar_t text[256] = {};
            GetClassNameW(window, name, 256);
            // Of another process's top-level window this is read without asking the window, which may be busy.
            GetWindowTextW(window, text, 256);
            return owner != Id() || !IsWindowVisible(window) || className != name || title.value_or(text) != text;
        });
        return windows;
    }
    /// The first of Windows(), or null.
    [[nodiscard]] HWND Window(const std::wstring& className, const Title& title = {}) const {
        const auto found = Windows(className, title);
        return found.empty() ? nullptr : found.front();
    }
    [[nodiscard]] HWND AwaitWindow(const std::wstring& className, const Title& title = {}) const {
        HWND window = nullptr;
        Await("a window of class " + Narrow(className) + ", title " + Narrow(title.value_or(L"any")),
              [&] { return (window = Window(className, title)) != nullptr; });
        return window;
    }
    /// Every window of the thread that made this one, shown or not, and every one in those.
    [[nodiscard]] static std::vector<HWND> AllBeside(HWND window) {
        std::vector<HWND> windows;
        const auto all = reinterpret_cast<LPARAM>(&windows);
        EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), Collect, all);
        for (const HWND topLevel : std::vector(windows))
            EnumChildWindows(topLevel, Collect, all);
        return windows;
    }

  private:
    static BOOL CALLBACK Collect(HWND window, LPARAM windows) {
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
        return TRUE;
    }

    PROCESS_INFORMATION information_{};
};

/// SendMessage for windows that may hang: throws if no answer comes within the limit.
inline LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR answer = 0;
    Check(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, static_cast<UINT>(usualLimit.count()),
                              &answer) != 0,
          "asking a window with message " + std::to_string(message));
    return static_cast<LRESULT>(answer);
}

[[nodiscard]] inline std::wstring TextOf(HWND window) {
    // The text may grow between the two questions; room to spare makes that harmless.
    std::wstring text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH)) + 64, L'\0');
    text.resize(static_cast<std::size_t>(Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

/// Until the window has been in front for some polls: a window manager may be about to bring another there, and the
/// mouse is let go of whenever the front changes. After so many polls it is helped: brought back each time.
inline void BringToFront(HWND window, int unhelped = 0) {
    Await("the window stays in front", [=, polls = 0, seen = 0]() mutable {
        seen = GetForegroundWindow() == window ? seen + 1 : 0;
        if (++polls > unhelped && seen == 0)
            SetForegroundWindow(window);
        return seen == 15;
    });
}
/// For a window that has just appeared, which comes to the front by itself: it is helped only if it does not.
inline void SettleInForeground(HWND window) {
    BringToFront(window, 200);
}

/// What the window's thread knows of focus, capture and menus.
[[nodiscard]] inline GUITHREADINFO GuiOf(HWND window) {
    GUITHREADINFO information{};
    information.cbSize = sizeof information;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &information);
    return information;
}

[[nodiscard]] inline RECT BoundsOf(HWND window) {
    RECT bounds{};
    Check(GetWindowRect(window, &bounds) != FALSE, "GetWindowRect");
    return bounds;
}
[[nodiscard]] inline POINT CentreOf(const RECT& area) {
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}
[[nodiscard]] inline POINT CentreOf(HWND window) {
    return CentreOf(BoundsOf(window));
}
[[nodiscard]] inline int Width(const RECT& area) {
    return area.right - area.left;
}
[[nodiscard]] inline int Height(const RECT& area) {
    return area.bottom - area.top;
}

} // namespace vextrel::driver

/// Whether two areas are the same; where argument-dependent lookup finds it.
inline bool operator==(const RECT& a, const RECT& b) {
    return EqualRect(&a, &b) != FALSE;
}
