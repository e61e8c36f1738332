#include "win32/Gate.h"

#include <optional>
#include <unordered_set>

namespace vextrel {

namespace {

struct {
    bool open = true; ///< until there is a gate
    std::unordered_set<HWND> windows;
    UniqueHook queueHook;
    UniqueHook loopHook;
    std::optional<InputSource> keySource;         ///< of the key that made the characters which come now
    std::optional<LPARAM> keyBefore;              ///< in a loop of the system's: the key that went down last, if real
    bool mayOpenMenu = false;                     ///< the system opens a menu by a key that it posts itself
    UINT highlighted = 0;                         ///< the menu's item; 0: none
    UINT chosen = 0;                              ///< the item that a menu has just ended on
    InputSource menuSource = InputSource::Nobody; ///< of the key or button that a menu saw last
    ULONGLONG lastInputMs = 0;
} state;

bool IsForged(UINT message) noexcept {
    return IsInput(message) && !CountsAsInput(message, Gate::SourceOfInput());
}

void Note(InputSource source) noexcept {
    if (IsUsersDoing(source)) {
        state.lastInputMs = ::GetTickCount64();
    }
}

/// The one command that a menu may post, once: that of the item it has just ended on.
bool IsMenuChoice(const MSG& message, bool removed) noexcept {
    const bool chosen =
        message.message == WM_COMMAND && message.lParam == 0 && state.chosen != 0 && message.wParam == state.chosen;
    // Posted messages come before all others: once one of those is taken, no choice is under way any more.
    if (removed && (chosen || message.message == WM_TIMER || message.message == WM_PAINT || IsInput(message.message))) {
        state.chosen = 0;
    }
    return chosen;
}

LRESULT CALLBACK OnTaken(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION) {
        auto& message = *reinterpret_cast<MSG*>(lParam);
        const bool taken =
            TakesPosted(message.message, message.wParam, message.lParam) ||
            IsMenuChoice(message, wParam == PM_REMOVE) ||
            (message.hwnd == nullptr ? message.message != WM_TIMER : !state.windows.contains(message.hwnd));
        if (!taken) {
            message.message = WM_NULL;
            message.wParam = 0;
            message.lParam = 0;
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

/// Whether a loop of the system's may act on a message. It translates keys itself: the characters of a key follow it.
bool MaySystemAct(const MSG& message) noexcept {
    if (IsCharacter(message.message)) {
        // A key that stands for one character has it in place of its number.
        return state.keySource ||
               (state.keyBefore && (message.lParam == *state.keyBefore || HIWORD(*state.keyBefore) == message.wParam));
    }
    if (!IsInput(message.message)) {
        return true;
    }
    const InputSource source = Gate::SourceOfInput();
    Note(source);
    // Wine's way to open the menu that Alt and a letter ask for.
    const bool opensMenu = source == InputSource::Nobody && message.message == WM_KEYDOWN &&
                           message.wParam == VK_RETURN && message.lParam == 0 && state.mayOpenMenu;
    const bool counts = CountsAsInput(message.message, source) || opensMenu;
    if (IsKeyDown(message.message)) {
        state.keyBefore = counts ? std::optional(message.lParam) : std::nullopt;
    }
    if (counts && message.message != WM_MOUSEMOVE && message.message != WM_NCMOUSEMOVE) {
        state.menuSource = source;
    }
    return counts;
}

LRESULT CALLBACK OnLoop(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code >= 0 && !MaySystemAct(*reinterpret_cast<const MSG*>(lParam))) {
        return TRUE;
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

/// Takes a message of a range out of the queue. The end of the program (WM_QUIT) comes whatever is asked for: it is put
/// back, for the outer loop, and nothing taken.
bool TakeWaiting(MSG& message, UINT first, UINT last) noexcept {
    if (::PeekMessageW(&message, nullptr, first, last, PM_REMOVE) == FALSE) {
        return false;
    }
    if (message.message == WM_QUIT) {
        ::PostQuitMessage(static_cast<int>(message.wParam));
        return false;
    }
    return true;
}

} // namespace

Gate::Gate(bool answersOthers, bool hooks) noexcept {
    state.open = answersOthers;
    state.lastInputMs = ::GetTickCount64();
    if (!answersOthers && hooks) {
        state.queueHook.Reset(::SetWindowsHookExW(WH_GETMESSAGE, &OnTaken, nullptr, ::GetCurrentThreadId()));
        state.loopHook.Reset(::SetWindowsHookExW(WH_MSGFILTER, &OnLoop, nullptr, ::GetCurrentThreadId()));
    }
}

Gate::~Gate() {
    state.queueHook.Reset();
    state.loopHook.Reset();
    state.open = true;
}

void Gate::Admit(HWND window) {
    state.windows.insert(window);
}

void Gate::Forget(HWND window) noexcept {
    state.windows.erase(window);
}

bool Gate::IsOpen() noexcept {
    return state.open;
}

bool Gate::LetsThrough(GatedWindow window, UINT message, WPARAM wParam) noexcept {
    if (IsInput(message) && !IsSentFromOutside()) {
        Note(SourceOfInput());
    }
    if (state.open) {
        return true;
    }
    if (IsSentFromOutside()) {
        return AnswersSent(window, message, wParam);
    }
    return IsCharacter(message) ? state.keySource.has_value() : !IsForged(message);
}

ULONGLONG Gate::LastInputMs() noexcept {
    return state.lastInputMs;
}

bool Gate::IsSentFromOutside() noexcept {
    return ::InSendMessageEx(nullptr) != ISMEX_NOSEND;
}

InputSource Gate::SourceOfInput() noexcept {
    INPUT_MESSAGE_SOURCE source{};
    if (::GetCurrentInputMessageSource(&source) == FALSE) {
        return InputSource::Nobody;
    }
    switch (source.originId) {
    case IMO_HARDWARE: return InputSource::Hardware;
    case IMO_INJECTED: return InputSource::Injected;
    case IMO_SYSTEM:
        return IsOfTouch(static_cast<std::uintptr_t>(::GetMessageExtraInfo())) ? InputSource::Touch
                                                                               : InputSource::System;
    default: return InputSource::Nobody;
    }
}

bool Gate::IsUsersOwnInput() noexcept {
    return state.open || state.keySource.value_or(Gate::SourceOfInput()) == InputSource::Hardware;
}

bool Gate::IsUsersOwnMenuChoice() noexcept {
    return state.open || state.menuSource == InputSource::Hardware;
}

void Gate::OnMenu(UINT message, WPARAM wParam) noexcept {
    switch (message) {
    case WM_ENTERMENULOOP:
        state.highlighted = state.chosen = 0;
        state.mayOpenMenu = wParam == FALSE; // a menu bar, not one that pops up
        state.menuSource = InputSource::Nobody;
        break;
    case WM_MENUSELECT:
        // As the last thing a menu tells that nothing is highlighted any more, whatever was chosen.
        if (HIWORD(wParam) != 0xFFFF) {
            state.highlighted = (HIWORD(wParam) & (MF_POPUP | MF_SYSMENU)) == 0 ? LOWORD(wParam) : 0;
            state.mayOpenMenu = state.mayOpenMenu && state.highlighted == 0;
        }
        break;
    case WM_EXITMENULOOP: state.chosen = state.highlighted; break;
    default: break;
    }
}

void Serve(const MSG& message, HWND dialog) noexcept {
    const auto dispatch = [dialog](const MSG& taken) {
        if (dialog == nullptr || ::IsDialogMessageW(dialog, const_cast<MSG*>(&taken)) == FALSE) {
            ::TranslateMessage(&taken);
            ::DispatchMessageW(&taken);
        }
    };
    if (!state.open && (IsForged(message.message) || IsCharacter(message.message))) {
        return;
    }
    const InputSource source = Gate::SourceOfInput();
    dispatch(message);
    if (state.open || !IsKeyDown(message.message)) {
        return;
    }
    // What the key was translated to waits in front of everything else.
    const auto before = std::exchange(state.keySource, source);
    MSG made{};
    while (TakeWaiting(made, WM_CHAR, WM_DEADCHAR) || TakeWaiting(made, WM_SYSCHAR, WM_SYSDEADCHAR)) {
        dispatch(made);
    }
    state.keySource = before;
}

bool PumpPendingMessages() noexcept {
    MSG message{};
    while (TakeWaiting(message, 0, 0)) {
        Serve(message, nullptr);
    }
    return message.message != WM_QUIT;
}

void DropPendingKeys() noexcept {
    MSG message{};
    while (TakeWaiting(message, WM_KEYFIRST, WM_KEYLAST)) {
    }
}

} // namespace vextrel
