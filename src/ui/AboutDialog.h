#pragma once

#include "ui/Dialog.h"
#include "win32/Hardening.h"

namespace vextrel {

/// What protects the password at the moment.
struct ProtectionFacts {
    bool printScreenBlocked = false;
    bool layerTakesClicks = false;
    bool textIsMasked = false;
    bool mouseHidden = false;
    bool answersOthers = false;
    CaptureState capture = CaptureState::Shown;
    Hardening hardening;
};

/// What the program is, where its maker's pages are, and which protections are in force at the moment.
class AboutDialog final : public Dialog {
  public:
    explicit AboutDialog(const ProtectionFacts& facts)
        : Dialog(L"About Vextrel", {440, 344})
        , facts_(facts) {}

  private:
    void CreateControls() override;
    void FitControls() override;
    void OnNotify(const NMHDR& header) override;

    ProtectionFacts facts_;
    UniqueIcon icon_;
    HWND picture_ = nullptr;
    HWND name_ = nullptr;
};

} // namespace vextrel
