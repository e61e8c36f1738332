#include "ui/ErrorDialog.h"

#include "core/ids.h"

namespace vextrel {

void ErrorDialog::CreateControls() {
    AddControl(WC_STATICW, L"Something unexpected happened. Vextrel carries on.", SS_LEFT, {14, 14, 386, 32},
               ids::lblTitle);
    AddLines(message_.c_str(), {14, 38, 386, 132}, ids::txtError);
    ::SetFocus(AddControl(WC_BUTTONW, L"&Close", WS_TABSTOP | BS_DEFPUSHBUTTON, {300, 144, 386, 168}, ids::cmdClose));
}

void ErrorDialog::OnCommand(int id) {
    Dialog::OnCommand(id == ids::cmdClose ? IDOK : id);
}

} // namespace vextrel
