#include "app/ProtectionReport.h"

namespace vextrel {

namespace {

const wchar_t* CaptureLine(CaptureState state) noexcept {
    switch (state) {
    case CaptureState::Excluded: return L"Windows hidden from screen capture";
    case CaptureState::Black: return L"Windows black in screen captures";
    case CaptureState::Shown: break;
    }
    return L"Windows visible to screen capture";
}

} // namespace

std::vector<std::wstring> ProtectionsInForce(const ProtectionFacts& facts) {
    std::vector<std::wstring> lines{
        facts.printScreenBlocked ? L"Print Screen is blocked" : L"Print Screen is not blocked",
        facts.layerTakesClicks ? L"Protective layer over the keys"
                               : L"Protective layer invisible: clicks reach the keys",
        facts.textIsMasked ? L"Password masked" : L"Password shown in clear",
        facts.mouseHidden ? L"Pointer shown as a grey dot" : L"Pointer shown as usual",
        CaptureLine(facts.capture),
    };
    const std::vector<std::wstring> process = HardeningLines(facts.hardening);
    lines.insert(lines.end(), process.begin(), process.end());
    return lines;
}

} // namespace vextrel
