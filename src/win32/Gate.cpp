#include "win32/Gate.h"

#include <unordered_set>

namespace vextrel {

namespace {

struct State {
    bool open = true; ///< until there is a gate
    std::unordered_set<HWND> windows;
    UniqueHook queueHook;
    UniqueHook loopHook;
    bool translating = false;                    ///< characters that come now were made by a key of the user's
    InputSource keySource = InputSource::Nobody; ///< of that key
    LPARAM keyBefore = 0;                        ///< in a loop of the system's: the key that went down last, if real
    bool keyIsReal = false;
    bool mayOpenMenu = false;                     ///< the system opens a menu by a key that it posts itself
    UINT highlighted = 0;                         ///< the menu's item; 0: none
    UINT chosen = 0;                              ///< the item that a menu has just ended on
    InputSource menuSource = InputSource::Nobody; ///< of the key or button that a menu saw last
};

State& The() noexcept {
    static State state;
    return state;
}

InputSource SourceOfInput() noexcept {
    INPUT_MESSAGE_SOURCE source{};
    if (::GetCurrentInputMessageSource(&source) == FALSE) {
        return InputSource::Nobody;
    }
    switch (source.originId) {
    case IMO_HARDWARE: return InputSource::Hardware;
    case IMO_INJECTED: return InputSource::Injected;
    case IMO_SYSTEM: return InputSource::System;
    default: return InputSource::Nobody;
    }
}

bool IsForged(UINT message) noexcept {
    return IsInput(message) && !CountsAsInput(message, SourceOfInput());
}

/// The one command that a menu may post, once: that of the item it has just ended on.
bool IsMenuChoice(const MSG& message, bool removed) noexcept {
    const bool chosen =
        message.message == WM_COMMAND && message.lParam == 0 && The().chosen != 0 && message.wParam == The().chosen;
    // Posted messages come before all others: once one of those is taken, no choice is under way any more.
    if (removed && (chosen || message.message == WM_TIMER || message.message == WM_PAINT || IsInput(message.message))) {
        The().chosen = 0;
    }
    return chosen;
}

LRESULT CALLBACK OnTaken(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION) {
        auto& message = *reinterpret_cast<MSG*>(lParam);
        const bool taken =
            TakesPosted(message.message, message.wParam, message.lParam) ||
            IsMenuChoice(message, wParam == PM_REMOVE) ||
            (message.hwnd == nullptr ? message.message != WM_TIMER : !The().windows.contains(message.hwnd));
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
    State& state = The();
    if (IsCharacter(message.message)) {
        // A key that stands for one character has it in place of its number.
        return state.translating ||
               (state.keyIsReal && (message.lParam == state.keyBefore || HIWORD(state.keyBefore) == message.wParam));
    }
    if (!IsInput(message.message)) {
        return true;
    }
    const InputSource source = SourceOfInput();
    // Wine's way to open the menu that Alt and a letter ask for.
    const bool opensMenu = source == InputSource::Nobody && message.message == WM_KEYDOWN &&
                           message.wParam == VK_RETURN && message.lParam == 0 && state.mayOpenMenu;
    const bool counts = CountsAsInput(message.message, source) || opensMenu;
    if (IsKeyDown(message.message)) {
        state.keyIsReal = counts;
        state.keyBefore = message.lParam;
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

} // namespace

Gate::Gate(bool answersOthers, bool hooks) noexcept {
    The().open = answersOthers;
    if (!answersOthers && hooks) {
        The().queueHook.Reset(::SetWindowsHookExW(WH_GETMESSAGE, &OnTaken, nullptr, ::GetCurrentThreadId()));
        The().loopHook.Reset(::SetWindowsHookExW(WH_MSGFILTER, &OnLoop, nullptr, ::GetCurrentThreadId()));
    }
}

Gate::~Gate() {
    The().queueHook.Reset();
    The().loopHook.Reset();
    The().open = true;
}

void Gate::Admit(HWND window) {
    The().windows.insert(window);
}

void Gate::Forget(HWND window) noexcept {
    The().windows.erase(window);
}

bool Gate::IsOpen() noexcept {
    return The().open;
}

bool Gate::LetsThrough(GatedWindow window, UINT message, WPARAM wParam) noexcept {
    if (The().open) {
        return true;
    }
    if (IsSentFromOutside()) {
        return AnswersSent(window, message, wParam);
    }
    return IsCharacter(message) ? The().translating : !IsForged(message);
}

bool Gate::IsSentFromOutside() noexcept {
    return ::InSendMessageEx(nullptr) != ISMEX_NOSEND;
}

bool Gate::IsUsersOwnInput() noexcept {
    return The().open || (The().translating ? The().keySource : SourceOfInput()) == InputSource::Hardware;
}

bool Gate::IsUsersOwnMenuChoice() noexcept {
    return The().open || The().menuSource == InputSource::Hardware;
}

void Gate::OnMenu(UINT message, WPARAM wParam) noexcept {
    switch (message) {
    case WM_ENTERMENULOOP:
        The().highlighted = The().chosen = 0;
        The().mayOpenMenu = wParam == FALSE; // a menu bar, not one that pops up
        The().menuSource = InputSource::Nobody;
        break;
    case WM_MENUSELECT:
        // As the last thing a menu tells that nothing is highlighted any more, whatever was chosen.
        if (HIWORD(wParam) != 0xFFFF) {
            The().highlighted = (HIWORD(wParam) & (MF_POPUP | MF_SYSMENU)) == 0 ? LOWORD(wParam) : 0;
            The().mayOpenMenu = The().mayOpenMenu && The().highlighted == 0;
        }
        break;
    case WM_EXITMENULOOP: The().chosen = The().highlighted; break;
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
    if (Gate::IsOpen()) {
        dispatch(message);
        return;
    }
    if (IsForged(message.message) || IsCharacter(message.message)) {
        return;
    }
    const InputSource source = IsKeyDown(message.message) ? SourceOfInput() : InputSource::Nobody;
    dispatch(message);
    if (!IsKeyDown(message.message)) {
        return;
    }
    // What the key was translated to waits in front of everything else.
    const FlagScope translating(The().translating);
    The().keySource = source;
    MSG made{};
    while (::PeekMessageW(&made, nullptr, WM_CHAR, WM_DEADCHAR, PM_REMOVE) != FALSE ||
           ::PeekMessageW(&made, nullptr, WM_SYSCHAR, WM_SYSDEADCHAR, PM_REMOVE) != FALSE) {
        if (made.message == WM_QUIT) { // comes whatever is asked for
            ::PostQuitMessage(static_cast<int>(made.wParam));
            return;
        }
        dispatch(made);
    }
}

} // namespace vextrel
