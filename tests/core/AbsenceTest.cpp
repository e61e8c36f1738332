#include "core/Absence.h"

#include <gtest/gtest.h>

#include <set>

namespace vextrel {
namespace {

TEST(Absence, OnlyASessionThatIsLockedOrLeftClears) {
    // The system's numbers from 1 to 11: connected, disconnected (console, then remote), logged on and off, locked,
    // unlocked, remote control, created, ended.
    const std::set<std::uintptr_t> left{2, 4, 6, 11};
    for (std::uintptr_t change = 0; change < 300; ++change) {
        const std::wstring_view locked = L"Cleared: the session was locked";
        const std::wstring_view expected = change == 7             ? locked
                                           : left.contains(change) ? L"Cleared: the session was left"
                                                                   : L"";
        EXPECT_EQ(ClearedBySession(change), expected) << change;
    }
}

TEST(Absence, BeginsWithTheLastMinuteWithoutInput) {
    const struct {
        int minutes;
        std::uint64_t nowMs, lastInputMs;
        bool expected;
    } rows[] = {
        {1, 160000, 100000, true},    {1, 159999, 100000, false},    {5, 400000, 100000, true},
        {5, 399999, 100000, false},   {0, 99999999, 0, false},       {-1, 99999999, 0, false},
        {1, 100000, 160000, false}, // the clock was read before the input came
        {32767, 1966020000, 0, true}, {32767, 1966019999, 0, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(IsAbsent(row.minutes, row.nowMs, row.lastInputMs), row.expected) << row.minutes << ", " << row.nowMs;
    }
    EXPECT_EQ(ClearedByAbsence(1), L"Cleared after 1 minute without input");
    EXPECT_EQ(ClearedByAbsence(5), L"Cleared after 5 minutes without input");
}

} // namespace
} // namespace vextrel
