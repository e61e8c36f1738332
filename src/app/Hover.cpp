#include "app/Hover.h"

#include <algorithm>

namespace vextrel {

void Hover::SetTimerEnabled(bool enabled) {
    Obey(entry_.SetEnabled(enabled));
}

void Hover::MoveOverKey(int button) {
    Obey(entry_.MoveOverKey(button, form_.Key(button).Caption(), CaptionOfCurrent()));
}

std::optional<int> Hover::Tick() const {
    return entry_.Tick(CaptionOfCurrent());
}

void Hover::Ticked() {
    if (entry_.CurrentButton()) {
        entry_.Entered(CaptionOfCurrent());
    }
}

void Hover::CaptionRefreshed(std::wstring_view captionBefore) {
    entry_.CaptionRefreshed(captionBefore, CaptionOfCurrent());
}

std::wstring Hover::CaptionOfCurrent() const {
    const std::optional<int> current = entry_.CurrentButton();
    return current ? form_.Key(*current).Caption() : std::wstring();
}

void Hover::Obey(HoverEntry::TimerOrder order) {
    const auto interval = static_cast<UINT>(std::max(1, intervalMs_));
    switch (order) {
    case HoverEntry::TimerOrder::Leave: return;
    case HoverEntry::TimerOrder::Run: cover_.RunHoverTimer(interval); return;
    case HoverEntry::TimerOrder::Restart: cover_.RestartHoverTimer(interval); return;
    case HoverEntry::TimerOrder::Stop: cover_.StopHoverTimer(); return;
    }
}

} // namespace vextrel
