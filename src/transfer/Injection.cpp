#include "transfer/Injection.h"

#include "win32/Gate.h"
#include "win32/Text.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

/// The target's time to react to the click before any character comes, counted in rounds of message processing and
/// not in time.
constexpr int waitRounds = 100000;

void BringForward(HWND window) noexcept {
    const HWND root = ::GetAncestor(window, GA_ROOT);
    if (root != nullptr && root != window) {
        ::SetForegroundWindow(root);
        ::ShowWindowAsync(root, SW_SHOW);
    }
    ::SetForegroundWindow(window);
    ::ShowWindowAsync(window, SW_SHOW);
}

void ClickAt(POINT place) noexcept {
    ::SetCursorPos(place.x, place.y);
    // What mouse_event presses is the physical button; swapped, the right one is the primary.
    const bool swapped = ::GetSystemMetrics(SM_SWAPBUTTON) != 0;
    ::mouse_event(swapped ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    ::mouse_event(swapped ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

/// Whether it is what Windows shows in place of a window that hangs. That takes what is posted and gives it to nobody.
bool IsStandIn(HWND window) noexcept {
    wchar_t name[16]{};
    ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return std::wstring_view(name) == L"Ghost";
}

/// @return false when Windows refuses a character, with its last error.
bool Post(HWND window, std::wstring_view password) noexcept {
    // Of the system's code pages this is the one of whose bytes no window puts characters together.
    if (::GetACP() == CP_UTF8) {
        return std::ranges::all_of(
            password, [window](wchar_t unit) { return ::PostMessageW(window, WM_CHAR, unit, 0) != FALSE; });
    }
    // The ANSI call: only it takes codes of the code page and brings them to either kind of window.
    const auto post = [window](std::uint8_t byte) { return ::PostMessageA(window, WM_CHAR, byte, 0) != FALSE; };
    while (!password.empty()) {
        const AnsiCharacter character(password);
        if (!std::ranges::all_of(character, post)) {
            return false;
        }
        password.remove_prefix(character.UnitCount());
    }
    return true;
}

} // namespace

InjectionOutcome Inject(const SecretText& password) {
    POINT place{};
    if (::GetCursorPos(&place) == FALSE) {
        return {InjectionOutcome::Kind::NoWindow};
    }
    const HWND window = ::WindowFromPoint(place);
    if (window != nullptr) {
        if (IsOurs(window)) {
            return {InjectionOutcome::Kind::OwnWindow};
        }
        if (IsStandIn(window)) {
            return {InjectionOutcome::Kind::Refused, ERROR_TIMEOUT};
        }
    }
    BringForward(window);
    ClickAt(place);
    for (int round = 0; round <= waitRounds; ++round) {
        PumpPendingMessages();
    }
    if (window == nullptr) {
        // A message to no window would land in our own queue, password and all.
        return {InjectionOutcome::Kind::NoWindow};
    }
    if (!Post(window, password.View())) {
        return {InjectionOutcome::Kind::Refused, ::GetLastError()};
    }
    return {InjectionOutcome::Kind::Injected};
}

} // namespace vextrel
