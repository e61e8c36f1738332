#pragma once

#include "driver/Process.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vextrel::driver {

/// A piece of a secret in another process's memory.
struct Trace {
    std::uintptr_t address;
    std::size_t characters;
    const char* encoding;
};

/// Reads all readable memory of a process and looks for pieces of the secret of 8 characters or more, in UTF-16 and in
/// the code page, both also with their bytes in reverse.
[[nodiscard]] std::vector<Trace> FindTraces(const Process& process, const std::wstring& secret);

/// The traces in words, for a test's output.
[[nodiscard]] std::string Describe(const std::vector<Trace>& traces);

/// Letters and digits that stand on keys and need no Shift, all different.
[[nodiscard]] std::wstring RandomSecret(std::size_t length);

/// From now on the process stops where it would leave its own code for good: behind the end of its main function, with
/// all of its memory still there. For processes that this one started: their handles have all rights.
void StopAtExit(const Process& process);
/// Waits until the process stands there.
void AwaitStop(const Process& process);

} // namespace vextrel::driver
