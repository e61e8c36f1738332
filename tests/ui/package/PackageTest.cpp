#include "core/ids.h"
#include "driver/App.h"

#include <gtest/gtest.h>
#include <shlobj.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace vextrel::driver {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* uninstallKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Vextrel";
constexpr Milliseconds installerLimit{60000};
constexpr DWORD programRuns = 2; // the installer's exit code for "close it first"

/// The only entry of a folder whose name ends so.
fs::path Find(const fs::path& folder, const std::wstring& ending) {
    for (const auto& entry : fs::directory_iterator(folder))
        if (const std::wstring name = entry.path().filename().wstring(); name.ends_with(ending))
            return entry.path();
    throw Failure("nothing in " + Narrow(folder.wstring()) + " ends with " + Narrow(ending));
}

fs::path PackageFolder() {
    return OwnFolder() / L"..\\package";
}

fs::path SpecialFolder(int id) {
    std::wstring path(MAX_PATH, L'\0');
    Check(SUCCEEDED(SHGetFolderPathW(nullptr, id, nullptr, 0, path.data())), "SHGetFolderPath");
    path.resize(path.find(L'\0'));
    return path;
}

DWORD RunSilently(const fs::path& program) {
    return Process(program, L"/S").ExitCode(installerLimit);
}

std::wstring Registered(const wchar_t* value) {
    std::wstring text(512, L'\0');
    auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(HKEY_CURRENT_USER, uninstallKey, value, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
        ERROR_SUCCESS)
        return L"";
    text.resize(bytes / sizeof(wchar_t) - 1);
    return text;
}

std::string BytesOf(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

std::vector<std::wstring> Listing(const fs::path& folder) {
    std::vector<std::wstring> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            names.push_back(fs::relative(entry.path(), folder).wstring());
    std::ranges::sort(names);
    return names;
}

/// What a user does first: types something, changes a setting, and closes the program.
void UseOnce(const fs::path& program) {
    Sandbox::LetOthersAsk(program.parent_path());
    const App app(program);
    Pointer pointer;
    app.ClickPassword(pointer, L"aB7");
    EXPECT_EQ(app.Text(ids::txtPassword), L"***");
    app.Command(ids::mnuOptionsBeepOnHover);
    Await("the setting is saved", [&] { return fs::exists(program.parent_path() / L"vxrconfig.ini"); });
    EXPECT_EQ(app.Close(), 0U);
}

TEST(Package, TheZipRunsWhereItIsUnpacked) {
    const fs::path folder = Find(PackageFolder() / L"portable", L"win64");
    UseOnce(folder / L"vextrel.exe");
    for (const wchar_t* file : {L"docs\\manual.html", L"German.lng", L"README.txt", L"LICENSE.txt", L"CHANGELOG.txt"})
        EXPECT_TRUE(fs::exists(folder / file)) << Narrow(file);
}

TEST(Package, TheInstallerAsksNothingKeepsSettingsAndLeavesNothingElse) {
    const fs::path setup = Find(PackageFolder(), L"-setup.exe");
    const fs::path folder = SpecialFolder(CSIDL_LOCAL_APPDATA) / L"Programs\\Vextrel";
    const fs::path program = folder / L"vextrel.exe";
    const fs::path settings = folder / L"vxrconfig.ini";
    const fs::path startMenu = SpecialFolder(CSIDL_PROGRAMS) / L"Vextrel.lnk";
    fs::remove_all(folder); // what an earlier test run may have left

    ASSERT_EQ(RunSilently(setup), 0U);
    const auto installed = Listing(folder);
    auto expected = Listing(Find(PackageFolder() / L"portable", L"win64"));
    std::erase(expected, L"vxrconfig.ini");
    expected.push_back(L"uninstall.exe");
    std::ranges::sort(expected);
    EXPECT_EQ(installed, expected);
    EXPECT_TRUE(fs::exists(startMenu));
    EXPECT_TRUE(setup.filename().wstring().find(Registered(L"DisplayVersion")) != std::wstring::npos);

    UseOnce(program);
    const std::string saved = BytesOf(settings);
    EXPECT_FALSE(saved.empty());
    {
        const App app(program);
        EXPECT_EQ(RunSilently(setup), programRuns);
        EXPECT_EQ(app.Close(), 0U);
    }

    // The upgrade: a file of the older version that is not the installer's own stays, too.
    std::ofstream(folder / L"Mine.lng") << "mine";
    ASSERT_EQ(RunSilently(setup), 0U);
    EXPECT_EQ(BytesOf(settings), saved);
    EXPECT_TRUE(fs::exists(folder / L"Mine.lng"));
    fs::remove(folder / L"Mine.lng");
    UseOnce(program);

    // The uninstaller goes on in a copy of itself.
    EXPECT_EQ(Registered(L"QuietUninstallString"), L"\"" + folder.wstring() + L"\\uninstall.exe\" /S");
    EXPECT_EQ(RunSilently(folder / L"uninstall.exe"), 0U);
    Await(
        "the uninstaller has done its work", [&] { return Registered(L"DisplayName").empty(); }, installerLimit);
    EXPECT_EQ(Listing(folder), std::vector<std::wstring>{L"vxrconfig.ini"});
    EXPECT_FALSE(fs::exists(folder / L"docs"));
    EXPECT_FALSE(fs::exists(startMenu));
    fs::remove_all(folder);
}

} // namespace
} // namespace vextrel::driver
