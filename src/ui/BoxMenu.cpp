#include "ui/BoxMenu.h"

#include "win32/handles.h"

namespace vextrel {

UINT TrackBoxMenu(HWND box, POINT screen, BoxMenuState state) noexcept {
    const bool canCopy = state.selected && !state.masked;
    const struct {
        UINT message; ///< 0: a separator
        const wchar_t* caption;
        bool enabled;
    } items[] = {
        {WM_UNDO, L"&Undo", state.undoable && !state.masked},
        {0, nullptr, false},
        {WM_CUT, L"Cu&t", canCopy},
        {WM_COPY, L"&Copy", canCopy},
        {WM_PASTE, L"&Paste", ::IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE},
        {WM_CLEAR, L"&Delete", state.selected},
        {0, nullptr, false},
        {EM_SETSEL, L"Select &All", !state.empty},
    };
    const UniqueMenu menu(::CreatePopupMenu());
    for (const auto& item : items) {
        const UINT flags = item.message == 0 ? MF_SEPARATOR : item.enabled ? MF_STRING : MF_STRING | MF_GRAYED;
        ::AppendMenuW(menu.Get(), flags, item.message, item.caption);
    }
    if (screen.x == -1 && screen.y == -1) {
        screen = {};
        ::GetCaretPos(&screen);
        ::ClientToScreen(box, &screen);
    }
    return static_cast<UINT>(::TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x, screen.y, 0,
                                              ::GetParent(box), nullptr));
}

} // namespace vextrel
