#include "driver/App.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

TEST(MainWindow, AppearsWithItsTitleAndEndsTheProgramWhenClosed) {
    const Sandbox sandbox;
    const App app(sandbox);
    EXPECT_EQ(TextOf(app.Main()), L"Vextrel");
    EXPECT_EQ(app.Close(), 0U);
}

} // namespace
} // namespace vextrel::driver
