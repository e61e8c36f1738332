#pragma once

#include <cstdint>

namespace vextrel {

// Which messages the program's windows take. Any program of the same user can send and post them what it likes; told
// apart are the user's own acts, the system's own messages, and orders that nobody but this program has to give.

/// What makes a window messages: a form, a control that anybody may be told the text of, or a box with a secret.
enum class GatedWindow { Form, Control, SecretBox };

/// Who made the input that a message tells, as the system says.
enum class InputSource {
    Nobody,   ///< a message that a program posted
    Hardware, ///< the user; also a program that the system trusts like one
    Injected, ///< a program that moves the user's pointer or presses the user's keys
    System,   ///< windows that changed under a resting pointer
    Touch,    ///< the system, for a finger or a pen: it makes mouse messages of what they do
};

/// Whether a window answers a message that another thread sent. What it does not answer gets 0. What the system makes
/// of such a message on the way (places, painting, focus) is among those answered.
[[nodiscard]] bool AnswersSent(GatedWindow window, std::uint32_t message, std::uintptr_t wParam) noexcept;
/// Whether a form carries out a message of those only when it has come back as one of its own: what it leads to must
/// not run on behalf of somebody else.
[[nodiscard]] bool IsTakenLater(std::uint32_t message) noexcept;

/// Whether a message that waits in the queue is one that the system posts, or one that is harmless. Input is looked at
/// when it is dispatched, the commands of menus by whoever knows which menu is open.
[[nodiscard]] bool TakesPosted(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) noexcept;

/// Whether somebody did something, be it by a program; not so when windows change under a resting pointer.
[[nodiscard]] bool IsUsersDoing(InputSource source) noexcept;
/// Whether what goes along with a mouse message says that the system made it of a touch.
[[nodiscard]] bool IsOfTouch(std::uintptr_t extraInfo) noexcept;
/// Keys going down and up, buttons and the pointer, in and around a window; not characters.
[[nodiscard]] bool IsInput(std::uint32_t message) noexcept;
/// A key that went down, with or without Alt.
[[nodiscard]] bool IsKeyDown(std::uint32_t message) noexcept;
/// What a pressed key was translated to.
[[nodiscard]] bool IsCharacter(std::uint32_t message) noexcept;
/// Whether input counts: what nobody did does not, and only the pointer moves by the system's doing.
[[nodiscard]] bool CountsAsInput(std::uint32_t message, InputSource source) noexcept;

} // namespace vextrel
