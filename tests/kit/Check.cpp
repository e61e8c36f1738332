// All tests in one program, for the machine at hand: it writes what was found to report.txt and report.json beside
// check.cmd. GoogleTest shows how far it is; its options choose tests.

#include "driver/Input.h"
#include "driver/Machine.h"
#include "driver/Process.h"
#include "win32/version.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <mutex>
#include <regex>
#include <sstream>
#include <thread>

namespace vextrel::kit {
namespace {

using driver::Narrow;

/// In one line, without what could tell whose machine it was: paths, and what the environment calls user and machine.
std::string Impersonal(const std::string& text) {
    // A path may have blanks: it ends with the line, or at the next colon, which no name may have.
    static const std::regex path(R"((^|\W)(?:[A-Za-z]:[\\/]|\\\\(?!"))[^:\n]*)");
    std::string kept = std::regex_replace(text.substr(0, 2000), path, "$1<path>");
    for (const char* variable : {"USERNAME", "COMPUTERNAME"}) {
        const std::string name = std::getenv(variable) ? std::getenv(variable) : "";
        // A shorter one would be found in many a word.
        for (std::size_t at = 0; name.size() > 2 && (at = kept.find(name, at)) != std::string::npos; at += 6)
            kept.replace(at, name.size(), "<name>");
    }
    return std::regex_replace(kept, std::regex("[\\x01-\\x20]+"), " ");
}

using Row = std::vector<std::pair<const char*, std::string>>;

/// What of this machine bears on the results.
std::vector<Row> SystemFacts() {
    const auto registered = [](const wchar_t* value) {
        wchar_t text[64] = {};
        DWORD bytes = sizeof text;
        RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", value, RRF_RT_REG_SZ,
                     nullptr, text, &bytes);
        return Narrow(text);
    };
    wchar_t date[16] = {};
    GetDateFormatEx(LOCALE_NAME_INVARIANT, 0, nullptr, L"yyyy-MM-dd", date, 16, nullptr);
    wchar_t locale[LOCALE_NAME_MAX_LENGTH] = {};
    GetUserDefaultLocaleName(locale, LOCALE_NAME_MAX_LENGTH);
    std::ostringstream monitors;
    monitors << GetSystemMetrics(SM_CMONITORS) << ", the first " << GetSystemMetrics(SM_CXSCREEN) << " x "
             << GetSystemMetrics(SM_CYSCREEN) << " at " << GetDpiForSystem() << " dpi";
    alignas(TOKEN_MANDATORY_LABEL) BYTE label[128] = {};
    DWORD size = 0;
    GetTokenInformation(GetCurrentProcessToken(), TokenIntegrityLevel, label, sizeof label, &size);
    const PSID level = reinterpret_cast<TOKEN_MANDATORY_LABEL*>(label)->Label.Sid;
    const auto fact = [](const char* name, const std::string& value) { return Row{{"name", name}, {"value", value}}; };
    return {fact("Vextrel", Narrow(VEXTREL_VERSION_TEXT)),
            fact("Windows", registered(L"DisplayVersion") + " build " + registered(L"CurrentBuildNumber")),
            fact("Wine", driver::UnderWine() ? "yes" : "no"),
            fact("Date", Narrow(date)),
            fact("Monitors", monitors.str()),
            fact("Language", Narrow(locale)),
            fact("Code page", std::to_string(GetACP())),
            fact("Integrity level", level ? std::to_string(*GetSidSubAuthority(level, 0)) : "unknown")};
}

/// What is known so far, written anew after each test.
class Report : public testing::EmptyTestEventListener {
  public:
    /// @return the closing line, which begins so.
    std::string Write(const std::string& end) const {
        std::ofstream text(root_ / L"report.txt");
        std::ofstream json(root_ / L"report.json");
        const char* separator = "{";
        for (const auto& [title, rows] : {std::pair("system", system_), {"claims", Claims()}, {"tests", tests_}}) {
            json << std::exchange(separator, "],\n") << std::quoted(title) << ": [";
            const char* opening = "\n  {";
            for (const Row& row : rows) {
                for (const auto& [key, value] : row) {
                    text << value << "  ";
                    json << std::exchange(opening, ", ") << std::quoted(key) << ": " << std::quoted(value);
                }
                text << '\n';
                json << '}';
                opening = ",\n  {";
            }
            text << '\n';
        }
        std::ostringstream line;
        line << end << ": " << tests_.size() << " tests";
        for (const char* outcome : {"passed", "failed", "not here"})
            line << ", " << std::ranges::count(tests_, outcome, [](const Row& test) { return test[1].second; }) << ' '
                 << outcome;
        text << line.str() << '\n';
        json << separator << "\"end\": " << std::quoted(line.str()) << "}\n";
        return line.str();
    }
    std::mutex lock; ///< for who ends the tests, so that none is noted meanwhile

