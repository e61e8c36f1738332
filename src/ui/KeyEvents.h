#pragma once

namespace vextrel {

/// What a key reports.
class KeyEvents {
  public:
    /// A click on a key, 1 to 65.
    virtual void ButtonClick(int button) = 0;
    virtual void ButtonMouseUp(int button) = 0;
    virtual void ButtonMouseMove(int button) = 0;

  protected:
    ~KeyEvents() = default;
};

} // namespace vextrel
