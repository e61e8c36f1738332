#include "win32/Control.h"

#include "win32/Text.h"

namespace vextrel {

HWND CreateControl(HWND parent, const ControlArgs& args) {
    const Rect& place = args.placePx;
    const HWND control =
        ::CreateWindowExW(args.exStyle | WS_EX_NOPARENTNOTIFY, args.windowClass, args.text, args.style | WS_CHILD,
                          place.left, place.top, place.Width(), place.Height(), parent,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(args.id)), ::GetModuleHandleW(nullptr), nullptr);
    if (control == nullptr) {
        ThrowLastError();
    }
    return control;
}

} // namespace vextrel
