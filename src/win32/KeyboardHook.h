#pragma once

#include "core/Pinned.h"
#include "win32/handles.h"

#include <atomic>

namespace vextrel {

/// The low-level keyboard hook that swallows Print Screen for the whole system while it is installed.
///
/// Every key of the whole system waits for the thread that a hook was installed on. The user-interface thread may be
/// busy (a beep, a wait, a dialog of the system), so the hook has a thread of its own, which does nothing else and
/// shares nothing with the rest of the program but the hook's handle.
class KeyboardHook : private Pinned {
  public:
    KeyboardHook() = default;
    ~KeyboardHook() { Remove(); }

    /// Returns when the hook is in place. A second installation does nothing. A refusal of the system leaves the
    /// program without it.
    void Install(bool closeThread) noexcept;
    /// Returns when the hook is gone.
    void Remove() noexcept;
    [[nodiscard]] bool IsInstalled() const noexcept { return KeyboardHookHandle_ != nullptr; }

  private:
    static DWORD WINAPI ServeHook(void* self) noexcept;

    std::atomic<HHOOK> KeyboardHookHandle_{nullptr};
    UniqueKernelHandle thread_;
    UniqueKernelHandle ready_; ///< set once the thread has tried to install the hook
    DWORD threadId_ = 0;
};

} // namespace vextrel
