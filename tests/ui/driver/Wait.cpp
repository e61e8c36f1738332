#include "driver/Wait.h"

#include <windows.h>

namespace vextrel::driver {

bool WaitFor(const std::function<bool()>& condition, Milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        Sleep(10);
    }
    return true;
}

void Await(const std::string& what, const std::function<bool()>& condition, Milliseconds limit) {
    if (!WaitFor(condition, limit))
        throw Failure("waited " + std::to_string(limit.count()) + " ms in vain: " + what);
}

void Check(bool ok, const std::string& operation) {
    if (!ok)
        throw Failure(operation + " failed with error " + std::to_string(GetLastError()));
}

} // namespace vextrel::driver
