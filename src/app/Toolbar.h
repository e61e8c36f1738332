#pragma once

namespace vextrel {

/// The application's toolbar object: a stored flag. What is really shown the controller knows.
class Toolbar {
  public:
    [[nodiscard]] bool Visible() const noexcept { return visible_; }
    void SetVisible(bool visible) noexcept { visible_ = visible; }

  private:
    bool visible_ = false;
};

} // namespace vextrel
