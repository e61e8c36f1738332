#pragma once

#include "core/Geometry.h"

#include <cstdlib>
#include <utility>

namespace vextrel {

/// Tells a drag of the password from a selection of text, from press to release. In pixels of the box's client area.
///
/// Pressed on what is selected, the pointer drags once it has passed the system's drag threshold; a click there just
/// places the caret. Pressed elsewhere, the box selects text as usual until the pointer has left it by more than the
/// box's own height: then it drags what was selected before the press.
class DragGesture {
  public:
    enum class Verdict {
        Box,       ///< the box's own business
        Hold,      ///< keep the message from the box: the press may become a drag
        StartDrag, ///< now
        Click,     ///< a held press that came to nothing: give the box the click after all
    };

    /// @param box the client area of the box. @param threshold how far the system lets a click wander, to either side.
    [[nodiscard]] Verdict Press(Point point, bool onSelection, Size box, Size threshold) noexcept {
        pressed_ = point;
        box_ = box;
        threshold_ = threshold;
        phase_ = onSelection ? Phase::Held : Phase::Selecting;
        return onSelection ? Verdict::Hold : Verdict::Box;
    }
    [[nodiscard]] Verdict Move(Point point) noexcept {
        const int reach = box_.height;
        const Rect around{-reach, -reach, box_.width + reach, box_.height + reach};
        if (phase_ == Phase::Idle || (phase_ == Phase::Selecting && around.Contains(point))) {
            return Verdict::Box;
        }
        if (phase_ == Phase::Held && std::abs(point.x - pressed_.x) <= threshold_.width &&
            std::abs(point.y - pressed_.y) <= threshold_.height) {
            return Verdict::Hold;
        }
        phase_ = Phase::Idle;
        return Verdict::StartDrag;
    }
    [[nodiscard]] Verdict Release() noexcept {
        return std::exchange(phase_, Phase::Idle) == Phase::Held ? Verdict::Click : Verdict::Box;
    }
    void Cancel() noexcept { phase_ = Phase::Idle; }

  private:
    enum class Phase { Idle, Held, Selecting };
    Phase phase_ = Phase::Idle;
    Point pressed_;
    Size box_;
    Size threshold_;
};

} // namespace vextrel
