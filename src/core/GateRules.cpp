#include "core/GateRules.h"

#include <algorithm>
#include <span>

namespace vextrel {

namespace {

/// The system's numbers; from the first to the last.
struct Messages {
    std::uint32_t first;
    std::uint32_t last = first;
};

bool IsAmong(std::span<const Messages> list, std::uint32_t message) noexcept {
    return std::ranges::any_of(list,
                               [message](Messages range) { return message >= range.first && message <= range.last; });
}

// What the system itself sends while another thread shows, moves, sizes, enables, activates or restyles a window; and
// what screen readers ask: the object (0x3D) and the dialog code (0x87). The system's tablet service is a program, too.
constexpr Messages answeredByAll[] = {
    {0x00},                         // null
    {0x03},                         // move
    {0x05},                         // size
    {0x07, 0x08},                   // the focus comes and goes
    {0x0A},                         // enable
    {0x0F},                         // paint
    {0x14, 0x15},                   // erase the ground; system colours
    {0x18},                         // show
    {0x1A},                         // settings
    {0x1C, 0x1D},                   // another program is active; fonts
    {0x1F},                         // end all tracking
    {0x22},                         // child activated
    {0x3D},                         // accessible object
    {0x46, 0x47},                   // place and size, before and after
    {0x7C, 0x7D},                   // style, before and after
    {0x83, 0x88},                   // frame: size, hit, paint, activation; dialog code; painting in step
    {0x127, 0x129},                 // focus marks
    {0x132, 0x138},                 // colours of controls
    {0x210},                        // a child's news
    {0x215},                        // the mouse was taken
    {0x281},                        // input methods come and go
    {0x282},        {0x2E2, 0x2E3}, // another DPI, told to children
    {0x2CC},                        // what a finger or pen may do here
    {0x31A},                        // theme
};
/// The text and its length.
constexpr Messages names[] = {{0x0D, 0x0E}};
// What the system and its shell send to windows of their own accord.
constexpr Messages answeredByForms[] = {
    {0x06},         // activation
    {0x10, 0x11},   // close; may the session end
    {0x13},         // may it be restored
    {0x16},         // the session ends: the password is wiped, no more
    {0x1B},         // devices
    {0x1E},         // time
    {0x24},         // smallest and largest size
    {0x50, 0x51},   // input language
    {0x54},         // another user's settings
    {0x7E, 0x7F},   // display; icon asked for
    {0x80},         // icon set
    {0x112},        // system commands
    {0x218, 0x219}, // power; devices
    {0x2B1},        // session
    {0x30F, 0x311}, // palette
    {0x31E, 0x328}, // composition
};
/// Close, system commands, and news that lead to much: painting, clearing.
constexpr Messages takenLater[] = {{0x10}, {0x15}, {0x1A}, {0x7E}, {0x112}, {0x2B1}, {0x31A}};

constexpr Messages keysDown[] = {{0x100}, {0x104}};
constexpr Messages characters[] = {{0x102, 0x103}, {0x106, 0x107}, {0x109}};
constexpr Messages moves[] = {{0xA0}, {0x200}};
/// Moves and buttons, beside a window's content and in it; keys down and up.
constexpr Messages input[] = {{0xA0, 0xAD}, {0x200, 0x20E}, {0x100, 0x101}, {0x104, 0x105}};

constexpr Messages posted[] = {
    {0x00},         // null
    {0x0F},         // paint
    {0x10},         // close
    {0x15},         // system colours
    {0x1A},         // settings
    {0x1D},         // fonts
    {0x1F},         // end all tracking
    {0x50, 0x51},   // input language
    {0x7E},         // display
    {0xFF},         // raw input
    {0x112, 0x113}, // system commands; timers
    {0x118},        // the system's timers: the caret, for one
    {0x119, 0x11B}, // gestures
    {0x127, 0x129}, // focus marks
    {0x215},        // the mouse was taken
    {0x218, 0x219}, // power; devices
    {0x240, 0x257}, // touch and pen
    {0x281, 0x291}, // input methods
    {0x2A0, 0x2A3}, // the pointer rests or has left
    {0x2B1},        // session
    {0x2C0, 0x2DF}, // tablets
    {0x312},        // hot keys
    {0x31A, 0x328}, // theme, composition
};
constexpr Messages timers[] = {{0x113}, {0x118}};

/// Controls paint with the device context that comes with the message, which the system's own never has.
bool PaintsElsewhere(std::uint32_t message, std::uintptr_t wParam) noexcept {
    constexpr std::uint32_t paint = 0x0F;
    return message == paint && wParam != 0;
}

} // namespace

bool AnswersSent(GatedWindow window, std::uint32_t message, std::uintptr_t wParam) noexcept {
    if (PaintsElsewhere(message, wParam)) {
        return false;
    }
    return IsAmong(answeredByAll, message) || (window != GatedWindow::SecretBox && IsAmong(names, message)) ||
           (window == GatedWindow::Form && IsAmong(answeredByForms, message));
}

bool IsTakenLater(std::uint32_t message) noexcept {
    return IsAmong(takenLater, message);
}

bool TakesPosted(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) noexcept {
    if (IsInput(message) || IsCharacter(message)) {
        return true;
    }
    // The procedure of a timer would be called.
    return IsAmong(posted, message) && !(IsAmong(timers, message) && lParam != 0) && !PaintsElsewhere(message, wParam);
}

bool IsInput(std::uint32_t message) noexcept {
    return IsAmong(input, message);
}

bool IsKeyDown(std::uint32_t message) noexcept {
    return IsAmong(keysDown, message);
}

bool IsUsersDoing(InputSource source) noexcept {
    return source != InputSource::Nobody && source != InputSource::System;
}

bool IsOfTouch(std::uintptr_t extraInfo) noexcept {
    constexpr std::uint32_t signature = 0xFF515700; // its last byte tells fingers and pens apart
    return (static_cast<std::uint32_t>(extraInfo) & 0xFFFFFF00) == signature;
}

bool IsCharacter(std::uint32_t message) noexcept {
    return IsAmong(characters, message);
}

bool CountsAsInput(std::uint32_t message, InputSource source) noexcept {
    return IsUsersDoing(source) || (source == InputSource::System && IsAmong(moves, message));
}

} // namespace vextrel
