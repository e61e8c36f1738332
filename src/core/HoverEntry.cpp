#include "core/HoverEntry.h"

namespace vextrel {

HoverEntry::TimerOrder HoverEntry::MoveOverKey(int button, std::wstring_view caption,
                                               std::wstring_view captionOfCurrent) {
    if (lastCaption_ && *lastCaption_ != caption) {
        lastCaption_.reset();
    }
    const bool arrived = !currentButton_ || captionOfCurrent != caption;
    if (arrived) {
        currentButton_ = button;
    }
    if (!enabled_) {
        return TimerOrder::Leave;
    }
    // Running on within a key is what lets a trembling hand enter it.
    return arrived ? TimerOrder::Restart : TimerOrder::Run;
}

std::optional<int> HoverEntry::Tick(std::wstring_view captionOfCurrent) const {
    // With nothing entered yet, a key without a caption counts as entered: hover entry never enters such a key.
    const std::wstring_view last = lastCaption_ ? std::wstring_view(*lastCaption_) : std::wstring_view();
    if (!enabled_ || captionOfCurrent == last) {
        return std::nullopt;
    }
    return currentButton_;
}

void HoverEntry::CaptionRefreshed(std::wstring_view before, std::wstring_view after) {
    if (currentButton_ && lastCaption_ && *lastCaption_ == before) {
        lastCaption_ = after;
    }
}

} // namespace vextrel
