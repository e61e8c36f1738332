#pragma once

#include "win32/Hardening.h"
#include "win32/ScreenCapture.h"

#include <string>
#include <vector>

namespace vextrel {

/// What protects the password at the moment.
struct ProtectionFacts {
    bool printScreenBlocked = false;
    bool layerTakesClicks = false;
    bool textIsMasked = false;
    bool mouseHidden = false;
    CaptureState capture = CaptureState::Shown;
    Hardening hardening;
};
/// One line for each, said as it is, in the order in which they are to be read.
[[nodiscard]] std::vector<std::wstring> ProtectionsInForce(const ProtectionFacts& facts);

} // namespace vextrel
