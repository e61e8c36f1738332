#include "transfer/SendKeysPlayer.h"

#include "core/Error.h"
#include "core/SendKeysParser.h"
#include "win32/Gate.h"

#include <new>

namespace vextrel {

namespace {

constexpr const wchar_t* errorSource = L"Vextrel.cSendKeys";

} // namespace

void SendKeysPlayer::SendKeys(std::wstring_view command) {
    std::vector<std::uint8_t> held; // in the order of pressing
    const auto fail = [&](const Error& error) {
        while (!held.empty()) {
            KeyUp(held.back());
            held.pop_back();
        }
        throw Error(error.Number(), error.Description(), errorSource);
    };
    try {
        Play(command, held);
    } catch (const Error& error) {
        fail(error);
    } catch (const std::bad_alloc&) {
        fail(Error(ErrorNumber::OutOfMemory));
    }
}

void SendKeysPlayer::Play(std::wstring_view command, std::vector<std::uint8_t>& held) {
    const SendKeysProgram program = ParseSendKeys(command);
    for (const SendKeysStroke& stroke : program.strokes) {
        switch (stroke.kind) {
        case SendKeysStroke::Kind::ModifierDown:
            held.push_back(stroke.virtualKey);
            KeyDown(stroke.virtualKey);
            break;
        case SendKeysStroke::Kind::ModifierUp:
            // Modifiers are released in the opposite order of pressing.
            KeyUp(stroke.virtualKey);
            held.pop_back();
            break;
        case SendKeysStroke::Kind::NamedKey: Repeat(stroke.virtualKey, stroke.count); break;
        case SendKeysStroke::Kind::KeyText: KeyPress(stroke.text, stroke.count); break;
        }
    }
    if (program.error) {
        throw Error(ErrorNumber::SendKeys, *program.error);
    }
}

void SendKeysPlayer::KeyPress(std::wstring_view text, std::int32_t count) {
    const auto named = NamedKeyCode(text);
    const auto code = named ? named : KeyCode(text);
    if (!code) {
        throw Error(ErrorNumber::SendKeys, L"Key " + std::wstring(text) + L" could not be interpreted.", errorSource);
    }
    Repeat(*code, count);
}

void SendKeysPlayer::Repeat(std::uint8_t virtualKey, std::int32_t count) noexcept {
    for (; count > 0; --count) {
        KeyDown(virtualKey);
        KeyUp(virtualKey);
    }
}

void SendKeysPlayer::KeyDown(std::uint8_t virtualKey) noexcept {
    // Every key counts as an extended one here.
    ::keybd_event(virtualKey, 0, KEYEVENTF_EXTENDEDKEY, 0);
    PumpPendingMessages();
}

void SendKeysPlayer::KeyUp(std::uint8_t virtualKey) noexcept {
    ::keybd_event(virtualKey, 0, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP, 0);
    PumpPendingMessages();
}

std::optional<std::uint8_t> SendKeysPlayer::KeyCode(std::wstring_view text) noexcept {
    const SHORT scan = text.empty() ? SHORT{-1} : ::VkKeyScanW(text.front());
    return scan == -1 ? std::nullopt : std::optional<std::uint8_t>(LOBYTE(scan));
}

} // namespace vextrel
