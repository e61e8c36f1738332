#include "core/ids.h"
#include "driver/App.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace vextrel::driver {
namespace {

namespace fs = std::filesystem;

const fs::path package = OwnFolder() / L"..\\package";

DWORD RunSilently(const fs::path& program) {
    return Process(program, L"/S").ExitCode(Milliseconds(60000));
}

bool IsRegistered() {
    constexpr const wchar_t* key = L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Vextrel";
    return RegGetValueW(HKEY_CURRENT_USER, key, L"QuietUninstallString", RRF_RT_REG_SZ, nullptr, nullptr, nullptr) == 0;
}

std::set<fs::path> NamesIn(const fs::path& folder) {
    std::set<fs::path> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        names.insert(fs::relative(entry.path(), folder));
    return names;
}

/// What a user does: switches an option on, which the next time is found so, and tries to install once more meanwhile.
void Use(const fs::path& folder, bool again) {
    Sandbox::LetOthersAsk(folder);
    const App app(folder / L"vextrel.exe");
    EXPECT_EQ(app.Checked(ids::mnuOptionsBeepOnHover), again);
    app.Switch(ids::mnuOptionsBeepOnHover, true);
    EXPECT_EQ(RunSilently(package / L"setup.exe"), 2U) << "the program is to be closed first";
    EXPECT_EQ(app.Close(), 0U);
}

TEST(Package, InstallsWhatThePortableOneHasAsksNothingAndLeavesNothingButWhatIsTheUsers) {
    auto names = NamesIn(fs::directory_iterator(package / L"portable")->path());
    for (const wchar_t* name : {L"docs\\manual.html", L"German.lng", L"README.txt", L"LICENSE.txt", L"CHANGELOG.txt"})
        EXPECT_TRUE(names.contains(name)) << Narrow(name);
    names.insert(L"uninstall.exe");
    const fs::path folder = fs::path(_wgetenv(L"LOCALAPPDATA")) / L"Programs\\Vextrel";
    const fs::path link = fs::path(_wgetenv(L"APPDATA")) / L"Microsoft\\Windows\\Start Menu\\Programs\\Vextrel.lnk";
    fs::remove_all(folder); // what an earlier run may have left
    ASSERT_EQ(RunSilently(package / L"setup.exe"), 0U);
    EXPECT_EQ(NamesIn(folder), names);
    EXPECT_TRUE(fs::exists(link) && IsRegistered());
    Use(folder, false);

    std::ofstream(folder / L"Mine.lng") << "mine";
    ASSERT_EQ(RunSilently(package / L"setup.exe"), 0U); // the upgrade
    Use(folder, true);
    EXPECT_EQ(RunSilently(folder / L"uninstall.exe"), 0U); // which goes on in a copy of itself
    Await("it has done its work", [] { return !IsRegistered(); });
    EXPECT_EQ(NamesIn(folder), (std::set<fs::path>{L"Mine.lng", L"vxrconfig.ini"}));
    EXPECT_FALSE(fs::exists(link));
}

} // namespace
} // namespace vextrel::driver
