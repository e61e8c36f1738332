#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace vextrel::driver {

/// What the driver throws when something does not happen; a test that lets it through fails with its text.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

using Milliseconds = std::chrono::milliseconds;

/// Long enough for a loaded machine; a condition that holds ends the wait at once.
inline constexpr Milliseconds usualLimit{15000};

/// Polls until the condition holds; false if the limit passes first.
[[nodiscard]] inline bool WaitFor(const std::function<bool()>& condition, Milliseconds limit = usualLimit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        Sleep(10);
    }
    return true;
}

/// As WaitFor, but throws a Failure that says what was awaited.
inline void Await(const std::string& what, const std::function<bool()>& condition, Milliseconds limit = usualLimit) {
    if (!WaitFor(condition, limit))
        throw Failure("waited " + std::to_string(limit.count()) + " ms in vain: " + what);
}

/// Throws a Failure with the operation's name and GetLastError() if `ok` is false.
inline void Check(bool ok, const std::string& operation) {
    if (!ok)
        throw Failure(operation + " failed with error " + std::to_string(GetLastError()));
}

} // namespace vextrel::driver
