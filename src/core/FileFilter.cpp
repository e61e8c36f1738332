#include "core/FileFilter.h"

#include <algorithm>

namespace vextrel {

std::wstring FilterForSystem(std::wstring_view filter) {
    constexpr std::wstring_view end(L"\0\0", 2);
    std::wstring result(filter);
    std::replace(result.begin(), result.end(), L'|', L'\0');
    while (!result.ends_with(end)) {
        result.push_back(L'\0');
    }
    return result;
}

std::wstring_view FolderOfPath(std::wstring_view path) noexcept {
    const std::size_t separator = path.find_last_of(L"\\/");
    if (separator == std::wstring_view::npos) {
        return {};
    }
    const bool isRoot = separator == 0 || path[separator - 1] == L':';
    return path.substr(0, isRoot ? separator + 1 : separator);
}

} // namespace vextrel
