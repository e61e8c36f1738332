#include "core/DragGesture.h"

#include <cstdlib>

namespace vextrel {

DragGesture::Verdict DragGesture::Press(Point point, bool onSelection, Size box, Size threshold) noexcept {
    pressed_ = point;
    box_ = box;
    threshold_ = threshold;
    phase_ = onSelection ? Phase::Held : Phase::Selecting;
    return onSelection ? Verdict::Hold : Verdict::Box;
}

DragGesture::Verdict DragGesture::Move(Point point) noexcept {
    switch (phase_) {
    case Phase::Idle: return Verdict::Box;
    case Phase::Held:
        if (std::abs(point.x - pressed_.x) <= threshold_.width && std::abs(point.y - pressed_.y) <= threshold_.height) {
            return Verdict::Hold;
        }
        break;
    case Phase::Selecting: {
        const int far = box_.height;
        const Rect near{-far, -far, box_.width + far, box_.height + far};
        if (near.Contains(point)) {
            return Verdict::Box;
        }
        break;
    }
    }
    phase_ = Phase::Idle;
    return Verdict::StartDrag;
}

DragGesture::Verdict DragGesture::Release() noexcept {
    const bool held = phase_ == Phase::Held;
    phase_ = Phase::Idle;
    return held ? Verdict::Click : Verdict::Box;
}

} // namespace vextrel
