#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace vextrel::driver {

/// What the driver throws when something does not happen; a test that lets it through fails with its text.
class Failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

using Milliseconds = std::chrono::milliseconds;

/// Long enough for a loaded machine; a condition that holds ends the wait at once.
inline constexpr Milliseconds usualLimit{15000};

/// Polls until the condition holds; false if the limit passes first.
[[nodiscard]] bool WaitFor(const std::function<bool()>& condition, Milliseconds limit = usualLimit);

/// As WaitFor, but throws a Failure that says what was awaited.
void Await(const std::string& what, const std::function<bool()>& condition, Milliseconds limit = usualLimit);

/// Throws a Failure with the operation's name and GetLastError() if `ok` is false.
void Check(bool ok, const std::string& operation);

} // namespace vextrel::driver
