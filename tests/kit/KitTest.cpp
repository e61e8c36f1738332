// The kit as somebody would start it: its check.cmd, in a folder whose name is not plain.

#include "driver/App.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vextrel::driver {
namespace {

namespace fs = std::filesystem;

constexpr Milliseconds kitLimit{200000};

fs::path KitFolder() {
    for (const auto& unpacked : fs::directory_iterator(OwnFolder() / L"..\\kit"))
        if (unpacked.is_directory())
            return fs::canonical(fs::directory_iterator(unpacked)->path());
    throw Failure("the kit has not been unpacked");
}

struct KitRun {
    explicit KitRun(const std::wstring& suites)
        : process(L"C:\\windows\\system32\\cmd.exe",
                  L"/c \"\"" + (KitFolder() / L"check.cmd").wstring() + L"\" --only=" + suites + L"\"") {
        fs::remove(KitFolder() / L"report.json");
    }
    static std::string Report(const wchar_t* name = L"report.json") {
        std::ostringstream bytes;
        bytes << std::ifstream(KitFolder() / name, std::ios::binary).rdbuf();
        return bytes.str();
    }
    Process process;
};

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Kit, TellsWhatFailedAndNothingOfWhoseMachineItIs) {
    const fs::path program = KitFolder() / L"build\\win64\\vextrel.exe";
    const fs::path away = program.wstring() + L".away";
    fs::rename(program, away);
    const KitRun run(L"Typing");
    EXPECT_EQ(run.process.ExitCode(kitLimit), 1U);
    fs::rename(away, program);
    for (const wchar_t* name : {L"report.json", L"report.txt"}) {
        const std::string report = KitRun::Report(name);
        for (const char* told : {"Typing.", "copying <path>"})
            EXPECT_TRUE(Has(report, told)) << told << " is missing in " << report;
        for (const std::string& kept :
             {std::string("C:\\"), std::string("Z:\\"), std::string("mehr"), std::string(std::getenv("COMPUTERNAME"))})
            EXPECT_FALSE(Has(report, kept)) << kept << " is told in " << report;
    }
}

TEST(Kit, StopsWhenEscapeIsHeldAndEndsWhatItStarted) {
    const KitRun run(L"Typing,Traces");
    const auto window = [] { return FindWindowW(formClass, L"Vextrel"); };
    Await(
        "a test has started the program", [&] { return window() != nullptr; }, kitLimit);
    Await("it ends", [&] {
        Keys::Down(VK_ESCAPE); // as a key that is held repeats itself
        return !run.process.Runs();
    });
    Keys::Up(VK_ESCAPE);
    EXPECT_EQ(run.process.ExitCode(), 2U);
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(Has(KitRun::Report(), "\"end\": \"stopped\"")) << KitRun::Report();
    EXPECT_TRUE(Has(KitRun::Report(), "{\"name\": \"FreedMemory\", \"outcome\": \"not run\"")) << KitRun::Report();
}

TEST(Kit, RunsWhatItIsToldToAndPasses) {
    const KitRun run(L"Rules,Characters,Claims");
    EXPECT_EQ(run.process.ExitCode(kitLimit), 0U) << KitRun::Report();
    const std::string report = KitRun::Report();
    EXPECT_TRUE(Has(report, "\"end\": \"finished\"")) << report;
    EXPECT_TRUE(Has(report, "Characters.OfTheCodePageAndTheirKeys\", \"outcome\": \"passed\"")) << report;
    EXPECT_TRUE(Has(report, "{\"name\": \"LibraryFolders\", \"outcome\": \"as claimed\"")) << report;
    EXPECT_TRUE(Has(report, "{\"name\": \"OwnersEntry\", \"outcome\": \"not here\"")) << report;
}

} // namespace
} // namespace vextrel::driver
