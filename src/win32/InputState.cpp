#include "win32/InputState.h"

#include "win32/Windows.h"

#include <initializer_list>

namespace vextrel {

bool IsAnyMouseButtonDown() noexcept {
    for (const int button : {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_XBUTTON1, VK_XBUTTON2}) {
        if (::GetAsyncKeyState(button) < 0) {
            return true;
        }
    }
    return false;
}

bool IsPrimaryButtonDown() noexcept {
    return ::GetAsyncKeyState(::GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON) < 0;
}

} // namespace vextrel