  private:
    void OnTestEnd(const testing::TestInfo& test) override {
        const testing::TestResult& result = *test.result();
        std::ostringstream text;
        for (int i = 0; i < result.test_property_count(); ++i)
            text << result.GetTestProperty(i).value() << '\n';
        for (int i = 0; i < result.total_part_count(); ++i)
            text << result.GetTestPartResult(i).message() << '\n';
        const std::lock_guard guard(lock);
        tests_.push_back({{"name", test.test_suite_name() + std::string(".") + test.name()},
                          {"outcome", result.Failed()    ? "failed"
                                      : result.Skipped() ? "not here"
                                                         : "passed"},
                          {"time", std::to_string(result.elapsed_time()) + " ms"},
                          {"text", Impersonal(text.str())}});
        Write("STOPPED");
    }

    /// The table in README.txt names them, and how to look: by tests of that name or of a quoted suite, or by hand.
    std::vector<Row> Claims() const {
        std::vector<Row> claims;
        std::ifstream table(root_ / L"README.txt");
        const std::regex form(R"(\| (\w+) \| (the kit|by hand: )(.*?) \| .*)");
        std::smatch cells;
        for (std::string line; std::getline(table, line);) {
            if (!std::regex_match(line, cells, form))
                continue;
            std::string outcome = cells[2] == "the kit" ? "not run" : "by hand";
            std::string seen = cells[2] == "the kit" ? "" : cells.str(3);
            for (const Row& test : tests_) {
                const std::string& name = test[0].second;
                const std::string suite = '`' + name.substr(0, name.find('.')) + '`';
                if (!name.ends_with("." + cells.str(1)) && cells.str(3).find(suite) == std::string::npos)
                    continue;
                if (outcome != "failed" && (outcome != "passed" || test[1].second == "failed"))
                    outcome = test[1].second; // the worst of what was tried
                seen += test[3].second + " ";
            }
            claims.push_back({{"name", cells[1]}, {"outcome", outcome}, {"seen", seen}});
        }
        return claims;
    }

    // The folders lie as in the source tree, where the tests look for the program and its files.
    const std::filesystem::path root_ = driver::OwnFolder() / L"..\\..\\..";
    const std::vector<Row> system_ = SystemFacts();
    std::vector<Row> tests_;
};

} // namespace
} // namespace vextrel::kit

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    testing::InitGoogleTest(&argc, argv);
    // All that the tests start ends with this program, however that ends.
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    AssignProcessToJobObject(job, GetCurrentProcess());
    // Where the system keeps background programs from coming to the front, tests of that could not work.
    UINT_PTR lockTimeout = 0;
    SystemParametersInfoW(SPI_GETFOREGROUNDLOCKTIMEOUT, 0, &lockTimeout, 0);
    SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, nullptr, 0);
    // Windows often names the temporary folder in short; tests compare it with what dialogs say.
    wchar_t temporary[MAX_PATH] = {};
    GetLongPathNameW(std::filesystem::temp_directory_path().c_str(), temporary, MAX_PATH);
    SetEnvironmentVariableW(L"TMP", temporary);
    // A click on the console would hold up all output.
    const HANDLE console = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    GetConsoleMode(console, &mode);
    SetConsoleMode(console, ENABLE_EXTENDED_FLAGS | ENABLE_PROCESSED_INPUT);

    auto* const report = new vextrel::kit::Report; // GoogleTest's from now on
    testing::UnitTest::GetInstance()->listeners().Append(report);
    const auto end = [&](const char* how, UINT code) {
        const std::lock_guard guard(report->lock);
        // What a test holds down when it is stopped.
        for (const int key : {VK_SHIFT, VK_CONTROL, VK_MENU, VK_LWIN})
            vextrel::driver::Keys::Up(static_cast<WORD>(key));
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, reinterpret_cast<PVOID>(lockTimeout), 0);
        FlushConsoleInputBuffer(console);
        SetConsoleMode(console, mode);
        std::cout << report->Write(how) << std::endl;
        TerminateProcess(GetCurrentProcess(), code);
    };
    std::cout << "In ten seconds the pointer and the keys will be taken, and the clipboard, for about ten minutes.\n"
                 "Save your work, close Vextrel, and leave mouse and keyboard alone until it is over.\n"
                 "Hold Escape down for half a second to stop."
              << std::endl;
    std::thread([&] {
        // The tests press it, too, but let go at once.
        for (int seen = 0; seen < 8; Sleep(50))
            seen = GetAsyncKeyState(VK_ESCAPE) < 0 ? seen + 1 : 0;
        end("STOPPED", 2);
    }).detach();
    Sleep(10'000);
    const bool passed = RUN_ALL_TESTS() == 0 && testing::UnitTest::GetInstance()->test_to_run_count() > 0;
    end(passed ? "PASSED" : "FAILED", passed ? 0 : 1);
}
