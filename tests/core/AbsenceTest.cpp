#include "core/Absence.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

TEST(Absence, OfASessionBeginsWhenItIsLockedOrLeft) {
    // The system's numbers: connected and left (console, remote), logged on and off, locked, unlocked, remote control,
    // created, ended.
    constexpr const wchar_t* left = L"Cleared: the session was left";
    constexpr const wchar_t* reasons[] = {L"", L"", left, L"",  left, L"", left, L"Cleared: the session was locked",
                                          L"", L"", L"",  left, L""};
    for (std::uintptr_t change = 0; change < std::size(reasons); ++change) {
        EXPECT_EQ(ClearedBySession(change), reasons[change]) << change;
    }
}

TEST(Absence, OfInputEndsWithTheLastOfSoManyMinutes) {
    const struct {
        int minutes;
        std::uint64_t nowMs, lastInputMs;
        bool expected;
    } rows[] = {{1, 160000, 100000, true},    {1, 159999, 100000, false},
                {0, 99999999, 0, false},      {1, 100000, 160000, false}, // the clock was read before the input came
                {32767, 1966020000, 0, true}, {32767, 1966019999, 0, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(IsAbsent(row.minutes, row.nowMs, row.lastInputMs), row.expected) << row.minutes << ", " << row.nowMs;
    }
    EXPECT_EQ(ClearedByAbsence(1), L"Cleared after 1 minute without input");
    EXPECT_EQ(ClearedByAbsence(5), L"Cleared after 5 minutes without input");
}

} // namespace
} // namespace vextrel
