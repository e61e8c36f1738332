#pragma once

#include "core/Commands.h"
#include "win32/handles.h"

#include <optional>

namespace vextrel {

/// The menu bar.
class MainMenu {
  public:
    void Create();
    /// For the window that it is created with; the window destroys it.
    [[nodiscard]] HMENU Get() const noexcept { return bar_.Get(); }
    void ReleaseToWindow() noexcept { static_cast<void>(bar_.Release()); }

    /// Marks and enables every item as the snapshot says.
    void Refresh(const CommandSnapshot& snapshot) noexcept;

  private:
    UniqueMenu bar_;
    std::optional<CommandSnapshot> shown_; ///< nothing at first
};

} // namespace vextrel
