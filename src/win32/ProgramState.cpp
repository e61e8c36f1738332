#include "win32/ProgramState.h"

#include "win32/Text.h"

namespace vextrel {

std::wstring FindProgramFolder() {
    std::wstring path(32768, L'\0'); // no path is longer
    if (::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())) == 0) {
        ThrowLastError();
    }
    return path.substr(0, path.find_last_of(L'\\'));
}

bool FileExists(const std::wstring& path) noexcept {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return false;
    }
    ::FindClose(search);
    return true;
}

} // namespace vextrel
