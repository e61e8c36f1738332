#include "win32/ClockRandom.h"

#include "win32/Windows.h"

#include <random>

namespace vextrel {

double ClockRandom::Draw() noexcept {
    LARGE_INTEGER now{};
    ::QueryPerformanceCounter(&now);
    mixed_ ^= static_cast<unsigned long long>(now.QuadPart);
    std::seed_seq seed{mixed_ & 0xFFFFFFFFU, mixed_ >> 32};
    std::mt19937_64 generator(seed);
    mixed_ = generator();
    // The upper 53 bits as a fraction: 1 itself never comes out.
    return static_cast<double>(generator() >> 11) * 0x1.0p-53;
}

} // namespace vextrel
