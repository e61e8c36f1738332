#include "win32/ProgramState.h"

#include "win32/Text.h"

namespace vextrel {

std::wstring FindProgramFolder() {
    std::wstring path;
    DWORD length = 0;
    do { // until it is not cut
        path.resize(path.size() + MAX_PATH);
        length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            ThrowLastError();
        }
    } while (length == path.size());
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
