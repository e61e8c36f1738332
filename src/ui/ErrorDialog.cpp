#include "ui/ErrorDialog.h"

#include "core/ids.h"

namespace vextrel {

void ErrorDialog::CreateControls() {
    AddControl(WC_STATICW, L"Something unexpected happened. Vextrel carries on.", SS_LEFT, 0, {14, 14, 386, 32},
               ids::lblTitle);
    AddLines(message_.c_str(), {14, 38, 386, 132}, ids::txtError);
    const HWND close =
        AddControl(WC_BUTTONW, L"&Close", WS_TABSTOP | BS_DEFPUSHBUTTON, 0, {300, 144, 386, 168}, ids::cmdClose);
    ::SetFocus(close);
}

void ErrorDialog::OnCommand(int id, int notification) {
    if (id == ids::cmdClose) {
        End(IDOK);
        return;
    }
    Dialog::OnCommand(id, notification);
}

} // namespace vextrel
