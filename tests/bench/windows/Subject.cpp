#include "windows/Subject.h"

#include <psapi.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <sstream>

namespace vextrel::bench {

using namespace driver;

namespace {

std::string BytesOf(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

/// Wine does not know the memory and the processor time of another process; the system below it does.
/// @return the folder of the process there, or nothing on Windows itself
std::filesystem::path FolderBelowWine(const std::filesystem::path& program) {
    const std::filesystem::path all = L"Z:\\proc";
    std::error_code none;
    int newest = 0;
    for (const auto& entry : std::filesystem::directory_iterator(all, none)) {
        const int id = std::atoi(entry.path().filename().string().c_str());
        if (id > newest && BytesOf(entry.path() / L"cmdline").find(program.string()) != std::string::npos)
            newest = id;
    }
    return newest == 0 ? std::filesystem::path() : all / std::to_wstring(newest);
}

/// Sum of the lines "name:   123 kB".
double SumOfKb(const std::string& text, std::initializer_list<const char*> names) {
    double sum = 0;
    for (const char* name : names)
        if (const std::size_t at = text.find(name); at != std::string::npos)
            sum += std::atof(text.c_str() + at + std::strlen(name));
    return sum;
}

BOOL CALLBACK FindUnpainted(HWND window, LPARAM found) noexcept {
    const bool unpainted = IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE);
    *reinterpret_cast<bool*>(found) = unpainted;
    return !unpainted;
}

} // namespace

double Now() {
    LARGE_INTEGER frequency{};
    LARGE_INTEGER now{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1000 / static_cast<double>(frequency.QuadPart);
}

Subject::Subject(const std::filesystem::path& program, const Names& names)
    : begun_(Now())
    , process_(program) {
    Await("the program shows its windows", [&] {
        if (!main_)
            main_ = process_.Window(names.mainClass, names.mainTitle);
        if (main_ && !layer_)
            layer_ = process_.Window(names.layerClass, L"");
        return main_ && layer_;
    });
    Ask(main_, WM_NULL); // it has come to its message loop
    Await("the program has painted its windows", [&] { return !WaitsForPaint(); });
    startMs_ = Now() - begun_;
    system_ = FolderBelowWine(program);
    BringToFront(main_);
}

HWND Subject::Control(int id) const {
    const HWND control = GetDlgItem(main_, id);
    if (!control)
        throw Failure("no control " + std::to_string(id));
    return control;
}

bool Subject::WaitsForPaint() const {
    bool unpainted = false;
    FindUnpainted(main_, reinterpret_cast<LPARAM>(&unpainted));
    if (!unpainted)
        EnumChildWindows(main_, FindUnpainted, reinterpret_cast<LPARAM>(&unpainted));
    return unpainted;
}

double Subject::Time(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    const double before = Now();
    Ask(window, message, wParam, lParam);
    while (WaitsForPaint())
        if (Now() - before > 10000)
            throw Failure("a window is not painted");
    return Now() - before;
}

Subject::MemoryKb Subject::Memory() const {
    if (!system_.empty()) {
        const std::string text = BytesOf(system_ / L"smaps_rollup");
        return {SumOfKb(text, {"Private_Clean:", "Private_Dirty:"}), SumOfKb(text, {"Rss:"})};
    }
    PROCESS_MEMORY_COUNTERS_EX memory{};
    Check(GetProcessMemoryInfo(process_.Handle(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory) !=
              FALSE,
          "GetProcessMemoryInfo");
    return {static_cast<double>(memory.PrivateUsage) / 1024, static_cast<double>(memory.WorkingSetSize) / 1024};
}

double Subject::ProcessorMs() const {
    if (!system_.empty()) {
        double nanoseconds = 0;
        for (const auto& thread : std::filesystem::directory_iterator(system_ / L"task"))
            nanoseconds += std::atof(BytesOf(thread.path() / L"schedstat").c_str());
        return nanoseconds / 1e6;
    }
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    Check(GetProcessTimes(process_.Handle(), &created, &ended, &kernel, &user) != FALSE, "GetProcessTimes");
    const auto ms = [](const FILETIME& time) {
        return static_cast<double>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart) / 10000;
    };
    return ms(kernel) + ms(user);
}

std::vector<std::wstring> Subject::Dlls() const {
    std::array<HMODULE, 256> modules{};
    DWORD bytes = 0;
    Check(EnumProcessModules(process_.Handle(), modules.data(), sizeof modules, &bytes) != FALSE, "EnumProcessModules");
    std::vector<std::wstring> names;
    for (std::size_t n = 1; n < bytes / sizeof(HMODULE); ++n) { // the first is the program
        std::wstring name(MAX_PATH, L'\0');
        name.resize(GetModuleBaseNameW(process_.Handle(), modules.at(n), name.data(), MAX_PATH));
        CharLowerW(name.data());
        names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

void Subject::Close() const {
    Check(PostMessageW(main_, WM_CLOSE, 0, 0) != FALSE, "posting WM_CLOSE");
    static_cast<void>(process_.ExitCode());
}

} // namespace vextrel::bench
