#pragma once

#include "ui/Operations.h"
#include "win32/EventGuard.h"

#include <deque>
#include <string>

namespace vextrel {

/// Shows errors in ErrorDialog, one dialog at a time. An error that comes while a dialog is open waits its turn; a
/// further one of the same handler is dropped, so that a failing timer cannot pile up dialogs. During a transfer every
/// error waits: a dialog would take the focus or the button's release.
class ErrorReport final : public ErrorSink {
  public:
    explicit ErrorReport(Operations& operations)
        : operations_(operations) {}

    void Report(std::wstring_view source, std::int32_t number, std::wstring_view description,
                HWND owner) noexcept override;

    /// Shows what waits, unless something is going on that a dialog would disturb.
    void ShowWaiting() noexcept;

  private:
    struct Pending {
        std::wstring source;
        std::wstring text;
        HWND owner;
    };

    Operations& operations_;
    std::deque<Pending> waiting_; ///< the first of them in the dialog that is open
    bool showing_ = false;
};

} // namespace vextrel
