#include "app/HiddenPointer.h"

#include "ui/DotPointer.h"

namespace vextrel {

namespace {

constexpr const wchar_t* hideMouseTitle = L"Hide mouse - turn it into grey dot?";
constexpr const wchar_t* hideMouseQuestion =
    L"Click OK if you want your mouse to become a small grey dot when using this on screen keyboard.\r\n"
    L"(This is designed to fool malicious screen capture programs and is only available in the password mask view "
    L"mode.)\r\n\r\n"
    L"This will not affect any other programs, and can be undone by going to Mouse Mode - Standard.";

} // namespace

void HiddenPointer::SetHidden(bool hidden) noexcept {
    mouseHidden_ = hidden;
    overKeys_ = true;
    RenewPointer();
}

bool HiddenPointer::HideMouse() {
    if (!mayAsk_ || !form_.IsVisible()) {
        SetHidden(true);
        return true;
    }
    const int answer = ShowMessageBox(operations_, hideMouseQuestion, hideMouseTitle, MB_OKCANCEL | MB_ICONQUESTION);
    SetHidden(answer == IDOK);
    return answer == IDOK;
}

void HiddenPointer::SetOverKeys(bool over) noexcept {
    const bool changes = mouseHidden_ && over != overKeys_;
    overKeys_ = over;
    if (changes) {
        RenewPointer();
    }
}

} // namespace vextrel
