#pragma once

#include "ui/Dialog.h"

namespace vextrel {

/// Shows an unexpected error: a label, the message in a read-only box (so that it can be copied), a close button.
class ErrorDialog final : public Dialog {
  public:
    explicit ErrorDialog(std::wstring message)
        : Dialog(L"Vextrel", {400, 180})
        , message_(std::move(message)) {}

  private:
    void CreateControls() override;
    void OnCommand(int id) override;

    std::wstring message_;
};

} // namespace vextrel
