#include <windows.h>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Places on the screen are meant in real pixels.
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
