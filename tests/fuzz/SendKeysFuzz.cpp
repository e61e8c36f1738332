// Send-keys commands: modifiers close as they opened, and what was read, written down again, is read the same.

#include "Fuzz.h"

#include "core/SendKeysParser.h"

using namespace vextrel;
using fuzz::Require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input{{data, size}};
    using enum SendKeysStroke::Kind;
    const std::wstring command = input.TextUpTo(L'\0');
    SendKeysProgram program = ParseSendKeys(command);
    std::wstring held, written; // the latter with groups and braces throughout
    for (SendKeysStroke& stroke : program.strokes) {
        if (stroke.kind == ModifierDown) {
            held += static_cast<wchar_t>(stroke.virtualKey);
            written += {L"+~%"[stroke.virtualKey - virtualkeys::shift], L'('};
            continue;
        }
        if (stroke.kind == ModifierUp) {
            Require(held.ends_with(static_cast<wchar_t>(stroke.virtualKey)), "what is released was pressed last");
            held.pop_back();
            written += L')';
            continue;
        }
        if (stroke.kind == NamedKey) {
            stroke = {KeyText, 0, stroke.count, L"named"};
        } else {
            Require(stroke.text.data() >= command.data() &&
                        stroke.text.data() + stroke.text.size() <= command.data() + command.size(),
                    "a key text lies in the command");
        }
        const bool isBare = stroke.count == 1 && (stroke.text == L"}" || stroke.text == L" ");
        written += isBare ? std::wstring(stroke.text)
                          : L"{" + std::wstring(stroke.text) + L" " + std::to_wstring(stroke.count) + L"}";
    }
    Require(held.empty(), "nothing stays pressed");
    Require(!program.error || program.error->starts_with(L"Invalid sendkeys command"), "an error says what it is of");
    const SendKeysProgram again = ParseSendKeys(written);
    Require(!again.error && again.strokes == program.strokes, "what was read, written down, is read the same");
    return 0;
}
