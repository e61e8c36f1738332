#include "driver/Process.h"

#include <array>

namespace vextrel::driver {

namespace {

struct WindowSearch {
    DWORD processId;
    const std::wstring& className;
    const std::optional<std::wstring>& title;
    std::vector<HWND> found;
};

BOOL CALLBACK Collect(HWND window, LPARAM parameter) noexcept {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search.processId || !IsWindowVisible(window))
        return TRUE;
    std::array<wchar_t, 256> text{};
    GetClassNameW(window, text.data(), static_cast<int>(text.size()));
    if (search.className != text.data())
        return TRUE;
    // For a top-level window of another process this reads the title without asking the window, which may be busy.
    text[0] = L'\0';
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    if (!search.title || *search.title == text.data())
        search.found.push_back(window);
    return TRUE;
}

} // namespace

Process::Process(const std::filesystem::path& program, const std::wstring& arguments, std::optional<WORD> show) {
    std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = show ? STARTF_USESHOWWINDOW : 0;
    startup.wShowWindow = show.value_or(0);
    Check(CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                         program.parent_path().c_str(), &startup, &information_) != FALSE,
          "starting " + Narrow(program.wstring()));
}

Process::~Process() {
    if (Runs()) {
        TerminateProcess(information_.hProcess, 99);
        WaitForSingleObject(information_.hProcess, 5000);
    }
    CloseHandle(information_.hThread);
    CloseHandle(information_.hProcess);
}

bool Process::Runs() const {
    return WaitForSingleObject(information_.hProcess, 0) == WAIT_TIMEOUT;
}

DWORD Process::ExitCode(Milliseconds limit) const {
    if (WaitForSingleObject(information_.hProcess, static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0)
        throw Failure("the program did not end within " + std::to_string(limit.count()) + " ms");
    DWORD code = 0;
    Check(GetExitCodeProcess(information_.hProcess, &code) != FALSE, "GetExitCodeProcess");
    return code;
}

std::vector<HWND> Process::Windows(const std::wstring& className, const std::optional<std::wstring>& title) const {
    WindowSearch search{Id(), className, title, {}};
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND Process::Window(const std::wstring& className, const std::optional<std::wstring>& title) const {
    const auto found = Windows(className, title);
    return found.empty() ? nullptr : found.front();
}

std::vector<HWND> Process::AllBeside(HWND window) {
    std::vector<HWND> windows;
    const auto collect = [](HWND found, LPARAM all) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(all)->push_back(found);
        return TRUE;
    };
    EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), collect, reinterpret_cast<LPARAM>(&windows));
    const std::size_t topLevel = windows.size();
    for (std::size_t i = 0; i < topLevel; ++i)
        EnumChildWindows(windows[i], collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

HWND Process::AwaitWindow(const std::wstring& className, const std::optional<std::wstring>& title) const {
    HWND window = nullptr;
    const std::string what = "a window of class " + Narrow(className) + (title ? ", title " + Narrow(*title) : "");
    Await(what, [&] {
        window = Window(className, title);
        if (!window && !Runs())
            throw Failure("the program ended with code " + std::to_string(ExitCode()) + " instead of showing " + what);
        return window != nullptr;
    });
    return window;
}

std::filesystem::path OwnFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path();
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    Check(SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, static_cast<UINT>(usualLimit.count()),
                              &answer) != 0,
          "asking a window with message " + std::to_string(message));
    return static_cast<LRESULT>(answer);
}

std::wstring TextOf(HWND window) {
    // The text may grow between the two questions; room to spare makes that harmless.
    std::wstring text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH)) + 64, L'\0');
    text.resize(static_cast<std::size_t>(Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t c : text)
        narrow += c < 0x80 ? static_cast<char>(c) : '?';
    return narrow;
}

void BringToFront(HWND window) {
    Await("the window stays in front", [window, seen = 0]() mutable {
        seen = GetForegroundWindow() == window ? seen + 1 : 0;
        if (seen == 0)
            SetForegroundWindow(window);
        return seen == 15;
    });
}

void SettleInForeground(HWND window) {
    const bool settled = WaitFor(
        [window, seen = 0]() mutable {
            seen = GetForegroundWindow() == window ? seen + 1 : 0;
            return seen == 15;
        },
        Milliseconds(2000));
    if (!settled)
        BringToFront(window);
}

RECT BoundsOf(HWND window) {
    RECT bounds{};
    Check(GetWindowRect(window, &bounds) != FALSE, "GetWindowRect");
    return bounds;
}

POINT CentreOf(HWND window) {
    const RECT bounds = BoundsOf(window);
    return {(bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2};
}

} // namespace vextrel::driver
