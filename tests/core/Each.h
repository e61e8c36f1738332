#pragma once

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace vextrel {

/// Of each row's first part the function makes its second.
template <typename Rows, typename Function>
void ExpectEach(const Rows& rows, const Function& function) {
    for (const auto& [input, output] : rows) {
        EXPECT_EQ(function(input), output) << "of " << testing::PrintToString(input);
    }
}

/// The texts that the function makes of the inputs, one behind the other.
template <typename Function, typename... Inputs>
std::wstring OfEach(const Function& function, const Inputs&... inputs) {
    return ((std::wstring(function(inputs)) + L"|") + ...);
}

} // namespace vextrel
