#include "core/DragGesture.h"

#include <cstdlib>
#include <utility>

namespace vextrel {

DragGesture::Verdict DragGesture::Press(Point point, bool onSelection, Size box, Size threshold) noexcept {
    pressed_ = point;
    box_ = box;
    threshold_ = threshold;
    phase_ = onSelection ? Phase::Held : Phase::Selecting;
    return onSelection ? Verdict::Hold : Verdict::Box;
}

DragGesture::Verdict DragGesture::Move(Point point) noexcept {
    const int far = box_.height;
    const Rect near{-far, -far, box_.width + far, box_.height + far};
    if (phase_ == Phase::Idle || (phase_ == Phase::Selecting && near.Contains(point))) {
        return Verdict::Box;
    }
    if (phase_ == Phase::Held && std::abs(point.x - pressed_.x) <= threshold_.width &&
        std::abs(point.y - pressed_.y) <= threshold_.height) {
        return Verdict::Hold;
    }
    phase_ = Phase::Idle;
    return Verdict::StartDrag;
}

DragGesture::Verdict DragGesture::Release() noexcept {
    return std::exchange(phase_, Phase::Idle) == Phase::Held ? Verdict::Click : Verdict::Box;
}

} // namespace vextrel
