#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Ends the run with a finding if the property does not hold; the fuzzer then keeps the input.
inline void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

/// One run over one input. The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
