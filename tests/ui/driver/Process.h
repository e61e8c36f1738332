#pragma once

#include "driver/Wait.h"

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vextrel::driver {

/// A program that the test started. Killed, if it still runs, when this object goes.
class Process {
  public:
    /// Starts a program; its folder becomes the current one. `show` is how a shortcut would have its window shown.
    explicit Process(const std::filesystem::path& program, const std::wstring& arguments = {},
                     std::optional<WORD> show = {});
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    [[nodiscard]] DWORD Id() const { return information_.dwProcessId; }
    [[nodiscard]] HANDLE Handle() const { return information_.hProcess; }
    [[nodiscard]] HANDLE MainThread() const { return information_.hThread; }
    [[nodiscard]] bool Runs() const;

    /// Waits for the end and returns the exit code.
    [[nodiscard]] DWORD ExitCode(Milliseconds limit = usualLimit) const;

    /// Its visible top-level windows of one class, topmost first; with a title, only those that bear it.
    [[nodiscard]] std::vector<HWND> Windows(const std::wstring& className,
                                            const std::optional<std::wstring>& title = {}) const;

    /// The first of Windows(), or null.
    [[nodiscard]] HWND Window(const std::wstring& className, const std::optional<std::wstring>& title = {}) const;

    /// Waits for such a window; throws if the program ends before it shows one.
    [[nodiscard]] HWND AwaitWindow(const std::wstring& className, const std::optional<std::wstring>& title = {}) const;

    /// Every window of the thread that made this one, shown or not, and every one in those.
    [[nodiscard]] static std::vector<HWND> AllBeside(HWND window);

  private:
    PROCESS_INFORMATION information_{};
};

/// Folder of the running test program.
[[nodiscard]] std::filesystem::path OwnFolder();

/// Text of a window or control of any process, asked with WM_GETTEXT; throws if it does not answer.
[[nodiscard]] std::wstring TextOf(HWND window);

/// The narrow form for messages; what is not ASCII becomes '?'.
[[nodiscard]] std::string Narrow(const std::wstring& text);

/// SendMessage for windows that may hang: throws if no answer comes within the limit.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

/// Makes a window the foreground one and waits until it stays so: a window manager may be about to bring another to the
/// front, and the mouse is let go of whenever the front changes.
void BringToFront(HWND window);
/// The same for a window that has just appeared, which comes to the front by itself: it is helped only if it does not.
void SettleInForeground(HWND window);

/// Rectangle on the screen, in pixels.
[[nodiscard]] RECT BoundsOf(HWND window);
[[nodiscard]] POINT CentreOf(HWND window);
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
