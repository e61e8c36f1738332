#pragma once

namespace vextrel {

/// Base of what is neither copied nor moved: it stands for something that there is once, or others hold its address.
class Pinned {
  public:
    Pinned(const Pinned&) = delete;
    Pinned& operator=(const Pinned&) = delete;

  protected:
    Pinned() = default;
    ~Pinned() = default;
};

} // namespace vextrel
