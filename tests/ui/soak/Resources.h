#pragma once

#include "driver/Process.h"

#include <string>

namespace vextrel::driver {

/// What a program holds, counted from outside.
struct Resources {
    std::size_t gdi;       ///< GDI objects
    std::size_t user;      ///< USER objects; under Wine those of all programs together
    std::size_t handles;   ///< handles of files, events and the like
    std::size_t kilobytes; ///< memory of its own
};

[[nodiscard]] Resources ResourcesOf(const Process& process);
[[nodiscard]] std::string Describe(const Resources& resources);

} // namespace vextrel::driver
