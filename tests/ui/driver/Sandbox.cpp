#include "driver/Sandbox.h"

#include "driver/Process.h"

#include <fstream>
#include <sstream>

namespace vextrel::driver {

namespace {

std::filesystem::path BuiltProgram() {
    std::wstring named(32768, L'\0');
    named.resize(GetEnvironmentVariableW(L"VEXTREL_EXE", named.data(), static_cast<DWORD>(named.size())));
    return named.empty() ? OwnFolder() / L"..\\..\\win64\\vextrel.exe" : std::filesystem::path(named);
}

std::filesystem::path NewFolder() {
    const auto temporary = std::filesystem::temp_directory_path();
    for (int n = 0;; ++n) {
        auto folder = temporary / (L"vextrel-ui-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(n));
        if (std::filesystem::create_directory(folder))
            return folder;
    }
}

// As the system's profile functions write it.
const std::string sectionLine = "[Settings]\r\n";
const std::string answersLine = "Answer Other Programs=True\r\n";

} // namespace

void Sandbox::LetOthersAsk(const std::filesystem::path& folder) {
    Check(WritePrivateProfileStringW(L"Settings", L"Answer Other Programs", L"True", (folder / settingsName).c_str()) !=
              FALSE,
          "letting others ask");
}

Sandbox::Sandbox(const std::wstring& folderName, const std::wstring& testBuild, Others others)
    : others_(others)
    , parent_(NewFolder())
    , folder_(parent_ / (folderName.empty() ? std::wstring(L"program") : folderName)) {
    std::filesystem::create_directory(folder_);
    const auto built = testBuild.empty() ? BuiltProgram() : OwnFolder() / testBuild;
    Check(CopyFileW(built.c_str(), Program().c_str(), TRUE) != FALSE, "copying " + Narrow(built.wstring()));
    if (others_ == Others::Answered)
        LetOthersAsk(folder_);
}

Sandbox::~Sandbox() {
    // The program may have ended so recently that its file is still mapped.
    std::error_code error;
    static_cast<void>(WaitFor(
        [&] {
            error.clear();
            std::filesystem::remove_all(parent_, error);
            return !error;
        },
        Milliseconds(3000)));
}

std::optional<std::string> Sandbox::Read(const std::wstring& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::ostringstream bytes;
    if (file.peek() != std::ifstream::traits_type::eof())
        bytes << file.rdbuf();
    std::string read = bytes.str();
    if (const auto at = read.find(answersLine); name == settingsName && at != std::string::npos) {
        read.erase(at, answersLine.size());
        if (read == sectionLine)
            return std::nullopt;
    }
    return read;
}

void Sandbox::Write(const std::string& bytes, const std::wstring& name) const {
    // The program may just be reading the file.
    Await("writing " + Narrow(name), [&] {
        std::ofstream file(folder_ / name, std::ios::binary | std::ios::trunc);
        file << bytes;
        return static_cast<bool>(file.flush());
    });
    if (others_ == Others::Answered && name == settingsName)
        LetOthersAsk(folder_);
}

std::wstring Sandbox::Setting(const std::wstring& key, const std::wstring& section) const {
    std::wstring value(1024, L'\0');
    value.resize(GetPrivateProfileStringW(section.c_str(), key.c_str(), L"", value.data(),
                                          static_cast<DWORD>(value.size()), (folder_ / settingsName).c_str()));
    return value;
}

void Sandbox::SetSetting(const std::wstring& key, const std::wstring& value, const std::wstring& section) const {
    Check(WritePrivateProfileStringW(section.c_str(), key.c_str(), value.c_str(), (folder_ / settingsName).c_str()) !=
              FALSE,
          "writing the setting " + Narrow(key));
}

} // namespace vextrel::driver
