#pragma once

#include "win32/handles.h"

namespace vextrel {

/// A library of Windows, loaded from the system's folder and from nowhere else: a file of that name beside the program
/// or in the current folder is never taken. Stays loaded as long as the object lives.
class SystemLibrary {
  public:
    explicit SystemLibrary(const wchar_t* name) noexcept
        : module_(::LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {}

    /// @tparam Function the function's type, best as decltype(&::TheFunction).
    /// @return null when the system lacks the library or the function.
    template <typename Function>
    [[nodiscard]] Function Find(const char* name) const noexcept {
        if (!module_) {
            return nullptr;
        }
        return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(module_.Get(), name)));
    }

  private:
    UniqueLibrary module_;
};

} // namespace vextrel
