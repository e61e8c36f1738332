#pragma once

#include "core/OptionValues.h"
#include "win32/ProgramState.h"

#include <functional>
#include <vector>

namespace vextrel {

/// The only access to files in INI format, the settings file and layout files alike. The system's profile functions do
/// the reading and writing; nothing is ever held open or parsed here.
class SettingsStore {
  public:
    explicit SettingsStore(ProgramState& program)
        : program_(program) {}

    /// The settings file's path: "vxrconfig.ini" in the program folder. @param createIfMissing creates it empty.
    [[nodiscard]] std::wstring GetSettingsPath(bool createIfMissing) const;

    /// @return the value, cut to 254 characters of the code page; empty for an empty file name and for whatever is
    /// missing.
    [[nodiscard]] std::wstring ReadINIValue(const std::wstring& file, std::wstring_view section,
                                            std::wstring_view key) const;

    /// Writes one value, unless the user has switched saving off. A settings file that cannot be written changes
    /// nothing else. @param file empty for the settings file. @return the system's error, else ERROR_SUCCESS.
    DWORD WriteINIValue(const std::wstring& file, std::wstring_view section, std::wstring_view key,
                        std::wstring_view value);

    /// Values of the section "Settings" in the settings file.
    [[nodiscard]] std::wstring ReadSetting(std::wstring_view key) const {
        return ReadINIValue(program_.SettingsFilePath, settings::section, key);
    }
    void WriteSetting(std::wstring_view key, std::wstring_view value) {
        WriteINIValue(program_.SettingsFilePath, settings::section, key, value);
    }

    /// Writes the value when nothing waits to be painted any more, if saving is on now: what the user sees goes first.
    void WriteSettingSoon(std::wstring_view key, std::wstring_view value) {
        if (!mayWrite_ || mayWrite_()) {
            waiting_.emplace_back(key, value);
        }
    }
    [[nodiscard]] bool HasWaiting() const noexcept { return !waiting_.empty(); }
    /// Where there is no room for it, nothing else changes: this is called outside all handlers.
    void WriteWaiting() noexcept;

    /// From now on each write asks first. Until the controller exists, writes are unconditional.
    void SetWriteGate(std::function<bool()> mayWrite) { mayWrite_ = std::move(mayWrite); }

  private:
    DWORD Write(const std::wstring& file, std::wstring_view section, std::wstring_view key, std::wstring_view value);

    ProgramState& program_;
    std::function<bool()> mayWrite_;
    std::vector<std::pair<std::wstring, std::wstring>> waiting_; ///< keys and values, oldest first
    DWORD waitLimitMs_ = 1000;                                   ///< for another program's write to the same file
};

} // namespace vextrel
