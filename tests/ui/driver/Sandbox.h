#pragma once

#include "driver/Process.h"

#include <fstream>

namespace vextrel::driver {

/// A new temporary folder with a copy of vextrel.exe, so that a test has settings of its own. The program answers other
/// programs, tests among them, only where these say so. They do, unless a test wants the program as users have it: that
/// one key is written by whoever writes the file, and is not seen by those who read it.
class Sandbox : Pinned {
  public:
    enum class Others { Answered, Refused };

    /// Copies the program from where the build leaves it or the environment variable VEXTREL_EXE says; `testBuild`
    /// names a build beside the tests that takes its place.
    explicit Sandbox(const std::wstring& folderName = {}, const std::wstring& testBuild = {},
                     Others others = Others::Answered)
        : others_(others)
        , folder_(parent_ / (folderName.empty() ? L"program" : folderName)) {
        const wchar_t* const named = _wgetenv(L"VEXTREL_EXE");
        const auto built = !testBuild.empty() ? OwnFolder() / testBuild
                           : named            ? std::filesystem::path(named)
                                              : OwnFolder() / L"..\\..\\win64\\vextrel.exe";
        std::filesystem::create_directories(folder_);
        Check(CopyFileW(built.c_str(), Program().c_str(), TRUE) != FALSE, "copying " + Narrow(built.wstring()));
        if (others_ == Others::Answered)
            LetOthersAsk(folder_);
    }
    ~Sandbox() {
        std::error_code error; // the program may have ended so recently that its file is still mapped
        const auto removed = [&] { return std::filesystem::remove_all(parent_, error) != ~std::uintmax_t{}; };
        static_cast<void>(WaitFor(removed, Milliseconds(3000)));
    }

    [[nodiscard]] std::filesystem::path Folder() const { return folder_; }
    [[nodiscard]] std::filesystem::path Program() const { return folder_ / L"vextrel.exe"; }

    /// The bytes of a file in the folder (the settings file if none is named); nothing if there is none.
    [[nodiscard]] std::optional<std::string> Read(const std::wstring& name = settingsName) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        if (!file)
            return std::nullopt;
        std::string read(std::filesystem::file_size(folder_ / name), '\0');
        file.read(read.data(), static_cast<std::streamsize>(read.size()));
        // As the system's profile functions write it.
        const std::string answersLine = "Answer Other Programs=True\r\n";
        if (const auto at = read.find(answersLine); name == settingsName && at != std::string::npos) {
            read.erase(at, answersLine.size());
            if (read == "[Settings]\r\n")
                return std::nullopt;
        }
        return read;
    }
    void Write(const std::string& bytes, const std::wstring& name = settingsName) const {
        // The program may just be reading the file.
        Await("writing " + Narrow(name), [&] {
            std::ofstream file(folder_ / name, std::ios::binary | std::ios::trunc);
            file << bytes;
            return static_cast<bool>(file.flush());
        });
        if (others_ == Others::Answered && name == settingsName)
            LetOthersAsk(folder_);
    }

    /// One value of the settings file as Windows reads it; empty if there is none.
    [[nodiscard]] std::wstring Setting(const std::wstring& key) const {
        wchar_t value[1024] = {};
        GetPrivateProfileStringW(L"Settings", key.c_str(), L"", value, 1024, (folder_ / settingsName).c_str());
        return value;
    }
    void SetSetting(const std::wstring& key, const std::wstring& value) const { SetSettingIn(folder_, key, value); }

    static constexpr const wchar_t* settingsName = L"vxrconfig.ini";

    /// The key that makes the program in a folder answer other programs.
    static void LetOthersAsk(const std::filesystem::path& folder) {
        SetSettingIn(folder, L"Answer Other Programs", L"True");
    }

  private:
    static void SetSettingIn(const std::filesystem::path& folder, const std::wstring& key, const std::wstring& value) {
        const auto file = folder / settingsName;
        Check(WritePrivateProfileStringW(L"Settings", key.c_str(), value.c_str(), file.c_str()) != FALSE,
              "writing the setting " + Narrow(key));
    }
    static std::filesystem::path NewFolder() {
        const std::wstring name = L"vextrel-ui-" + std::to_wstring(GetCurrentProcessId()) + L"-";
        for (int n = 0;; ++n)
            if (auto folder = std::filesystem::temp_directory_path() / (name + std::to_wstring(n));
                std::filesystem::create_directory(folder))
                return folder;
    }

    Others others_;
    std::filesystem::path parent_ = NewFolder();
    std::filesystem::path folder_;
};

} // namespace vextrel::driver
