#pragma once

#include "ui/Dialog.h"
#include "win32/ProgramState.h"

namespace vextrel {

/// What protects the password at the moment.
struct ProtectionFacts {
    ProgramState program;
    bool layerTakesClicks = false;
    bool textIsMasked = false;
    bool mouseHidden = false;
    CaptureState capture = CaptureState::Shown;
};

/// What the program is, where its manual and its maker's pages are, and which protections are in force at the moment.
class AboutDialog final : public Dialog {
  public:
    AboutDialog(Operations& operations, const ProtectionFacts& facts)
        : Dialog(L"About Vextrel", {440, 344})
        , operations_(operations)
        , facts_(facts) {}

  private:
    void CreateControls() override;
    void FitControls() override;
    void OnNotify(const NMHDR& header) override;

    Operations& operations_;
    ProtectionFacts facts_;
    UniqueIcon icon_;
    HWND picture_ = nullptr;
    HWND name_ = nullptr;
};

} // namespace vextrel
