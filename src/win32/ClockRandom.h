#pragma once

#include "win32/Windows.h"

#include <random>

namespace vextrel {

/// A number uniform in [0, 1), from a generator that is seeded anew from a fine clock for every draw. The seed is mixed
/// with what came before, so that draws in quick succession are not the same number.
class ClockRandom {
  public:
    [[nodiscard]] double Draw() noexcept {
        LARGE_INTEGER now{};
        ::QueryPerformanceCounter(&now);
        mixed_ ^= static_cast<unsigned long long>(now.QuadPart);
        std::seed_seq seed{mixed_ & 0xFFFFFFFFU, mixed_ >> 32};
        std::mt19937_64 generator(seed);
        mixed_ = generator();
        // The upper 53 bits as a fraction: 1 itself never comes out.
        return static_cast<double>(generator() >> 11) * 0x1.0p-53;
    }

  private:
    unsigned long long mixed_ = 0;
};

} // namespace vextrel
