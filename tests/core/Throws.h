#pragma once

#include "core/Error.h"

namespace vextrel {

/// Whether the action ends in an error of that number; no other error is caught.
template <typename Action>
bool Throws(ErrorNumber number, Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Number() == static_cast<std::int32_t>(number);
    }
    return false;
}

} // namespace vextrel
