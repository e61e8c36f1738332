#pragma once

#include "win32/handles.h"

namespace vextrel::mKBHk {

/// The low-level keyboard hook that swallows Print Screen for the whole system while it is installed.
class KeyboardHook {
  public:
    /// A second installation does nothing, nor does one in a program built with HooksDisabled. A refusal of the system
    /// leaves the program without it.
    void Install() noexcept;
    void Remove() noexcept { handle_.Reset(); }
    [[nodiscard]] bool IsInstalled() const noexcept { return static_cast<bool>(handle_); }

  private:
    UniqueHook handle_; ///< KeyboardHookHandle
};

} // namespace vextrel::mKBHk
