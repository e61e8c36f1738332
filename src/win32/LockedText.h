#pragma once

#include "core/SecretText.h"

namespace vextrel {

/// The SecretText of this program: in pages of its own, locked against paging and kept out of crash reports where the
/// system offers it.
class LockedText final : public SecretText {
  public:
    /// @throws Error "Out of memory".
    LockedText();
};

} // namespace vextrel
