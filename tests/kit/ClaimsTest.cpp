// What docs/security.md claims and marks untested, looked at from a second program. Each case is named as its mark
// there and notes what it saw; what Wine lacks counts on Windows alone.

#include "core/ids.h"
#include "driver/Machine.h"
#include "driver/MemoryScan.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>
#include <psapi.h>
#include <shellapi.h>

#include <fstream>
#include <regex>
#include <span>

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
    const std::span loaded = std::span(modules).first(bytes / sizeof(HMODULE));
    ASSERT_GT(loaded.size(), 10U);
    const std::wregex ofWindows(LR"(\w:\\Windows\\(System32|WinSxS)\\.*)", std::regex::icase);
    std::string elsewhere;
    for (const HMODULE module : loaded.subspan(1)) {
        wchar_t path[MAX_PATH] = {};
        GetModuleFileNameExW(Program().Running().Handle(), module, path, MAX_PATH);
        if (!std::regex_match(path, ofWindows))
            elsewhere += Narrow(std::filesystem::path(path).filename().wstring()) + " ";
    }
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

/// A program that comes with Windows, and what of ours it opens; its window's title has the marker then. An editor has
/// a class of window by which one that somebody has open is known.
struct Guest {
    const char* name;
    const wchar_t* program;
    const wchar_t* file; ///< in the folder, or the folder itself
    const wchar_t* editor = nullptr;
};
constexpr const wchar_t* marker = L"vextrel-guest";
constexpr const wchar_t* page = L"vextrel-guest.html";
constexpr Guest guests[] = {{"Notepad", L"notepad.exe", L"vextrel-guest.txt", L"Notepad"},
                            {"WordPad", L"write.exe", L"vextrel-guest.txt", L"WordPadClass"},
                            {"Explorer's search field", L"explorer.exe", L""},
                            {"Edge", L"msedge.exe", page}};

std::wstring TitleOf(HWND window) {
    wchar_t title[256] = {};
    GetWindowTextW(window, title, static_cast<int>(std::size(title)));
    return title;
}

/// A guest's window and its field; gone again with this object.
struct Visit : Pinned {
    explicit Visit(const Guest& whom)
        : guest(whom) {}
    void Open() {
        if (guest.editor && FindWindowW(guest.editor, nullptr))
            throw Failure("open already, perhaps with somebody's text");
        folder.Write("", L"vextrel-guest.txt");
        folder.Write("<title>vextrel-guest</title><textarea style='width:95vw;height:90vh' "
                     "oninput=\"document.title='vextrel-guest '+this.value\"></textarea>",
                     page);
        std::wstring opened = L"\"" + (folder.Folder() / guest.file).wstring() + L"\"";
        if (guest.file == page)
            opened = L"--no-first-run --user-data-dir=\"" + folder.Folder().wstring() + L"\" --app=" + opened;
        const HINSTANCE shown = ShellExecuteW(nullptr, nullptr, guest.program, opened.c_str(), nullptr, SW_SHOWNORMAL);
        if (reinterpret_cast<INT_PTR>(shown) <= 32)
            throw Failure("not there");
        Await("its window", [&] { return TitleOf(GetForegroundWindow()).find(marker) != std::wstring::npos; });
        window = GetForegroundWindow();
        SetWindowPos(window, nullptr, 0, 0, 640, 400, SWP_NOZORDER);
        Sleep(2000); // nothing tells when such a program has come to rest
        field = WindowFromPoint(CentreOf(window));
        if (*guest.file != L'\0')
            return;
        Keys::Stroke('F', {VK_CONTROL});
        Await("a search field that is a window of its own", [&] {
            GUITHREADINFO input{};
            input.cbSize = sizeof input;
            GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &input);
            field = input.hwndFocus;
            wchar_t name[64] = {};
            return GetClassNameW(field, name, 64) != 0 && std::wcsstr(name, L"Edit") != nullptr;
        });
    }
    /// Editors are ended, since they would ask what to do with the text; Explorer is the desktop, too.
    ~Visit() {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        const HANDLE process = guest.editor ? OpenProcess(PROCESS_TERMINATE, FALSE, id) : nullptr;
        if (!process || !TerminateProcess(process, 0))
            PostMessageW(window, WM_CLOSE, 0, 0);
        CloseHandle(process);
        static_cast<void>(WaitFor([&] { return !IsWindow(window); }));
    }
    [[nodiscard]] std::wstring Text() const { return guest.file == page ? TitleOf(window) : TextOf(field); }

    const Guest& guest;
    const Sandbox folder{marker};
    HWND window = nullptr;
    HWND field = nullptr;
};

/// The password arrives whole, or not at all; after a drag that hands over nothing the box keeps it.
void TakeElsewhere(bool inject) {
    std::string seen;
    bool taken = false;
    for (const Guest& guest : guests) {
        seen += std::string(guest.name) + ": ";
        try {
            Visit visit(guest);
            visit.Open();
            const std::wstring before = visit.Text();
            const Sandbox sandbox;
            sandbox.SetSetting(L"Drag Drop Mode", inject ? L"Inject" : L"Drag Drop");
            const App app(sandbox);
            Pointer pointer;
            const std::wstring secret = RandomSecret(10);
            app.MoveTo({660, 420}); // to the right of the guest and below it
            app.Activate();
            app.ClickPassword(pointer, secret);
            pointer.Drag(CentreOf(app.PasswordBox()), CentreOf(visit.field));
            const bool whole = WaitFor([&] { return visit.Text().find(secret) != std::wstring::npos; });
            EXPECT_TRUE(whole || visit.Text() == before) << guest.name << " took a part";
            EXPECT_TRUE(inject || app.Shown().size() == (whole ? 0 : 10)) << guest.name << ", left in the box";
            seen += whole ? "arrived whole; " : "did not; ";
            taken = taken || whole;
        } catch (const Failure& failure) {
            seen += failure.what() + std::string("; ");
        }
    }
    testing::Test::RecordProperty("seen", seen);
    if (!taken)
        GTEST_SKIP() << "nothing here has taken it";
}

// The last ones: the program that the others share would stand in the way.
TEST_F(Claims, DragElsewhere) {
    stage.reset();
    TakeElsewhere(false);
}
TEST_F(Claims, InjectElsewhere) {
    stage.reset();
    TakeElsewhere(true);
}

} // namespace
} // namespace vextrel::driver
