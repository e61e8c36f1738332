#include "driver/Process.h"
#include "driver/Screen.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

/// On the first failure of a test, keeps a picture of the display in the folder "failed" beside the test program.
class Witness : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { taken_ = false; }

    void OnTestPartResult(const testing::TestPartResult& result) override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        if (!result.failed() || taken_ || !test)
            return;
        taken_ = true;
        std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".png";
        for (char& c : name)
            c = c == '/' ? '-' : c;
        try {
            const auto folder = vextrel::driver::OwnFolder() / L"failed";
            std::filesystem::create_directories(folder);
            vextrel::driver::TakeScreenshot(folder / name);
            std::cout << "screenshot: build/tests/win64/failed/" << name << '\n';
        } catch (const std::exception& error) {
            std::cout << "no screenshot: " << error.what() << '\n';
        }
    }

    bool taken_ = false;
};

} // namespace

int main(int argc, char** argv) {
    // Places on the screen are meant in real pixels.
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new Witness);
    return RUN_ALL_TESTS();
}
