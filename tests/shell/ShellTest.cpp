// What no command of the window reaches, called directly.
#include "driver/Machine.h"
#include "driver/Target.h"
#include "transfer/SendKeysPlayer.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

TEST(SendKeys, StrokesArriveInASecondProgram) {
    if (!HasAmericanKeyboard())
        GTEST_SKIP() << "the keyboard is not American";
    const Target second;
    Pointer pointer;
    pointer.Click(second.Field(target::editField));
    Await("the target is in front", [&] { return GetForegroundWindow() == second.Window(); });
    const std::wstring strokes =
        L"+41 -41 +31 -31 +2E -2E +2E -2E +10 +42 -42 +43 -43 -10 +44 -44 +11 +12 +75 -75 -12 -11 ";
    SendKeysPlayer().SendKeys(L"a1{DEL 2}+(bc)d~%{F6}");
    // Wine 10 lets go of all keys before them, when the display tells the target that it is in front.
    EXPECT_TRUE(WaitFor([&] { return second.Text(target::keyRecord).ends_with(strokes); }))
        << second.Text(target::keyRecord);
}

} // namespace
} // namespace vextrel::driver
