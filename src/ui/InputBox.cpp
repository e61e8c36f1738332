#include "ui/InputBox.h"

#include "core/ids.h"
#include "win32/Control.h"
#include "win32/Text.h"

namespace vextrel {

std::optional<std::wstring> InputBox::Ask(Operations& operations, HWND owner) {
    if (RunModal(operations, owner) != IDOK) {
        return std::nullopt;
    }
    return answer_;
}

void InputBox::CreateControls() {
    AddControl(WC_STATICW, prompt_.c_str(), SS_LEFT | SS_NOPREFIX, 0, {14, 12, 366, 44}, -1);
    field_ = AddControl(WC_EDITW, answer_.c_str(), WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, {14, 46, 366, 70},
                        ids::inputBoxText);
    AddControl(WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, 0, {188, 84, 273, 108}, IDOK);
    AddControl(WC_BUTTONW, L"Cancel", WS_TABSTOP | BS_PUSHBUTTON, 0, {281, 84, 366, 108}, IDCANCEL);
    SetAccessibleNames({{field_, prompt_.c_str()}});
    ::SendMessageW(field_, EM_SETSEL, 0, -1);
    ::SetFocus(field_);
}

void InputBox::OnCommand(int id, int notification) {
    if (id == IDOK) {
        answer_ = WindowText(field_);
    }
    Dialog::OnCommand(id, notification);
}

} // namespace vextrel
