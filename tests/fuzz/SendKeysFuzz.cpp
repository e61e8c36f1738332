// Send-keys commands: modifiers close as they opened, and what was read, written down again, is read the same.

#include "Require.h"
#include "core/SendKeysParser.h"

using namespace vextrel;

/// The fuzzer's bytes as a text. ASCII stands for itself, so that inputs can be read and written by hand; a byte beyond
/// it is the upper half of a UTF-16 unit whose lower half follows.
static std::wstring TextOf(const std::uint8_t* data, std::size_t size) {
    std::wstring text;
    for (std::size_t i = 0; i < size; ++i) {
        const std::uint8_t first = data[i];
        text += static_cast<wchar_t>(first < 0x80 || i + 1 == size ? first : first << 8U | data[++i]);
    }
    return text;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using enum SendKeysStroke::Kind;
    const std::wstring command = TextOf(data, size);
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
