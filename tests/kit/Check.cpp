// Runs all test programs on the machine at hand, shows how far it is, and writes report.txt and report.json beside
// check.cmd. `--only=A,B` takes these suites alone ("Rules" are those without a window).

#include "kit/Report.h"

#include "driver/Process.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vextrel::kit {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr DWORD suiteLimitMs = 300'000;
constexpr DWORD lookMs = 50;
/// How often in a row Escape has to be seen down. The tests press it, too, but let go at once.
constexpr int looksForStop = 8;
/// Of tests with a window: a press or a release can be lost on a busy machine. The report tells how many it took.
constexpr int attempts = 3;

struct Suite {
    const wchar_t* program;
    std::string name;
    std::string filter;
};

constexpr const char* rules = "Rules";

struct Stopped {};

/// To be called every lookMs.
void LookForStop() {
    static int seen = 0; // the key is one for all
    seen = GetAsyncKeyState(VK_ESCAPE) < 0 ? seen + 1 : 0;
    if (seen >= looksForStop)
        throw Stopped();
}

std::string BytesOf(const fs::path& file) {
    std::ostringstream bytes;
    std::ifstream stream(file, std::ios::binary);
    if (stream.peek() != std::ifstream::traits_type::eof())
        bytes << stream.rdbuf();
    return bytes.str();
}

