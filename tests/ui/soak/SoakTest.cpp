// Thousands of random actions in the real window: the boxes show what the plain model says after each, and the program
// holds no more at the end than after the first thousand. tests/ui/soak/run does it at length.

#include "soak/RandomUser.h"
#include "soak/Resources.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace vextrel::driver {
namespace {

constexpr int firstThousand = 1000;

unsigned NumberFromEnvironment(const char* name, unsigned otherwise) {
    const char* const text = std::getenv(name);
    return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

/// Once it does not change any more: what the last action left to paint has been painted.
Resources AtRest(const Process& program) {
    Resources last = ResourcesOf(program);
    Await("what the program holds stays the same", [&] {
        const Resources before = std::exchange(last, ResourcesOf(program));
        return before.gdi == last.gdi && before.user == last.user;
    });
    return last;
}

TEST(Soak, RandomActionsAgreeWithTheModelAndLeaveNothingBehind) {
    const unsigned actions = NumberFromEnvironment("VEXTREL_SOAK_ACTIONS", 2000);
    const unsigned seed = NumberFromEnvironment("VEXTREL_SOAK_SEED", 20240229);
    RandomUser user(seed);
    Resources settled{};
    Resources now{};
    const auto start = std::chrono::steady_clock::now();
    for (unsigned action = 1; action <= actions; ++action) {
        try {
            user.Act();
            if (action % firstThousand == 0) {
                user.ComeToRest();
            }
        } catch (const Failure& failure) {
            FAIL() << "seed " << seed << ", action " << action << ", " << failure.what();
        }
        if (action % firstThousand == 0) {
            now = AtRest(user.Program());
            settled = action == firstThousand ? now : settled;
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
            std::cout << "[ measured ] " << action << " actions in " << static_cast<int>(taken.count())
                      << " s: " << Describe(now) << std::endl;
        }
    }
    std::cout << "[ measured ] " << user.Tally() << '\n';
    // Room for what the system loads when it is first needed and then keeps (its pointers and icons), and for its heap.
    // It does not grow with the number of actions, so that a slow leak shows in a long run.
    EXPECT_LE(now.gdi, settled.gdi + 16);
    EXPECT_LE(now.user, settled.user + 4);
    EXPECT_LE(now.handles, settled.handles + 4);
    EXPECT_LE(now.kilobytes, settled.kilobytes + 4096);
}

} // namespace
} // namespace vextrel::driver
