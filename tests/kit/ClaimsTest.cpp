// What docs/security.md claims and marks untested, looked at from a second program. Each case is named as its mark
// there and notes what it saw; what Wine lacks counts on Windows alone.

#include "core/ids.h"
#include "driver/Machine.h"
#include "driver/MemoryScan.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>
#include <psapi.h>
#include <shellapi.h>
#include <tlhelp32.h>

#include <fstream>

namespace vextrel::driver {
namespace {

void Expect(bool asClaimed, const std::string& seen) {
    testing::Test::RecordProperty("seen", seen);
    if (!asClaimed && UnderWine())
        GTEST_SKIP() << "Wine cannot show it";
    EXPECT_TRUE(asClaimed) << seen;
}

class Claims : public testing::Test {
  protected:
    // One program for all, since a start takes a second.
    static void SetUpTestSuite() { stage.emplace(); }
    static void TearDownTestSuite() { stage.reset(); }
    static const App& Program() { return stage.value().app.value(); }

    static inline std::optional<Stage> stage;
};

TEST_F(Claims, CaptureExclusion) {
    std::string seen;
    bool excluded = true;
    for (const HWND window : {Program().Main(), Program().Layer()}) {
        DWORD affinity = 0;
        GetWindowDisplayAffinity(window, &affinity);
        excluded = excluded && (affinity == WDA_EXCLUDEFROMCAPTURE || affinity == WDA_MONITOR);
        seen += "affinity " + std::to_string(affinity) + " ";
    }
    Expect(excluded, seen);
}

void ExpectPolicy(const App& app, PROCESS_MITIGATION_POLICY kind, DWORD wanted) {
    DWORD flags = 0;
    GetProcessMitigationPolicy(app.Running().Handle(), kind, &flags, sizeof flags);
    Expect((flags & wanted) == wanted, "flags " + std::to_string(flags) + ", wanted " + std::to_string(wanted));
}
TEST_F(Claims, SignedLibraries) {
    ExpectPolicy(Program(), ProcessSignaturePolicy, 1);
}
TEST_F(Claims, ExtensionPoints) {
    ExpectPolicy(Program(), ProcessExtensionPointDisablePolicy, 1);
}
TEST_F(Claims, NetworkImages) {
    ExpectPolicy(Program(), ProcessImageLoadPolicy, 7);
}

TEST_F(Claims, OwnersEntry) {
    std::string granted;
    for (const DWORD right : {DWORD{WRITE_DAC}, DWORD{WRITE_OWNER}}) {
        const HANDLE opened = OpenProcess(right, FALSE, Program().Running().Id());
        granted += opened ? std::to_string(right) + " " : "";
        CloseHandle(opened);
    }
    Expect(granted.empty(), "granted: " + granted);
}

TEST_F(Claims, LibraryFolders) {
    Program().Command(ids::mnuKeyboardLayoutImport); // brings most of what the program ever loads
    const HWND dialog = Program().AwaitDialog();
    HMODULE modules[1024] = {};
    DWORD bytes = 0;
    EnumProcessModules(Program().Running().Handle(), modules, sizeof modules, &bytes);
    Program().Dismiss(dialog, IDCANCEL);
    std::wstring windows(MAX_PATH, L'\0');
    windows.resize(GetWindowsDirectoryW(windows.data(), MAX_PATH));
    std::string elsewhere;
    for (std::size_t i = 1; i < bytes / sizeof(HMODULE); ++i) {
        wchar_t path[MAX_PATH] = {};
        GetModuleFileNameExW(Program().Running().Handle(), modules[i], path, MAX_PATH);
        const auto isIn = [&](const std::wstring& folder) {
            return _wcsnicmp(path, (windows + folder).c_str(), windows.size() + folder.size()) == 0;
        };
        if (!isIn(L"\\System32\\") && !isIn(L"\\WinSxS\\"))
            elsewhere += Narrow(std::filesystem::path(path).filename().wstring()) + " ";
    }
    EXPECT_GT(bytes / sizeof(HMODULE), 10U);
    Expect(elsewhere.empty(), "from elsewhere: " + elsewhere);
}

TEST_F(Claims, ReadOnlySettings) {
    const auto file = stage->sandbox.Folder() / Sandbox::settingsName;
    const auto before = stage->sandbox.Read();
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    const bool enforced = !std::ofstream(file, std::ios::app);
    Program().Switch(ids::mnuOptionsBeepOnHover, true);
    EXPECT_EQ(Program().Running().Window(dialogClass), nullptr);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    Expect(enforced && stage->sandbox.Read() == before, enforced ? "the option holds" : "nothing enforces it");
}

TEST_F(Claims, LockedPage) {
    const std::wstring secret = RandomSecret(10);
    Program().ClickPassword(stage->pointer, secret);
    PSAPI_WORKING_SET_EX_INFORMATION page{};
    page.VirtualAddress = reinterpret_cast<void*>(FindTraces(Program().Running(), secret).at(0).address);
    QueryWorkingSetEx(Program().Running().Handle(), &page, sizeof page);
    Expect(page.VirtualAttributes.Locked != 0, "locked: " + std::to_string(page.VirtualAttributes.Locked));
}

/// A program that comes with Windows, and what it shows of ours; its window's title has the marker then.
struct Guest {
    const char* name;
    const wchar_t* program;
    const wchar_t* process; ///< that this starts
    enum { Editor, Folder, Browser } kind;
};
constexpr Guest guests[] = {{"Notepad", L"notepad.exe", L"notepad.exe", Guest::Editor},
                            {"WordPad", L"write.exe", L"wordpad.exe", Guest::Editor},
                            {"Explorer's search field", L"explorer.exe", L"explorer.exe", Guest::Folder},
                            {"Edge", L"msedge.exe", L"msedge.exe", Guest::Browser}};
constexpr const wchar_t* marker = L"vextrel-guest";

bool IsOpen(const std::wstring& program) {
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    bool found = false;
    for (BOOL more = Process32FirstW(list, &entry); more != FALSE && !found; more = Process32NextW(list, &entry))
        found = _wcsicmp(entry.szExeFile, program.c_str()) == 0;
    CloseHandle(list);
    return found;
}

std::wstring TitleOf(HWND window) {
    wchar_t title[256] = {};
    GetWindowTextW(window, title, static_cast<int>(std::size(title)));
    return title;
}

/// A guest's window and its field; gone again with this object.
class Visit {
  public:
    explicit Visit(const Guest& guest)
        : guest_(guest) {
        if (guest.kind == Guest::Editor && IsOpen(guest.process))
            throw Failure("open already, perhaps with somebody's text");
        const auto file =
            folder_.Folder() / (std::wstring(marker) + (guest.kind == Guest::Editor ? L".txt" : L".html"));
        std::ofstream(file) << (guest.kind == Guest::Editor
                                    ? ""
                                    : "<title>vextrel-guest</title><textarea style='width:95vw;height:90vh' "
                                      "oninput=\"document.title='vextrel-guest '+this.value\"></textarea>");
        std::wstring opened = L"\"" + (guest.kind == Guest::Folder ? folder_.Folder() : file).wstring() + L"\"";
        if (guest.kind == Guest::Browser)
            opened = L"--no-first-run --user-data-dir=\"" + folder_.Folder().wstring() + L"\" --app=" + opened;
        if (reinterpret_cast<INT_PTR>(
                ShellExecuteW(nullptr, nullptr, guest.program, opened.c_str(), nullptr, SW_SHOWNORMAL)) <= 32)
            throw Failure("not there");
        Await("its window", [&] { return EnumWindows(&Visit::Find, reinterpret_cast<LPARAM>(&window_)) == FALSE; });
        SettleInForeground(window_);
        SetWindowPos(window_, nullptr, 0, 0, 640, 400, SWP_NOZORDER);
        Sleep(2000); // nothing tells when such a program has come to rest
        field_ = WindowFromPoint(CentreOf(window_));
        if (guest.kind == Guest::Folder) {
            Keys::Stroke('F', {VK_CONTROL});
            Sleep(1000);
            GUITHREADINFO input{};
            input.cbSize = sizeof input;
            GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &input);
            wchar_t name[64] = {};
            if (GetClassNameW(input.hwndFocus, name, 64) == 0 || std::wcsstr(name, L"Edit") == nullptr)
                throw Failure("its field is no window of its own");
            field_ = input.hwndFocus;
        }
    }
    /// Editors would ask what to do with a changed text, so their program is ended; that of folders is the desktop,
    /// too.
    ~Visit() {
        DWORD id = 0;
        GetWindowThreadProcessId(window_, &id);
        const HANDLE process = guest_.kind == Guest::Editor ? OpenProcess(PROCESS_TERMINATE, FALSE, id) : nullptr;
        if (!process || !TerminateProcess(process, 0))
            PostMessageW(window_, WM_CLOSE, 0, 0);
        CloseHandle(process);
        static_cast<void>(WaitFor([&] { return !IsWindow(window_); }));
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

    [[nodiscard]] POINT Place() const { return CentreOf(guest_.kind == Guest::Folder ? field_ : window_); }
    [[nodiscard]] std::wstring Text() const {
        return guest_.kind == Guest::Browser ? TitleOf(window_) : TextOf(field_);
    }

  private:
    static BOOL CALLBACK Find(HWND window, LPARAM found) {
        if (!IsWindowVisible(window) || TitleOf(window).find(marker) == std::wstring::npos)
            return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }

    const Guest& guest_;
    const Sandbox folder_{marker};
    HWND window_ = nullptr;
    HWND field_ = nullptr;
};

/// The password arrives whole, or not at all; after a drag that hands over nothing the box keeps it.
void TakeElsewhere(bool inject) {
    std::string seen;
    int tried = 0;
    for (const Guest& guest : guests) {
        seen += std::string(seen.empty() ? "" : ", ") + guest.name + ": ";
        try {
            const Visit visit(guest);
            const Sandbox sandbox;
            sandbox.SetSetting(L"Drag Drop Mode", inject ? L"Inject" : L"Drag Drop");
            const App app(sandbox);
            Pointer pointer;
            const std::wstring secret = RandomSecret(10);
            const std::wstring before = visit.Text();
            app.ClickPassword(pointer, secret);
            app.MoveTo({660, 420}); // to the right of the guest and below it
            app.Activate();
            pointer.Drag(CentreOf(app.PasswordBox()), visit.Place());
            const bool whole =
                WaitFor([&] { return visit.Text().find(secret) != std::wstring::npos; }, Milliseconds(5000));
            const bool nothing = !whole && visit.Text() == before;
            seen += whole ? "arrived whole" : nothing ? "took nothing" : "took a part";
            EXPECT_TRUE(whole || nothing) << guest.name;
            EXPECT_TRUE(inject || app.Shown().size() == (whole ? 0 : 10)) << guest.name << ", left in the box";
            ++tried;
        } catch (const Failure& failure) {
            seen += failure.what();
        }
    }
    testing::Test::RecordProperty("seen", seen);
    if (tried == 0)
        GTEST_SKIP() << "nothing to try it with";
}

TEST_F(Claims, DragElsewhere) {
    TakeElsewhere(false);
}
TEST_F(Claims, InjectElsewhere) {
    TakeElsewhere(true);
}

} // namespace
} // namespace vextrel::driver
