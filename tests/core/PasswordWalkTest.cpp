// A long random session with the password box agrees with the plain model after every step.

#include "PasswordSession.h"

#include <gtest/gtest.h>

#include <random>

namespace vextrel::session {
namespace {

TEST(PasswordWalk, TenThousandStepsAgreeWithThePlainModel) {
    std::mt19937 random(20240229);
    const auto pick = [&random](std::size_t below) { return static_cast<std::size_t>(random()) % below; };
    Comparison both;
    for (int step = 0; step < 10000; ++step) {
        Action action = ChooseAction(both.Now(), pick);
        if (both.Now().box.size() > 40) { // kept short enough for edits to meet
            action.kind = Action::Kind::Carry;
            action.takesAway = true;
        }
        ASSERT_TRUE(both.Agrees(action)) << "step " << step << ", kind " << static_cast<int>(action.kind) << ", button "
                                         << action.button << ", now " << testing::PrintToString(both.Now().box);
    }
}

} // namespace
} // namespace vextrel::session
