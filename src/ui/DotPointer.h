#pragma once

#include "win32/handles.h"

namespace vextrel {

/// The small grey dot that stands in for the pointer, in the size that fits a DPI.
/// @return the system's arrow where it cannot be loaded.
[[nodiscard]] HCURSOR DotPointerForDpi(int dpi) noexcept;

/// Has the window under the pointer set the pointer anew, if it is one of ours, without waiting for the next move.
void RenewPointer() noexcept;

} // namespace vextrel
