// What docs/security.md claims and marks untested, looked at from a second program. Each case is named as its mark
// there and notes what it saw; what Wine lacks counts on Windows alone.

#include "core/ids.h"
#include "driver/Machine.h"
#include "driver/MemoryScan.h"
#include "driver/Stage.h"

#include <gtest/gtest.h>
#include <psapi.h>

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

} // namespace
} // namespace vextrel::driver
