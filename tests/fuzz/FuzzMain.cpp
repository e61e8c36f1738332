#include "Fuzz.h"

// The name and the signature that libFuzzer looks for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vextrel::fuzz::Run({{data, size}});
    return 0;
}
