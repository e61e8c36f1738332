// What docs/security.md claims and marks untested, looked at from a second program. Each case is named as its mark
// there and notes what it saw; what Wine lacks counts on Windows alone.

#include "core/ids.h"
#include "driver/App.h"
#include "driver/Machine.h"
#include "driver/MemoryScan.h"

#include <gtest/gtest.h>
#include <psapi.h>
#include <shellapi.h>
#include <tlhelp32.h>

#include <cwchar>
#include <fstream>
#include <iostream>
#include <sstream>

namespace vextrel::driver {
namespace {

namespace fs = std::filesystem;

void Note(const std::string& seen) {
    testing::Test::RecordProperty("seen", seen);
    std::cout << "[ measured ] " << seen << '\n';
}

/// For what Wine does not have.
void ExpectOnWindows(bool asClaimed, const std::string& seen) {
    Note(seen);
    if (!asClaimed && UnderWine())
        GTEST_SKIP() << "Wine cannot show it";
    EXPECT_TRUE(asClaimed) << seen;
}

std::string AffinityOf(HWND window, bool& excluded) {
    DWORD affinity = 0;
    const bool told = GetWindowDisplayAffinity(window, &affinity) != FALSE;
    excluded = excluded && told && (affinity == WDA_EXCLUDEFROMCAPTURE || affinity == WDA_MONITOR);
    std::ostringstream text;
    text << "affinity 0x" << std::hex << affinity << (told ? "" : " (not told)");
    return text.str();
}

TEST(Claims, CaptureExclusion) {
    const Sandbox sandbox;
    const App app(sandbox);
    bool excluded = true;
    Await("the layer is shown", [&] { return app.Layer() != nullptr; });
    std::string seen = "main window " + AffinityOf(app.Main(), excluded);
    seen += ", layer " + AffinityOf(app.Layer(), excluded);
    ExpectOnWindows(excluded, seen);
}

TEST(Claims, DropDownLists) {
    const Sandbox sandbox;
    const App app(sandbox);
    app.Command(ids::mnuKeyboardLayoutImport);
    const HWND dialog = app.AwaitDialog();
    HWND box = nullptr;
    EnumChildWindows(
        dialog,
        [](HWND child, LPARAM found) -> BOOL {
            wchar_t name[16] = {};
            GetClassNameW(child, name, static_cast<int>(std::size(name)));
            if (std::wstring_view(name) != L"ComboBox" || !IsWindowVisible(child))
                return TRUE;
            *reinterpret_cast<HWND*>(found) = child;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&box));
    ASSERT_NE(box, nullptr) << "the dialog has no list";
    Ask(box, CB_SHOWDROPDOWN, TRUE);
    bool excluded = true;
    const std::string seen = "list " + AffinityOf(app.Running().AwaitWindow(L"ComboLBox"), excluded);
    Ask(box, CB_SHOWDROPDOWN, FALSE);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    Await("the dialog has gone", [&] { return !IsWindow(dialog); });
    EXPECT_EQ(app.Close(), 0U);
    ExpectOnWindows(excluded, seen);
}

/// What the system says of one policy of the running program.
template <typename Policy>
void ExpectPolicy(PROCESS_MITIGATION_POLICY kind, DWORD wanted) {
    const Sandbox sandbox;
    const App app(sandbox);
    Policy policy{};
    const bool told = GetProcessMitigationPolicy(app.Running().Handle(), kind, &policy, sizeof policy) != FALSE;
    std::ostringstream seen;
    seen << "flags 0x" << std::hex << policy.Flags << ", wanted 0x" << wanted << (told ? "" : " (not told)");
    ExpectOnWindows(told && (policy.Flags & wanted) == wanted, seen.str());
}

TEST(Claims, SignedLibraries) {
    ExpectPolicy<PROCESS_MITIGATION_BINARY_SIGNATURE_POLICY>(ProcessSignaturePolicy, 1);
}
TEST(Claims, ExtensionPoints) {
    ExpectPolicy<PROCESS_MITIGATION_EXTENSION_POINT_DISABLE_POLICY>(ProcessExtensionPointDisablePolicy, 1);
}
TEST(Claims, NetworkImages) {
    ExpectPolicy<PROCESS_MITIGATION_IMAGE_LOAD_POLICY>(ProcessImageLoadPolicy, 7);
}

TEST(Claims, OwnersEntry) {
    const Sandbox sandbox;
    const App app(sandbox);
    bool refused = true;
    std::string seen;
    for (const auto& [name, right] : {std::pair{"change its access list", DWORD{WRITE_DAC}},
                                      {"take it over", DWORD{WRITE_OWNER}},
                                      {"read its memory", DWORD{PROCESS_VM_READ}}}) {
        const HANDLE opened = OpenProcess(right, FALSE, app.Running().Id());
        seen += std::string(seen.empty() ? "" : ", ") + name +
                (opened ? ": granted" : ": refused (error " + std::to_string(GetLastError()) + ")");
        refused = refused && !opened;
        if (opened)
            CloseHandle(opened);
    }
    ExpectOnWindows(refused, seen);
}

TEST(Claims, LibraryFolders) {
    const Sandbox sandbox;
    const App app(sandbox);
    app.Command(ids::mnuKeyboardLayoutImport); // brings most of what the program ever loads
    const HWND dialog = app.AwaitDialog();
    std::vector<HMODULE> modules(1024);
    DWORD bytes = 0;
    Check(EnumProcessModulesEx(app.Running().Handle(), modules.data(), DWORD{1024 * sizeof(HMODULE)}, &bytes,
                               LIST_MODULES_ALL) != FALSE,
          "EnumProcessModulesEx");
    modules.resize(bytes / sizeof(HMODULE));
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    std::wstring windows(MAX_PATH, L'\0');
    windows.resize(GetWindowsDirectoryW(windows.data(), MAX_PATH));
    std::string elsewhere;
    for (const HMODULE module : modules) {
        std::wstring path(32768, L'\0');
        path.resize(GetModuleFileNameExW(app.Running().Handle(), module, path.data(), DWORD{32768}));
        const bool inSystem = _wcsnicmp(path.c_str(), (windows + L"\\System32\\").c_str(), windows.size() + 10) == 0 ||
                              _wcsnicmp(path.c_str(), (windows + L"\\WinSxS\\").c_str(), windows.size() + 8) == 0;
        if (!inSystem && module != modules.front())
            elsewhere += " " + Narrow(fs::path(path).filename().wstring());
    }
    Note(std::to_string(modules.size()) + " modules, from elsewhere:" + (elsewhere.empty() ? " none" : elsewhere));
    EXPECT_GT(modules.size(), 10U);
    EXPECT_EQ(elsewhere, "");
}

TEST(Claims, LockedPage) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    const std::wstring secret = RandomSecret(10);
    app.ClickPassword(pointer, secret);
    const auto places = FindTraces(app.Running(), secret);
    ASSERT_EQ(places.size(), 1U);
    PSAPI_WORKING_SET_EX_INFORMATION page{};
    page.VirtualAddress = reinterpret_cast<void*>(places[0].address);
    const bool told = QueryWorkingSetEx(app.Running().Handle(), &page, sizeof page) != FALSE;
    ExpectOnWindows(told && page.VirtualAttributes.Locked != 0,
                    told && page.VirtualAttributes.Locked != 0 ? "locked" : "not locked");
}

TEST(Claims, ReadOnlySettings) {
    const Sandbox sandbox;
    const fs::path file = sandbox.Folder() / Sandbox::settingsName;
    const auto before = sandbox.Read();
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    const bool enforced = !std::ofstream(file, std::ios::app);
    const App app(sandbox);
    app.Command(ids::mnuOptionsBeepOnHover);
    Await("the option holds", [&] { return app.Checked(ids::mnuOptionsBeepOnHover); });
    EXPECT_EQ(app.Running().Window(dialogClass), nullptr);
    EXPECT_EQ(app.Close(), 0U);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    const bool kept = sandbox.Read() == before;
    ExpectOnWindows(enforced && kept, !enforced ? "nothing enforces it" : kept ? "the file is as before" : "written");
}

/// A program that comes with Windows, showing a file or folder of ours.
struct Guest {
    const char* name;
    const wchar_t* program;
    const wchar_t* process; ///< that this starts
    enum { Editor, Folder, Browser } kind;
};

constexpr Guest guests[] = {
    {"Notepad", L"notepad.exe", L"notepad.exe", Guest::Editor},
    {"WordPad", L"write.exe", L"wordpad.exe", Guest::Editor},
    {"Explorer's search field", L"explorer.exe", L"explorer.exe", Guest::Folder},
    {"Edge", L"msedge.exe", L"msedge.exe", Guest::Browser},
};

constexpr const wchar_t* marker = L"vextrel-check"; ///< in the title of its window

bool Runs(const std::wstring& program) {
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

/// A guest's window and the place of its field; gone again with this object.
class Visit {
  public:
    explicit Visit(const Guest& guest)
        : guest_(guest) {
        // Its window could be one with somebody's text in it.
        if (guest.kind == Guest::Editor && Runs(guest.process))
            throw Failure("open already");
        const fs::path file =
            folder_.Folder() / (std::wstring(marker) + (guest.kind == Guest::Editor ? L".txt" : L".html"));
        std::ofstream(file) << (guest.kind != Guest::Browser
                                    ? ""
                                    : "<title>vextrel-check</title><textarea style='width:95vw;height:90vh' "
                                      "oninput=\"document.title='vextrel-check '+this.value\"></textarea>");
        std::wstring opened = L"\"" + (guest.kind == Guest::Folder ? file.parent_path() : file).wstring() + L"\"";
        if (guest.kind == Guest::Browser)
            opened = L"--no-first-run --user-data-dir=\"" + (folder_.Folder() / L"profile").wstring() + L"\" --app=" +
                     opened;
        SHELLEXECUTEINFOW start{};
        start.cbSize = sizeof start;
        start.fMask = SEE_MASK_FLAG_NO_UI;
        start.lpFile = guest.program;
        start.lpParameters = opened.c_str();
        start.nShow = SW_SHOWNORMAL;
        if (!ShellExecuteExW(&start))
            throw Failure("not there");
        Await("its window",
              [&] { return EnumWindows(&Visit::Find, reinterpret_cast<LPARAM>(&window_.handle)) == FALSE; });
        BringToFront(window_.handle);
        SetWindowPos(window_.handle, nullptr, 0, 0, 640, 400, SWP_NOZORDER);
        Sleep(2000); // it comes to rest
        field_ = CentreOf(window_.handle);
        if (guest.kind == Guest::Folder) {
            Keys::Stroke('F', {VK_CONTROL});
            Sleep(1000);
            GUITHREADINFO input{};
            input.cbSize = sizeof input;
            wchar_t name[64] = {};
            if (!GetGUIThreadInfo(GetWindowThreadProcessId(window_.handle, nullptr), &input) ||
                GetClassNameW(input.hwndFocus, name, 64) == 0 || std::wcsstr(name, L"Edit") == nullptr)
                throw Failure("its field is no window of its own");
            field_ = CentreOf(input.hwndFocus);
        }
        control_ = WindowFromPoint(field_);
    }

    [[nodiscard]] POINT Field() const { return field_; }
    [[nodiscard]] std::wstring Text() const {
        return guest_.kind == Guest::Browser ? TitleOf(window_.handle) : TextOf(control_);
    }

  private:
    static BOOL CALLBACK Find(HWND window, LPARAM found) {
        if (!IsWindowVisible(window) || TitleOf(window).find(marker) == std::wstring::npos)
            return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }

    /// Editors ask what to do with a changed text, so their program is ended; that of folders is the desktop as well.
    struct Opened {
        const bool editor;
        HWND handle = nullptr;
        ~Opened() {
            DWORD id = 0;
            GetWindowThreadProcessId(handle, &id);
            const HANDLE process = editor && handle ? OpenProcess(PROCESS_TERMINATE, FALSE, id) : nullptr;
            if (!process || !TerminateProcess(process, 0))
                PostMessageW(handle, WM_CLOSE, 0, 0);
            CloseHandle(process);
            static_cast<void>(WaitFor([&] { return !IsWindow(handle); }));
        }
    };

    const Guest& guest_;
    const Sandbox folder_{marker};
    Opened window_{guest_.kind == Guest::Editor};
    POINT field_{};
    HWND control_ = nullptr;
};

/// The password arrives whole, or not at all. After a drag that hands over nothing the box keeps it.
void TakeElsewhere(bool inject) {
    std::string seen;
    int tried = 0;
    for (const Guest& guest : guests) {
        seen += std::string(seen.empty() ? "" : ", ") + guest.name + ": ";
        try {
            const Visit visit(guest);
            const Sandbox sandbox;
            if (inject)
                sandbox.SetSetting(L"Drag Drop Mode", L"Inject");
            const App app(sandbox);
            Pointer pointer;
            const std::wstring secret = RandomSecret(10);
            const std::wstring before = visit.Text();
            app.ClickPassword(pointer, secret);
            app.MoveTo({660, 420}); // to the right of the guest and below it
            app.Activate();
            pointer.Drag(CentreOf(app.PasswordBox()), visit.Field());
            const auto arrived = [&] { return visit.Text().find(secret) != std::wstring::npos; };
            const bool whole = WaitFor(arrived, Milliseconds(5000));
            const bool nothing = !whole && visit.Text() == before;
            const auto left = Ask(app.PasswordBox(), WM_GETTEXTLENGTH);
            seen += whole ? "arrived whole" : nothing ? "took nothing" : "took a part";
            EXPECT_TRUE(whole || nothing) << guest.name;
            EXPECT_TRUE(inject || left == (whole ? 0 : 10)) << guest.name << ", left in the box: " << left;
            ++tried;
        } catch (const Failure& failure) {
            seen += failure.what();
        }
    }
    Note(seen);
    if (tried == 0)
        GTEST_SKIP() << "nothing to try it with: " << seen;
}

TEST(Claims, DragElsewhere) {
    TakeElsewhere(false);
}
TEST(Claims, InjectElsewhere) {
    TakeElsewhere(true);
}

} // namespace
} // namespace vextrel::driver
