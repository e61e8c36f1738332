#pragma once

#include <cstdint>
#include <string>

namespace vextrel {

// When the password is cleared because nobody may be there to guard it.

/// What the status bar says of a password that a change of the session has cleared. @param change the system's number.
/// @return empty for changes that clear nothing: the session comes back, or is another one.
[[nodiscard]] constexpr std::wstring_view ClearedBySession(std::uintptr_t change) noexcept {
    switch (change) {
    // Left for another one at the machine itself, or from afar; logged off; ended.
    case 2:
    case 4:
    case 6:
    case 11: return L"Cleared: the session was left";
    case 7: return L"Cleared: the session was locked";
    default: return {};
    }
}

/// Whether there has been no input for so many minutes; 0 minutes never end.
[[nodiscard]] constexpr bool IsAbsent(int minutes, std::uint64_t nowMs, std::uint64_t lastInputMs) noexcept {
    constexpr std::uint64_t msPerMinute = 60000;
    return minutes > 0 && nowMs > lastInputMs &&
           nowMs - lastInputMs >= static_cast<std::uint64_t>(minutes) * msPerMinute;
}

/// What the status bar says then.
[[nodiscard]] inline std::wstring ClearedByAbsence(int minutes) {
    return L"Cleared after " + std::to_wstring(minutes) + (minutes == 1 ? L" minute" : L" minutes") + L" without input";
}

} // namespace vextrel
