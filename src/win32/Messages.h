#pragma once

#include "win32/Gate.h"

namespace vextrel {

/// Lets every message that waits in this thread's queue be processed, without any dialog navigation. The end of the
/// program (WM_QUIT) is left for the outer loop and stops it. Anything can happen meanwhile: the caller looks again at
/// whatever it relies on.
/// @return false when the program ends.
inline bool PumpPendingMessages() noexcept {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        Serve(message, nullptr);
    }
    return true;
}

/// Takes the key messages that wait in this thread's queue out of it, unprocessed.
inline void DropPendingKeys() noexcept {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) { // comes whatever is asked for
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
    }
}

} // namespace vextrel
