#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vextrel::driver {

/// A new temporary folder with a copy of vextrel.exe, so that a test has settings of its own. Removed at the end.
///
/// The program answers other programs, tests among them, only where its settings file says so. It does here, unless a
/// test wants the program as users have it: that one key is written by whoever writes the file, and is not seen by
/// those who read it.
class Sandbox {
  public:
    enum class Others { Answered, Refused };

    /// Copies the program from where the build leaves it, or from the path in the environment variable VEXTREL_EXE.
    /// `folderName`, if given, becomes the name of the program's folder; `testBuild` names a build of the program
    /// beside the tests that takes its place.
    explicit Sandbox(const std::wstring& folderName = {}, const std::wstring& testBuild = {},
                     Others others = Others::Answered);
    explicit Sandbox(Others others)
        : Sandbox({}, {}, others) {}
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    [[nodiscard]] std::filesystem::path Folder() const { return folder_; }
    [[nodiscard]] std::filesystem::path Program() const { return folder_ / L"vextrel.exe"; }

    /// The bytes of a file in the folder (the settings file if none is named); nothing if there is none.
    [[nodiscard]] std::optional<std::string> Read(const std::wstring& name = settingsName) const;
    void Write(const std::string& bytes, const std::wstring& name = settingsName) const;

    /// One value of the settings file as Windows reads it; empty if there is none.
    [[nodiscard]] std::wstring Setting(const std::wstring& key, const std::wstring& section = L"Settings") const;
    void SetSetting(const std::wstring& key, const std::wstring& value,
                    const std::wstring& section = L"Settings") const;

    static constexpr const wchar_t* settingsName = L"vxrconfig.ini";

    /// The key that makes the program in a folder answer other programs.
    static void LetOthersAsk(const std::filesystem::path& folder);

  private:
    Others others_;
    std::filesystem::path parent_;
    std::filesystem::path folder_;
};

} // namespace vextrel::driver
