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
    const std::wstring command = L"\"" + (Folder() / L"check.cmd").wstring() + L"\" --gtest_filter=" + tests;
    return Process(L"C:\\windows\\system32\\cmd.exe", L"/c \"" + command + L"\"");
}

std::string Report(const wchar_t* name = L"report.json") {
    std::ostringstream text;
    text << std::ifstream(Folder() / name).rdbuf();
    return text.str();
}

void ExpectReport(std::initializer_list<const char*> parts) {
    for (const char* part : parts)
        EXPECT_NE(Report().find(part), std::string::npos) << part << " is missing in " << Report();
}

TEST(Kit, TellsWhatFailedButNotWhoseMachineItIsAndEndsAllWhenEscapeIsHeld) {
    const fs::path program = Folder() / L"build\\win64\\vextrel.exe";
    fs::rename(program, program.wstring() + L".away");
    const Process kit = StartKit(L"StartUp.*:Typing.*");
    const bool told = WaitFor([] { return Report().find("copying <path>") != std::string::npos; }, limit);
    fs::rename(program.wstring() + L".away", program);
    EXPECT_TRUE(told) << Report();
    const std::initializer_list<const char*> secrets{"C:\\", "Z:\\", "mehr", std::getenv("COMPUTERNAME")};
    for (const char* kept : secrets)
        EXPECT_EQ((Report() + Report(L"report.txt")).find(kept), std::string::npos) << kept << " is told";
    const auto window = [] { return FindWindowW(formClass, L"Vextrel"); };
    Await(
        "a test has started the program", [&] { return window() != nullptr; }, limit);
    Await("it ends", [&] {
        Keys::Down(VK_ESCAPE); // as a key that is held repeats itself
        return !kit.Runs();
    });
    Keys::Up(VK_ESCAPE);
    EXPECT_EQ(kit.ExitCode(), 2U);
    EXPECT_EQ(window(), nullptr);
    ExpectReport({"\"outcome\": \"failed\"", "\"end\": \"STOPPED", "\"FreedMemory\", \"outcome\": \"not run\""});
}

TEST(Kit, RunsWhatItIsToldToAndPasses) {
    EXPECT_EQ(StartKit(L"Characters.*:Captions.*:Claims.*").ExitCode(limit), 0U) << Report();
    ExpectReport({"\"end\": \"PASSED", "\"name\": \"Captions.", "\"LibraryFolders\", \"outcome\": \"passed\"",
                  "\"OwnersEntry\", \"outcome\": \"not here\"", "\"GhostWindow\", \"outcome\": \"by hand\""});
}

} // namespace
} // namespace vextrel::driver
