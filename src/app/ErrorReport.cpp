#include "app/ErrorReport.h"

#include "ui/ErrorDialog.h"
#include "win32/Gate.h"

namespace vextrel {

void ErrorReport::Report(std::wstring_view source, std::int32_t number, std::wstring_view description,
                         HWND owner) noexcept {
    try {
        if (std::ranges::find(waiting_, source, &Pending::source) != waiting_.end()) {
            return;
        }
        const std::wstring name(source);
        waiting_.push_back({name, name + L"\r\n" + std::to_wstring(number) + L": " + std::wstring(description), owner});
    } catch (...) {
        return; // an error inside the reporting is not reported
    }
    ShowWaiting();
}

void ErrorReport::ShowWaiting() noexcept {
    // A dialog on behalf of another program's message would take its own input for that program's.
    if (showing_ || operations_.IsTransferring() || (!Gate::IsOpen() && Gate::IsSentFromOutside())) {
        return;
    }
    try {
        const FlagScope showing(showing_);
        while (!waiting_.empty()) {
            ErrorDialog(waiting_.front().text).RunModal(operations_, waiting_.front().owner);
            waiting_.pop_front();
        }
    } catch (...) {
        waiting_.clear();
    }
}

} // namespace vextrel
