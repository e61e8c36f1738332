#pragma once

#include <string>
#include <string_view>

namespace vextrel {

/// A filter as users of the file dialogs write it ("Text|*.txt") in the form that the system takes: every "|" becomes
/// a NUL character, and the whole ends in two of them.
[[nodiscard]] std::wstring FilterForSystem(std::wstring_view filter);

/// The folder that a path or a pattern in a folder ("C:\folder\*.lng") stands in, without the separator but for a
/// root's own ("C:\"); empty when it names none.
[[nodiscard]] std::wstring_view FolderOfPath(std::wstring_view path) noexcept;

} // namespace vextrel
