#pragma once

namespace vextrel {

/// A number uniform in [0, 1), from a generator that is seeded anew from a fine clock for every draw. The seed is mixed
/// with what came before, so that draws in quick succession are not the same number.
class ClockRandom {
  public:
    [[nodiscard]] double Draw() noexcept;

  private:
    unsigned long long mixed_ = 0;
};

} // namespace vextrel
