// The kit as somebody would start it: its check.cmd, in a folder whose name is not plain.

#include "driver/App.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace vextrel::driver {
namespace {

namespace fs = std::filesystem;
constexpr Milliseconds limit{100000};

fs::path Folder() {
    return fs::canonical(fs::directory_iterator(OwnFolder() / L"..\\package\\Prüfung & mehr")->path());
}

Process StartKit(const std::wstring& tests) {
    fs::remove(Folder() / L"report.json");
    GetDesktopWindow(); // under Wine whoever asks first starts it, and the kit ends what it has started
    return Process(L"C:\\windows\\system32\\cmd.exe",
                   L"/c \"\"" + (Folder() / L"check.cmd").wstring() + L"\" --gtest_filter=" + tests + L"\"");
}

bool Told(const char* part) {
    std::ostringstream reports;
    reports << std::ifstream(Folder() / L"report.txt").rdbuf() << std::ifstream(Folder() / L"report.json").rdbuf();
    return reports.str().find(part) != std::string::npos;
}

TEST(Kit, TellsWhatFailedButNotWhoseMachineItIsAndEndsAllWhenEscapeIsHeld) {
    const fs::path program = Folder() / L"build\\win64\\vextrel.exe";
    fs::rename(program, program.wstring() + L".away");
    const Process kit = StartKit(L"Drag.* --gtest_repeat=-1");
    Await(
        "a failure", [] { return Told("\"outcome\": \"failed\""); }, limit);
    fs::rename(program.wstring() + L".away", program);
    const auto runs = [] { return FindWindowW(formClass, L"Vextrel") != nullptr; };
    Await("a test has started the program", runs, limit);
    Await("it ends", [&] {
        Keys::Down(VK_ESCAPE); // as a key that is held repeats itself
        return !kit.Runs();
    });
    Keys::Up(VK_ESCAPE);
    EXPECT_EQ(kit.ExitCode(), 2U);
    EXPECT_TRUE(Told("\"end\": \"STOPPED") && Told("copying <path>"));
    EXPECT_FALSE(Told("C:\\") || Told("Z:\\") || Told("mehr") || Told(std::getenv("COMPUTERNAME")));
    EXPECT_FALSE(runs());
    EXPECT_FALSE(fs::exists(fs::temp_directory_path() / L"vextrel-check"));
}

TEST(Kit, RunsWhatItIsToldToAndPasses) {
    EXPECT_EQ(StartKit(L"Captions.*:Claims.L*:Claims.O*").ExitCode(limit), 0U);
    for (const char* part : {"\"end\": \"PASSED", "\"Captions.", "\"LibraryFolders\", \"outcome\": \"passed\"",
                             "\"OwnersEntry\", \"outcome\": \"not here\"", "\"FreedMemory\", \"outcome\": \"not run\""})
        EXPECT_TRUE(Told(part)) << part;
}

} // namespace
} // namespace vextrel::driver
