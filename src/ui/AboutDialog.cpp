#include "ui/AboutDialog.h"

#include "core/ids.h"
#include "win32/WebLinks.h"
#include "win32/resources.h"
#include "win32/version.h"

namespace vextrel {

namespace {

constexpr int iconSize96 = 48;

std::wstring Lines(const std::vector<std::wstring>& lines) {
    std::wstring text;
    for (const std::wstring& line : lines) {
        text += (text.empty() ? L"" : L"\r\n") + line;
    }
    return text;
}

const wchar_t* CaptureLine(CaptureState state) noexcept {
    switch (state) {
    case CaptureState::Excluded: return L"Windows hidden from screen capture";
    case CaptureState::Black: return L"Windows black in screen captures";
    case CaptureState::Shown: break;
    }
    return L"Windows visible to screen capture";
}

/// One line for each, said as it is.
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

} // namespace

void AboutDialog::FitControls() {
    const int size = Scaled(iconSize96);
    UniqueIcon icon(static_cast<HICON>(
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_VEXTREL), IMAGE_ICON, size, size, 0)));
    ::SendMessageW(picture_, STM_SETICON, reinterpret_cast<WPARAM>(icon.Get()), 0);
    icon_ = std::move(icon);
    ::SendMessageW(name_, WM_SETFONT, reinterpret_cast<WPARAM>(Fonts().Sized(Dpi(), Scaled(24))), FALSE);
}

void AboutDialog::AddLink(const wchar_t* text, const Rect& place96, int id) {
    AddControl(WC_LINK, (L"<a>" + std::wstring(text) + L"</a>").c_str(), WS_TABSTOP, 0, place96, id);
}

void AboutDialog::CreateControls() {
    picture_ =
        AddControl(WC_STATICW, L"", SS_ICON | SS_REALSIZECONTROL, 0, {20, 20, 20 + iconSize96, 20 + iconSize96}, -1);
    name_ = AddControl(WC_STATICW, L"Vextrel", SS_LEFT, 0, {84, 16, 420, 48}, -1);
    AddControl(WC_STATICW, L"Version " VEXTREL_VERSION_TEXT, SS_LEFT, 0, {84, 50, 420, 70}, -1);
    AddControl(
        WC_STATICW,
        L"An on-screen keyboard for passwords. It is made so that programs which record keys, clicks or the screen "
        L"learn as little as possible, and it takes the password to where you drag it.",
        SS_LEFT | SS_NOPREFIX, 0, {20, 84, 420, 136}, -1);
    AddLink(L"Vextrel homepage", {20, 144, 150, 164}, ids::aboutHomepage);
    AddLink(L"Donate", {160, 144, 420, 164}, ids::aboutDonate);
    AddControl(WC_STATICW, L"&Protections in force", SS_LEFT, 0, {20, 176, 420, 194}, -1);
    AddLines(Lines(ProtectionsInForce(facts_)).c_str(), {20, 196, 420, 294}, ids::aboutProtections);
    const HWND ok = AddControl(WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, 0, {335, 306, 420, 330}, IDOK);
    ::SetFocus(ok);
}

LRESULT AboutDialog::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.code == NM_CLICK || header.code == NM_RETURN) {
            // The pages' owner is the main window: it is still there when this dialog has gone.
            const HWND owner = ::GetWindow(Handle(), GW_OWNER);
            if (header.idFrom == ids::aboutHomepage) {
                OpenWebPage(owner, WebPage::Homepage);
            } else if (header.idFrom == ids::aboutDonate) {
                OpenWebPage(owner, WebPage::Donate);
            }
            return 0;
        }
    }
    return Dialog::OnDialogMessage(message, wParam, lParam);
}

} // namespace vextrel
