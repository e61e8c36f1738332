#include "ui/DotPointer.h"

#include "win32/TopLevelWindow.h"
#include "win32/resources.h"

namespace vextrel {

HCURSOR DotPointerForDpi(int dpi) noexcept {
    const int id = dpi >= 192 ? IDC_GREYDOT_192 : dpi >= 144 ? IDC_GREYDOT_144 : IDC_GREYDOT_96;
    // LR_SHARED: the system keeps one of each and frees it with the program.
    const HANDLE dot = ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_CURSOR, 0, 0, LR_SHARED);
    // None at all would hide the pointer.
    return dot != nullptr ? static_cast<HCURSOR>(dot) : ::LoadCursorW(nullptr, IDC_ARROW);
}

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

} // namespace vextrel
