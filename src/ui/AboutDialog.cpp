#include "ui/AboutDialog.h"

#include "core/ids.h"
#include "ui/Manual.h"
#include "ui/WindowParts.h"
#include "win32/WebLinks.h"
#include "win32/resources.h"
#include "win32/version.h"

namespace vextrel {

namespace {

constexpr int iconSize96 = 48;

/// What protects, and apart what does not right now.
std::wstring Protections(const ProtectionFacts& facts) {
    std::vector<ProtectionLine> lines{
        {facts.program.printScreenBlocked, L"Print Screen is blocked", L"Print Screen is not blocked"},
        {facts.layerTakesClicks, L"Protective layer over the keys",
         L"Protective layer invisible: clicks reach the keys"},
        {facts.textIsMasked, L"Password masked", L"Password shown in clear"},
        {facts.mouseHidden, L"Pointer shown as a grey dot", L"Pointer shown as usual"},
        {!facts.program.answersOthers, L"Other programs may not read or order the windows",
         L"Other programs may read and order the windows: the settings file says so"},
        {facts.capture != CaptureState::Shown,
         facts.capture == CaptureState::Black ? L"Windows black in screen captures"
                                              : L"Windows hidden from screen capture",
         L"Windows visible to screen capture"},
    };
    std::ranges::copy(HardeningLines(facts.program.hardening), std::back_inserter(lines));
    std::wstring inForce;
    std::wstring missing;
    for (const ProtectionLine& line : lines) {
        (line.inForce ? inForce : missing) += (line.inForce ? L"" : L"\u2013 ") + std::wstring(line.text) + L"\r\n";
    }
    return inForce + (missing.empty() ? L"" : L"\r\nNot in force right now:\r\n" + missing);
}

} // namespace

void AboutDialog::FitControls() {
    const int size = Scaled(iconSize96);
    UniqueIcon icon(static_cast<HICON>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_VEXTREL), IMAGE_ICON, size, size, 0)));
    Tell(picture_, STM_SETICON, reinterpret_cast<WPARAM>(icon.Get()), 0);
    icon_ = std::move(icon);
    SetFont(name_, Fonts().Sized(Dpi(), Scaled(24)), false);
}

void AboutDialog::CreateControls() {
    picture_ = AddLabel(L"", {20, 20, 20 + iconSize96, 20 + iconSize96}, SS_ICON | SS_REALSIZECONTROL);
    name_ = AddLabel(L"Vextrel", {84, 16, 420, 48});
    AddLabel(L"Version " VEXTREL_VERSION_TEXT, {84, 50, 420, 70});
    AddLabel(
        L"An on-screen keyboard for passwords. It is made so that programs which record keys, clicks or the screen "
        L"learn as little as possible, and it takes the password to where you drag it.",
        {20, 84, 420, 136}, SS_LEFT | SS_NOPREFIX);
    AddControl(WC_LINK, L"<a>Vextrel homepage</a>", WS_TABSTOP, {20, 144, 150, 164}, ids::aboutHomepage);
    AddControl(WC_LINK, L"<a>Donate</a>", WS_TABSTOP, {160, 144, 220, 164}, ids::aboutDonate);
    AddControl(WC_LINK, L"<a>Manual</a> (F1)", WS_TABSTOP, {230, 144, 420, 164}, ids::aboutManual);
    AddLabel(L"&Protections in force", {20, 176, 420, 194});
    AddLines(Protections(facts_).c_str(), {20, 196, 420, 294}, ids::aboutProtections);
    ::SetFocus(AddControl(WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, {335, 306, 420, 330}, IDOK));
}

void AboutDialog::OnNotify(const NMHDR& header) {
    if (header.code != NM_CLICK && header.code != NM_RETURN) {
        return;
    }
    // The pages' owner is the main window: it is still there when this dialog has gone.
    const HWND owner = ::GetWindow(Handle(), GW_OWNER);
    if (header.idFrom == ids::aboutHomepage) {
        OpenWebPage(owner, WebPage::Homepage);
    } else if (header.idFrom == ids::aboutDonate) {
        OpenWebPage(owner, WebPage::Donate);
    } else if (header.idFrom == ids::aboutManual) {
        ShowManual(operations_, Handle(), facts_.program);
    }
}

} // namespace vextrel
