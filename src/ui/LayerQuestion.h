#pragma once

#include "ui/Operations.h"

#include <cstdint>
#include <optional>

namespace vextrel {

/// Asks for a new opacity of the protective layer. @return the number, in or out of range; nothing when the user
/// cancelled or typed something else.
[[nodiscard]] std::optional<std::int32_t> AskForLayerOpacity(Operations& operations, HWND owner);

} // namespace vextrel
