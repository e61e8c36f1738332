#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace vextrel {

/// A filter as users of the file dialogs write it ("Text|*.txt") in the form that the system takes: every "|" becomes
/// a NUL character, and the whole ends in two of them.
[[nodiscard]] inline std::wstring FilterForSystem(std::wstring_view filter) {
    std::wstring result(filter);
    std::ranges::replace(result, L'|', L'\0');
    while (!result.ends_with(std::wstring_view(L"\0\0", 2))) {
        result.push_back(L'\0');
    }
    return result;
}

/// The folder that a path or a pattern in a folder ("C:\folder\*.lng") stands in, without the separator but for a
/// root's own ("C:\"); empty when it names none.
[[nodiscard]] inline std::wstring_view FolderOfPath(std::wstring_view path) noexcept {
    const std::size_t separator = path.find_last_of(L"\\/");
    if (separator == std::wstring_view::npos) {
        return {};
    }
    const bool isRoot = separator == 0 || path[separator - 1] == L':';
    return path.substr(0, isRoot ? separator + 1 : separator);
}

} // namespace vextrel
