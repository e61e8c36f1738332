#include "settings/mINIManagement.h"

#include "settings/OptionValues.h"
#include "win32/Text.h"

#include <array>

namespace vextrel {

namespace {

constexpr DWORD valueBufferSize = 255;

} // namespace

std::wstring SettingsStore::GetSettingsPath(bool createIfMissing) const {
    std::wstring path = program_.folder + L"\\vxrconfig.ini";
    if (createIfMissing && !FileExists(path)) {
        const HANDLE file = ::CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                          OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            ::CloseHandle(file);
        }
    }
    return path;
}

std::wstring SettingsStore::ReadINIValue(const std::wstring& file, std::wstring_view section,
                                         std::wstring_view key) const {
    if (file.empty()) {
        return {};
    }
    std::array<char, valueBufferSize> buffer{};
    const DWORD length = ::GetPrivateProfileStringA(Narrow(section).c_str(), Narrow(key).c_str(), "", buffer.data(),
                                                    valueBufferSize, NarrowPath(file).c_str());
    return Widen({buffer.data(), length});
}

void SettingsStore::WriteINIValue(const std::wstring& file, std::wstring_view section, std::wstring_view key,
                                  std::wstring_view value) {
    if (mayWrite_ && !mayWrite_()) {
        return;
    }
    if (file.empty()) {
        program_.SettingsFilePath = GetSettingsPath(false);
    }
    const std::wstring& target = file.empty() ? program_.SettingsFilePath : file;
    ::WritePrivateProfileStringA(Narrow(section).c_str(), Narrow(key).c_str(), Narrow(value).c_str(),
                                 NarrowPath(target).c_str());
}

std::wstring SettingsStore::ReadSetting(std::wstring_view key) const {
    return ReadINIValue(program_.SettingsFilePath, settings::section, key);
}

void SettingsStore::WriteSetting(std::wstring_view key, std::wstring_view value) {
    WriteINIValue(program_.SettingsFilePath, settings::section, key, value);
}

bool FileExists(const std::wstring& path) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return false;
    }
    ::FindClose(search);
    return true;
}

} // namespace vextrel
