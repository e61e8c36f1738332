#include "win32/InputState.h"

#include "win32/Windows.h"

namespace vextrel {

namespace {

template <typename... Keys>
bool IsOneDownNow(Keys... virtualKeys) noexcept {
    return (IsDownNow(virtualKeys) || ...);
}

} // namespace

bool IsDownNow(int virtualKey) noexcept {
    return ::GetAsyncKeyState(virtualKey) < 0;
}

bool IsShiftDownNow() noexcept {
    return IsOneDownNow(VK_SHIFT, VK_RSHIFT, VK_LSHIFT);
}

bool IsAnyMouseButtonDown() noexcept {
    return IsOneDownNow(VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_XBUTTON1, VK_XBUTTON2);
}

bool IsPrimaryButtonDown() noexcept {
    return IsDownNow(::GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON);
}

bool WasDown(int virtualKey) noexcept {
    return ::GetKeyState(virtualKey) < 0;
}

bool WasToggled(int virtualKey) noexcept {
    return (::GetKeyState(virtualKey) & 1) != 0;
}

} // namespace vextrel
