#pragma once

#include "driver/Wait.h"

#include <windows.h>

#include <atomic>
#include <functional>
#include <thread>

namespace vextrel::driver {

/// Sees the keys that reach the system past the hooks that were set later: the newest is asked first. It has a thread
/// of its own, as a hook whose thread does not look for messages is passed over. There is one at a time.
class KeyHook {
  public:
    /// @param see is told a key and whether it goes up; true keeps it from everybody else.
    explicit KeyHook(const std::function<bool(DWORD key, bool up)>& see) {
        see_ = see;
        thread_ = std::jthread([this] {
            const HHOOK hook = SetWindowsHookExW(WH_KEYBOARD_LL, &Procedure, GetModuleHandleW(nullptr), 0);
            threadId_ = GetCurrentThreadId();
            MSG message;
            GetMessageW(&message, nullptr, WM_QUIT, WM_QUIT);
            UnhookWindowsHookEx(hook);
        });
        Await("the hook is set", [this] { return threadId_ != 0; });
    }
    ~KeyHook() { PostThreadMessageW(threadId_, WM_QUIT, 0, 0); }

  private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam) noexcept {
        const DWORD key = reinterpret_cast<const KBDLLHOOKSTRUCT*>(lParam)->vkCode;
        return see_(key, wParam == WM_KEYUP) ? 1 : CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline std::function<bool(DWORD, bool)> see_;
    std::atomic<DWORD> threadId_{0};
    std::jthread thread_;
};

} // namespace vextrel::driver
