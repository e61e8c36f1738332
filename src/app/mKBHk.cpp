#include "app/mKBHk.h"

#include "win32/ProgramState.h"

namespace vextrel::mKBHk {

namespace {

/// Every key of the system waits for this: it looks and returns.
LRESULT CALLBACK HookProcedure(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION) {
        const auto& key = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(lParam);
        if (key.vkCode == VK_SNAPSHOT) {
            return -1;
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

void KeyboardHook::Install() noexcept {
    if (!HooksDisabled && !handle_) {
        handle_.Reset(::SetWindowsHookExW(WH_KEYBOARD_LL, &HookProcedure, ::GetModuleHandleW(nullptr), 0));
    }
}

} // namespace vextrel::mKBHk
