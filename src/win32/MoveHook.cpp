#include "win32/MoveHook.h"

#include "win32/EventGuard.h"
#include "win32/handles.h"

namespace vextrel {

void MoveHook::Install(HWND form, MoveEvents& events) {
    events_ = &events;
    GateWindow(form, GatedWindow::Form);
    Attach(form);
}

LRESULT MoveHook::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const HWND form = Handle();
    const LRESULT result = ToWindow(message, wParam, lParam);
    if (isActing_ && !isTelling_) {
        const FlagScope telling(isTelling_);
        if (message == WM_SIZE && wParam == SIZE_RESTORED) {
            GuardEvent(form, L"Resize", [this] { events_->FormResized(); });
        } else if (message == WM_MOVE) {
            GuardEvent(form, L"FormMove", [this] { events_->FormMoved(); });
        }
    }
    return result;
}

} // namespace vextrel
