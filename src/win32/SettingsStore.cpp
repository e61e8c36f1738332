#include "win32/SettingsStore.h"

#include "win32/Text.h"

#include <algorithm>
#include <array>

namespace vextrel {

namespace {

constexpr DWORD valueBufferSize = 255;

// The wide profile calls, since only they reach a file whose path the code page cannot express; a short name for it
// there need not be. What goes in and out passes through the code page all the same: it decides which characters
// survive.

std::wstring ThroughCodePage(std::wstring_view text) {
    return Widen(Narrow(text));
}

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
    std::array<wchar_t, valueBufferSize> buffer{};
    const DWORD length = ::GetPrivateProfileStringW(ThroughCodePage(section).c_str(), ThroughCodePage(key).c_str(), L"",
                                                    buffer.data(), valueBufferSize, file.c_str());
    std::string value = Narrow({buffer.data(), length});
    value.resize(std::min<std::size_t>(value.size(), valueBufferSize - 1));
    return Widen(value);
}

DWORD SettingsStore::WriteINIValue(const std::wstring& file, std::wstring_view section, std::wstring_view key,
                                   std::wstring_view value) {
    if (mayWrite_ && !mayWrite_()) {
        return ERROR_SUCCESS;
    }
    if (file.empty()) {
        program_.SettingsFilePath = GetSettingsPath(false);
    }
    const std::wstring& target = file.empty() ? program_.SettingsFilePath : file;
    const BOOL written = ::WritePrivateProfileStringW(ThroughCodePage(section).c_str(), ThroughCodePage(key).c_str(),
                                                      ThroughCodePage(value).c_str(), target.c_str());
    return written != FALSE ? ERROR_SUCCESS : ::GetLastError();
}

} // namespace vextrel
