#include "ui/InputBox.h"

#include "core/ids.h"
#include "win32/Control.h"
#include "win32/SubclassedWindow.h"
#include "win32/Text.h"

namespace vextrel {

void InputBox::CreateControls() {
    AddLabel(prompt_.c_str(), {14, 12, 366, 44}, SS_LEFT | SS_NOPREFIX);
    field_ = AddControl(WC_EDITW, answer_.c_str(), WS_TABSTOP | ES_AUTOHSCROLL, {14, 46, 366, 70}, ids::inputBoxText,
                        WS_EX_CLIENTEDGE);
    AddControl(WC_BUTTONW, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, {188, 84, 273, 108}, IDOK);
    AddControl(WC_BUTTONW, L"Cancel", WS_TABSTOP | BS_PUSHBUTTON, {281, 84, 366, 108}, IDCANCEL);
    SetAccessibleNames({{field_, prompt_.c_str()}});
    Tell(field_, EM_SETSEL, 0, -1);
    ::SetFocus(field_);
}

void InputBox::FitControls() {
    // While it had no room, the field has scrolled to the end of its text.
    const LRESULT selection = Tell(field_, EM_GETSEL, 0, 0);
    Tell(field_, EM_SETSEL, 0, 0);
    Tell(field_, EM_SCROLLCARET, 0, 0);
    Tell(field_, EM_SETSEL, LOWORD(selection), HIWORD(selection));
}

void InputBox::OnCommand(int id) {
    if (id == IDOK) {
        answer_ = WindowText(field_);
    }
    Dialog::OnCommand(id);
}

} // namespace vextrel
