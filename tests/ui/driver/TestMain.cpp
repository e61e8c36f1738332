#include "driver/Process.h"
#include "driver/Screen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <utility>

namespace vextrel::driver {
namespace {

/// On the first failure of a test, keeps a picture of the display in the folder "failed" beside the test program.
class Witness : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        if (!result.failed() || !test || std::exchange(witnessed_, test) == test)
            return;
        std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".png";
        std::ranges::replace(name, '/', '-');
        std::filesystem::create_directories(OwnFolder() / L"failed");
        TakeScreenshot(OwnFolder() / L"failed" / name);
        std::cout << "screenshot: build/tests/win64/failed/" << name << '\n';
    }

    const testing::TestInfo* witnessed_ = nullptr;
};

} // namespace
} // namespace vextrel::driver

int main(int argc, char** argv) {
    // Places on the screen are meant in real pixels.
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new vextrel::driver::Witness);
    return RUN_ALL_TESTS();
}