/// Everything that one test program started ends with it, however that ends.
class Job {
  public:
    Job() {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(job_, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    }
    ~Job() {
        TerminateJobObject(job_, 1);
        CloseHandle(job_);
    }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    void Take(HANDLE process) const { AssignProcessToJobObject(job_, process); }

  private:
    HANDLE job_ = CreateJobObjectW(nullptr, nullptr);
};

class Check {
  public:
    Check() {
        if (FindWindowW(L"VextrelForm", nullptr))
            throw std::runtime_error("close Vextrel first");
        // Where the system keeps background programs from coming to the front, tests of the foreground could not work;
        // for this session, until the end.
        SystemParametersInfoW(SPI_GETFOREGROUNDLOCKTIMEOUT, 0, &lockTimeout_, 0);
        SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, nullptr, 0);
        SetThreadExecutionState(ES_CONTINUOUS | ES_DISPLAY_REQUIRED);
        // A click on the console would hold up all output.
        SetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), ENABLE_EXTENDED_FLAGS | ENABLE_PROCESSED_INPUT);
        // What tests leave in their temporary folder when they are stopped goes as well.
        fs::create_directories(temporary_);
        SetEnvironmentVariableW(L"TMP", temporary_.c_str());
        SetEnvironmentVariableW(L"TEMP", temporary_.c_str());
        report_.facts = SystemFacts();
    }
    ~Check() {
        for (const int key : {VK_SHIFT, VK_CONTROL, VK_MENU, VK_LWIN}) {
            if (GetAsyncKeyState(key) < 0)
                keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
        }
        if (GetAsyncKeyState(VK_LBUTTON) < 0)
            mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0,
                              reinterpret_cast<PVOID>(static_cast<UINT_PTR>(lockTimeout_)), 0);
        if (((GetKeyState(VK_CAPITAL) & 1) != 0) != capsLock_) {
            keybd_event(VK_CAPITAL, 0, 0, 0);
            keybd_event(VK_CAPITAL, 0, KEYEVENTF_KEYUP, 0);
        }
        std::error_code ignored;
        fs::remove_all(temporary_, ignored);
    }
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;

    /// @return the exit code: 0 if all passed, 1 if not, 2 if it was stopped.
    int Run(const std::string& only) {
        std::puts("Vextrel tries itself out on this machine. To stop it, hold Escape down for half a second.");
        int code = 2;
        try {
            RunSuites(Plan(only));
            report_.end = End::Finished;
            code = report_.results.empty() || report_.Count("failed") != 0 ? 1 : 0;
        } catch (const Stopped&) {
        }
        Write();
        std::printf("%s\nWhat was found is in report.txt and report.json. They name no person, folder or machine.\n",
                    report_.Summary().c_str());
        return code;
    }

  private:
    /// Those without a window come first, what takes longest last.
    std::vector<Suite> Plan(const std::string& only) {
        std::vector<Suite> plan{{L"vextrel_core_tests.exe", rules, "*"}};
        for (const wchar_t* program : {L"vextrel_shell_tests.exe", L"vextrel_ui_tests.exe"}) {
            const fs::path list = temporary_ / (std::wstring(program) + L".txt");
            if (Start(program, L"--gtest_list_tests", list) != 0)
                report_.results.push_back({driver::Narrow(program), "(list)", "failed", "cannot be started", "", 0, 1});
            std::istringstream lines(BytesOf(list));
            for (std::string line; std::getline(lines, line);) {
                if (const auto point = line.find('.'); line[0] != ' ' && point != std::string::npos)
                    plan.push_back({program, line.substr(0, point), line.substr(0, point) + ".*"});
            }
        }
        // These make and install packages: they are tests of the folder that this kit was made in.
        std::erase_if(plan, [](const Suite& suite) { return suite.name == "Package" || suite.name == "Kit"; });
        std::stable_partition(plan.begin(), plan.end(), [](const Suite& suite) { return suite.name != "Soak"; });
        if (!only.empty())
            std::erase_if(plan, [&](const Suite& suite) {
                return ("," + only + ",").find("," + suite.name + ",") == std::string::npos;
            });
        return plan;
    }

    void RunSuites(const std::vector<Suite>& plan) {
        bool warned = false;
        for (const Suite& suite : plan) {
            if (suite.name != rules && !std::exchange(warned, true))
                Warn();
            std::printf("[%d/%d] %s ... ", static_cast<int>(&suite - plan.data()) + 1, static_cast<int>(plan.size()),
                        suite.name.c_str());
            std::fflush(stdout);
            const auto results = RunSuite(suite);
            const auto failed = std::ranges::count(results, "failed", &Result::outcome);
            std::printf("%s\n", failed == 0 ? "passed" : "FAILED");
            report_.results.insert(report_.results.end(), results.begin(), results.end());
            Write();
        }
    }

    static void Warn() {
        std::puts("\nIn ten seconds the pointer and the keys will be taken, and the clipboard, for about ten minutes.\n"
                  "Save your work, close Notepad and WordPad, and leave mouse and keyboard alone until it is over.\n"
                  "Hold Escape down to stop.\n");
        for (int look = 0; look < 10'000 / static_cast<int>(lookMs); ++look) {
            LookForStop();
            Sleep(lookMs);
        }
    }

    std::vector<Result> RunSuite(const Suite& suite) {
        // GoogleTest takes its name in the code page, which need not have all of a user's name; a short one is plain.
        std::wstring folder(32768, L'\0');
        folder.resize(GetShortPathNameW(temporary_.c_str(), folder.data(), static_cast<DWORD>(folder.size())));
        const fs::path xml = (folder.empty() ? temporary_ : fs::path(folder)) / L"results.xml";
        const std::wstring arguments = L"--gtest_brief=1 \"--gtest_filter=" +
                                       std::wstring(suite.filter.begin(), suite.filter.end()) +
                                       L"\" \"--gtest_output=xml:" + xml.wstring() + L"\"";
        std::vector<Result> results;
        for (int attempt = 1; attempt <= attempts; ++attempt) {
            fs::remove(xml);
            const DWORD code = Start(suite.program, arguments, OwnFolder() / L"log.txt");
            results = ReadResults(BytesOf(xml));
            const bool failed = std::ranges::count(results, "failed", &Result::outcome) != 0;
            if (results.empty() || (code != 0 && !failed))
                results.push_back({suite.name, "(program)", "failed",
                                   "ended with code " + std::to_string(code) + " before it had reported", "", 0, 1});
            for (Result& result : results)
                result.attempts = attempt;
            if ((code == 0 && !failed) || suite.name == rules)
                break;
        }
        return results;
    }

    /// Runs a test program to its end, its output going to a file; throws Stopped if the user does not want to wait.
    DWORD Start(const wchar_t* program, const std::wstring& arguments, const fs::path& output) const {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        const HANDLE file = CreateFileW(output.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, &inherited, OPEN_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        const fs::path path = OwnFolder() / program;
        std::wstring command = L"\"" + path.wstring() + L"\" " + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = file;
        startup.hStdError = file;
        PROCESS_INFORMATION process{};
        const Job job;
        const bool started = CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED,
                                            nullptr, root_.c_str(), &startup, &process) != FALSE;
        CloseHandle(file);
        if (!started)
            return GetLastError();
        job.Take(process.hProcess);
        ResumeThread(process.hThread);
        CloseHandle(process.hThread);
        const std::unique_ptr<void, decltype(&CloseHandle)> handle(process.hProcess, &CloseHandle);
        for (DWORD waited = 0; WaitForSingleObject(handle.get(), lookMs) == WAIT_TIMEOUT; waited += lookMs) {
            LookForStop();
            if (waited > suiteLimitMs)
                return WAIT_TIMEOUT;
        }
        DWORD code = 0;
        GetExitCodeProcess(handle.get(), &code);
        return code;
    }

    void Write() {
        report_.seconds = std::chrono::duration<double>(Clock::now() - start_).count();
        std::ofstream(root_ / L"report.txt", std::ios::binary) << report_.AsText();
        std::ofstream(root_ / L"report.json", std::ios::binary) << report_.AsJson();
    }

    /// Windows often gives the temporary folder by its short name; tests compare it with what dialogs say.
    static fs::path LongName(const fs::path& folder) {
        std::wstring name(32768, L'\0');
        name.resize(GetLongPathNameW(folder.c_str(), name.data(), static_cast<DWORD>(name.size())));
        return name.empty() ? folder : fs::path(name);
    }
    static fs::path OwnFolder() { return driver::OwnFolder(); }

    const Clock::time_point start_ = Clock::now();
    // The folders lie as in the source tree, where the tests look for the program and its files.
    const fs::path root_ = fs::canonical(OwnFolder() / L"..\\..\\..");
    const fs::path temporary_ =
        LongName(fs::temp_directory_path()) / (L"vextrel-check-" + std::to_wstring(GetCurrentProcessId()));
    const bool capsLock_ = (GetKeyState(VK_CAPITAL) & 1) != 0;
    DWORD lockTimeout_ = 0;
    Report report_;
};

} // namespace
} // namespace vextrel::kit

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    constexpr std::string_view only = "--only=";
    const std::string_view argument = argc > 1 ? argv[1] : "";
    if (argc > 2 || (argc == 2 && !argument.starts_with(only))) {
        std::puts("usage: check.cmd [--only=SUITE,SUITE...]");
        return 1;
    }
    DWORD mode = 0;
    const bool console = GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != FALSE;
    int code = 1;
    try {
        vextrel::kit::Check check;
        code = check.Run(std::string(argument.substr(std::min(only.size(), argument.size()))));
    } catch (const std::exception& error) {
        std::printf("This did not work: %s\n", error.what());
    }
    SetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), mode);
    // Started by a double click, the window would close at once.
    if (console) {
        std::puts("Press Enter to close this window.");
        FlushConsoleInputBuffer(GetStdHandle(STD_INPUT_HANDLE));
        static_cast<void>(std::getchar());
    }
    return code;
}
