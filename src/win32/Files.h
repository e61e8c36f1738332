#pragma once

#include <string>

namespace vextrel {

/// The folder of the running program file, without a trailing separator. @throws Error with the system's code.
[[nodiscard]] std::wstring FindProgramFolder();

/// Whether a listing of the path finds an entry, a folder too.
[[nodiscard]] bool FileExists(const std::wstring& path) noexcept;

} // namespace vextrel
