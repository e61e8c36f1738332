#include "app/Hover.h"

#include <algorithm>

namespace vextrel {

void HoverControl::SetTimerEnabled(bool enabled) {
    Obey(entry_.SetEnabled(enabled));
}

void HoverControl::MoveOverKey(int button) {
    Obey(entry_.MoveOverKey(button, form_.Key(button).Caption(), CaptionOfCurrent()));
}

std::optional<int> HoverControl::Tick() const {
    return entry_.Tick(CaptionOfCurrent());
}

void HoverControl::Ticked() {
    if (entry_.CurrentButton()) {
        entry_.Entered(CaptionOfCurrent());
    }
}

void HoverControl::CaptionRefreshed(std::wstring_view captionBefore) {
    entry_.CaptionRefreshed(captionBefore, CaptionOfCurrent());
}

std::wstring HoverControl::CaptionOfCurrent() const {
    const std::optional<int> current = entry_.CurrentButton();
    return current ? form_.Key(*current).Caption() : std::wstring();
}

void HoverControl::Obey(HoverEntry::TimerOrder order) {
    const auto interval = static_cast<UINT>(std::max(1, intervalMs_));
    switch (order) {
    case HoverEntry::TimerOrder::Leave: return;
    case HoverEntry::TimerOrder::Run: cover_.RunHoverTimer(interval); return;
    case HoverEntry::TimerOrder::Restart: cover_.RestartHoverTimer(interval); return;
    case HoverEntry::TimerOrder::Stop: cover_.StopHoverTimer(); return;
    }
}

} // namespace vextrel
