#include "win32/Touch.h"

#include "win32/SystemLibrary.h"

namespace vextrel {

void TakeTouchAsMouse(HWND window) noexcept {
    static const SystemLibrary library(L"user32.dll");
    if (const auto setFeedback = library.Find<decltype(&::SetWindowFeedbackSetting)>("SetWindowFeedbackSetting")) {
        constexpr BOOL shown = FALSE;
        for (UINT kind = FEEDBACK_TOUCH_CONTACTVISUALIZATION; kind <= FEEDBACK_GESTURE_PRESSANDTAP; ++kind) {
            setFeedback(window, static_cast<FEEDBACK_TYPE>(kind), 0, sizeof shown, &shown);
        }
    }
    if (const auto configure = library.Find<decltype(&::SetGestureConfig)>("SetGestureConfig")) {
        GESTURECONFIG none{.dwID = 0, .dwWant = 0, .dwBlock = GC_ALLGESTURES};
        configure(window, 0, 1, &none, sizeof none);
    }
}

} // namespace vextrel
