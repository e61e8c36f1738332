#include "win32/KeyboardHook.h"

#include "win32/FreedMemory.h"
#include "win32/Hardening.h"

namespace vextrel {

namespace {

/// Windows removes a hook that was late a few times and tells nobody, which can happen while the whole machine is
/// stuck. So it is made anew from time to time.
constexpr UINT renewalMs = 30000;

/// The thread looks at a key and returns; the usual stack of a megabyte or two would be a waste.
constexpr SIZE_T stackBytes = 65536;

/// Every key of the system waits for this: it looks and returns.
LRESULT CALLBACK HookProcedure(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION && reinterpret_cast<const KBDLLHOOKSTRUCT*>(lParam)->vkCode == VK_SNAPSHOT) {
        return -1;
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

HHOOK NewHook() noexcept {
    return ::SetWindowsHookExW(WH_KEYBOARD_LL, &HookProcedure, ::GetModuleHandleW(nullptr), 0);
}

} // namespace

void KeyboardHook::Install(bool closeThread) noexcept {
    if (IsInstalled()) {
        return;
    }
    Remove();
    ready_.Reset(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!ready_) {
        return;
    }
    thread_.Reset(::CreateThread(nullptr, stackBytes, &KeyboardHook::ServeHook, this, STACK_SIZE_PARAM_IS_A_RESERVATION,
                                 &threadId_));
    if (thread_) {
        if (closeThread) {
            CloseThread(thread_.Get());
        }
        // Whichever comes first: a thread that was refused its hook ends at once.
        const HANDLE either[] = {ready_.Get(), thread_.Get()};
        ::WaitForMultipleObjects(2, either, FALSE, INFINITE);
    }
}

void KeyboardHook::Remove() noexcept {
    if (!thread_) {
        return;
    }
    ::PostThreadMessageW(threadId_, WM_QUIT, 0, 0);
    ::WaitForSingleObject(thread_.Get(), INFINITE);
    thread_.Reset();
}

DWORD WINAPI KeyboardHook::ServeHook(void* self) noexcept {
    auto& hook = *static_cast<KeyboardHook*>(self);
    ::SetThreadPriority(::GetCurrentThread(), THREAD_PRIORITY_HIGHEST);
    hook.KeyboardHookHandle_ = NewHook();
    // Creates the thread's message queue before anyone is told that there is a thread to post to.
    MSG message{};
    ::PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
    ::SetEvent(hook.ready_.Get());
    ::SetTimer(nullptr, 0, renewalMs, nullptr);
    GiveBackUnusedStack();
    while (hook.IsInstalled() && ::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER) {
            // The new one first: there is no moment without a hook.
            if (const HHOOK renewed = NewHook(); renewed != nullptr) {
                ::UnhookWindowsHookEx(hook.KeyboardHookHandle_.exchange(renewed));
            }
        }
    }
    ::UnhookWindowsHookEx(hook.KeyboardHookHandle_.exchange(nullptr));
    return 0;
}

} // namespace vextrel
