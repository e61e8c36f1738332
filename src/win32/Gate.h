#pragma once

#include "core/GateRules.h"
#include "core/Pinned.h"
#include "win32/Windows.h"
#include "win32/handles.h"

namespace vextrel {

/// The gate that every message to a window of the program passes (the rules: core/GateRules.h). What other programs
/// send is told apart where a window procedure begins, what they post where it is taken from the queue, forged input
/// where it is dispatched. Our own calls go beneath it, to a control's own procedure (win32/Control.h).
///
/// There is one gate for the thread that has the windows; window procedures and hooks get no context that could carry
/// it.
class Gate : private Pinned {
  public:
    /// @param answersOthers leaves the gate open: to screen readers, automation, tests.
    /// @param hooks whether to watch the queue in the system's own loops, too (menus and dialogs).
    Gate(bool answersOthers, bool hooks) noexcept;
    ~Gate();

    /// A window of the program's comes into being, or goes; what is posted to others is left alone.
    static void Admit(HWND window);
    static void Forget(HWND window) noexcept;

    [[nodiscard]] static bool IsOpen() noexcept;
    /// Whether a window's procedure goes on with a message; one that does not answers 0.
    [[nodiscard]] static bool LetsThrough(GatedWindow window, UINT message, WPARAM wParam) noexcept;
    /// Whether the message that is being handled was sent by another thread.
    [[nodiscard]] static bool IsSentFromOutside() noexcept;
    /// When the user, or a program that moves pointer and keys, last did something to a window of ours or to a menu, as
    /// GetTickCount64 counts; at first, when the gate came to be.
    [[nodiscard]] static ULONGLONG LastInputMs() noexcept;
    /// Who made the input that is being handled.
    [[nodiscard]] static InputSource SourceOfInput() noexcept;
    /// Whether the user's own hand made the input that is being handled, not a program that moves pointer and keys.
    /// In an open gate everybody's does.
    [[nodiscard]] static bool IsUsersOwnInput() noexcept;
    /// The same of the choice that a menu has just ended with.
    [[nodiscard]] static bool IsUsersOwnMenuChoice() noexcept;

    /// A form's menu highlights an item, opens or has closed: the one command that may come of it is remembered.
    static void OnMenu(UINT message, WPARAM wParam) noexcept;
};

/// Dispatches a message taken from the queue, with the dialog navigation of a window (null for none). Forged input and
/// characters that no key has made go nowhere.
void Serve(const MSG& message, HWND dialog) noexcept;

/// Serves every message that waits in this thread's queue, without any dialog navigation. The end of the program is
/// left for the outer loop and stops it. Anything can happen meanwhile: the caller looks again at whatever it relies
/// on.
/// @return false when the program ends.
bool PumpPendingMessages() noexcept;

/// Takes the key messages that wait in this thread's queue out of it, unprocessed.
void DropPendingKeys() noexcept;

} // namespace vextrel
