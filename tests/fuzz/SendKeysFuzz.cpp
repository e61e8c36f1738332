// Send-keys commands: modifiers close as they opened, and what was read, written down again, is read the same.

#include "Fuzz.h"

#include "core/SendKeysParser.h"

namespace vextrel::fuzz {

namespace {

using enum SendKeysStroke::Kind;

/// A stroke as part of a command, with groups and braces throughout.
std::wstring Written(const SendKeysStroke& stroke) {
    const bool isBare = stroke.count == 1 && (stroke.text == L"}" || stroke.text == L" ");
    switch (stroke.kind) {
    case ModifierDown: return std::wstring(1, L"+~%"[stroke.virtualKey - virtualkeys::shift]) + L"(";
    case ModifierUp: return L")";
    default:
        return isBare ? std::wstring(stroke.text)
                      : L"{" + std::wstring(stroke.text) + L" " + std::to_wstring(stroke.count) + L"}";
    }
}

} // namespace

void Run(Bytes input) {
    const std::wstring command = input.TextUpTo(L'\0');
    SendKeysProgram program = ParseSendKeys(command);
    std::wstring held, written;
    for (SendKeysStroke& stroke : program.strokes) {
        if (stroke.kind == ModifierDown) {
            held += static_cast<wchar_t>(stroke.virtualKey);
        } else if (stroke.kind == ModifierUp) {
            Require(held.ends_with(static_cast<wchar_t>(stroke.virtualKey)), "what is released was pressed last");
            held.pop_back();
        } else if (stroke.kind == NamedKey) {
            stroke = {KeyText, 0, stroke.count, L"named"};
        } else {
            Require(stroke.text.data() >= command.data() &&
                        stroke.text.data() + stroke.text.size() <= command.data() + command.size(),
                    "a key text lies in the command");
        }
        written += Written(stroke);
    }
    Require(held.empty(), "nothing stays pressed");
    Require(!program.error || program.error->starts_with(L"Invalid sendkeys command"), "an error says what it is of");
    const SendKeysProgram again = ParseSendKeys(written);
    Require(!again.error && again.strokes == program.strokes, "what was read, written down, is read the same");
}

} // namespace vextrel::fuzz
