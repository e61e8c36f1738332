#include "app/HiddenPointer.h"

#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

constexpr const wchar_t* hideMouseTitle = L"Hide mouse - turn it into grey dot?";
constexpr const wchar_t* hideMouseQuestion =
    L"Click OK if you want your mouse to become a small grey dot when using this on screen keyboard.\r\n"
    L"(This is designed to fool malicious screen capture programs and is only available in the password mask view "
    L"mode.)\r\n\r\n"
    L"This will not affect any other programs, and can be undone by going to Mouse Mode - Standard.";

/// Has the window under the pointer set the pointer anew, if it is one of ours, without waiting for the next move.
void RenewPointer() noexcept {
    POINT pointer{};
    if (::GetCursorPos(&pointer) == FALSE) {
        return;
    }
    // The pointer over another program's window is never touched.
    if (const HWND window = ::WindowFromPoint(pointer); IsOurs(window)) {
        const LRESULT part = ::SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(pointer.x, pointer.y));
        ::SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(part, WM_MOUSEMOVE));
    }
}

} // namespace

void HiddenPointer::SetHidden(bool hidden) noexcept {
    mouseHidden_ = hidden;
    overKeys_ = true;
    RenewPointer();
}

bool HiddenPointer::HideMouse() {
    SetHidden(!mayAsk_ || !form_.IsVisible() ||
              ShowMessageBox(operations_, hideMouseQuestion, hideMouseTitle, MB_OKCANCEL | MB_ICONQUESTION) == IDOK);
    return mouseHidden_;
}

void HiddenPointer::SetOverKeys(bool over) noexcept {
    if (std::exchange(overKeys_, over) != over && mouseHidden_) {
        RenewPointer();
    }
}

} // namespace vextrel
