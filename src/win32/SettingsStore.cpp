#include "win32/SettingsStore.h"

#include "win32/Text.h"
#include "win32/handles.h"

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

/// One writer at a time: the system reads the whole file, changes a line and writes all of it. Another program that
/// holds the mutex on purpose makes a write wait, once, not fail.
class WriteScope : private Pinned {
  public:
    /// @param limitMs how long to wait; 0 once it was in vain.
    WriteScope(std::wstring file, DWORD& limitMs) {
        ::CharLowerW(file.data());
        const auto name = L"Local\\Vextrel-" + std::to_wstring(std::hash<std::wstring>()(file));
        mutex_.Reset(::CreateMutexW(nullptr, FALSE, name.c_str()));
        const DWORD result = ::WaitForSingleObject(mutex_.Get(), limitMs);
        held_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
        limitMs = result == WAIT_TIMEOUT ? 0 : limitMs;
    }
    ~WriteScope() {
        if (held_) {
            ::ReleaseMutex(mutex_.Get());
        }
    }

  private:
    UniqueKernelHandle mutex_;
    bool held_ = false;
};

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
    return Write(file.empty() ? program_.SettingsFilePath : file, section, key, value);
}

void SettingsStore::WriteWaiting() noexcept {
    for (const auto& [key, value] : std::exchange(waiting_, {})) {
        try {
            Write(program_.SettingsFilePath, settings::section, key, value);
        } catch (...) {
            // As for a file that cannot be written.
        }
    }
}

DWORD SettingsStore::Write(const std::wstring& file, std::wstring_view section, std::wstring_view key,
                           std::wstring_view value) {
    const WriteScope alone(file, waitLimitMs_);
    const BOOL written = ::WritePrivateProfileStringW(ThroughCodePage(section).c_str(), ThroughCodePage(key).c_str(),
                                                      ThroughCodePage(value).c_str(), file.c_str());
    return written != FALSE ? ERROR_SUCCESS : ::GetLastError();
}

} // namespace vextrel
