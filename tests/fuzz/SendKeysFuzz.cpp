// Send-keys commands against a reading of the grammar by recursive descent: a modifier is released when what it was
// held for has been read, however that ended.

#include "Fuzz.h"

#include "core/SendKeysParser.h"

#include <functional>

namespace vextrel::fuzz {

namespace {

class Model {
  public:
    std::vector<SendKeysStroke> strokes;
    std::optional<std::wstring> error;

    explicit Model(std::wstring_view command)
        : command_(command) {
        ReadUpToEndOrBracket();
        if (!error && at_ < command_.size()) {
            Fail(L"Invalid sendkeys command: unmatched ) at position ");
        }
    }

  private:
    void ReadUpToEndOrBracket() {
        while (!error && at_ < command_.size() && command_[at_] != L')') {
            ReadItem();
        }
    }

    void ReadItem() {
        const wchar_t c = command_[at_];
        if (c == L'+' || c == L'~' || c == L'%') {
            const std::uint8_t key = c == L'+' ? 16 : c == L'~' ? 17 : 18;
            strokes.push_back({SendKeysStroke::Kind::ModifierDown, key});
            ++at_;
            ReadHeld();
            strokes.push_back({SendKeysStroke::Kind::ModifierUp, key});
        } else if (c == L'{') {
            ReadBraces();
        } else {
            strokes.push_back({SendKeysStroke::Kind::KeyText, 0, 1, command_.substr(at_++, 1)});
        }
    }

    void ReadHeld() {
        if (at_ == command_.size() || command_[at_] == L')') {
            return;
        }
        if (command_[at_] != L'(') {
            ReadItem();
            return;
        }
        ++at_;
        ReadUpToEndOrBracket();
        if (!error && at_ == command_.size()) {
            error = L"Invalid sendkeys command: more open brackets than close brackets.";
        }
        ++at_;
    }

    void ReadBraces() {
        const std::wstring_view rest = command_.substr(at_ + 1);
        const std::wstring_view content = rest.substr(0, rest.find(L'}'));
        if (content.size() == rest.size()) {
            Fail(rest.empty() ? L"Invalid sendkeys command; opening { without content or closing } at position "
                              : L"Invalid sendkeys command; opening { without closing } at position ");
            return;
        }
        const std::wstring_view name = content.substr(0, content.find(L' '));
        std::int32_t count = 1;
        if (name.size() < content.size()) {
            const std::wstring text(content.substr(name.size() + 1));
            count = Count(text);
            if (count < 0) {
                Fail(L"Invalid sendkeys command; key repetitions '" + text + L"' is invalid near position ");
                return;
            }
        }
        const auto code = NamedKeyCode(name);
        strokes.push_back({code ? SendKeysStroke::Kind::NamedKey : SendKeysStroke::Kind::KeyText, code.value_or(0),
                           static_cast<std::int16_t>(count), code ? std::wstring_view() : name});
        at_ += content.size() + 2;
    }

    /// -1 when it is none.
    static std::int32_t Count(std::wstring text) {
        const bool negative = text.starts_with(L'-');
        if (negative || text.starts_with(L'+')) {
            text.erase(0, 1);
        }
        if (text.empty() || text.find_first_not_of(L"0123456789") != std::wstring::npos) {
            return -1;
        }
        text.erase(0, text.find_first_not_of(L'0'));
        if (negative || text.empty()) {
            return 0;
        }
        const int number = text.size() > 5 ? 99999 : std::stoi(text);
        return number > 32767 ? -1 : number;
    }

    void Fail(const std::wstring& message) { error = message + std::to_wstring(at_ + 1); }

    std::wstring_view command_;
    std::size_t at_ = 0;
};

} // namespace

void Run(Bytes input) {
    const std::wstring command = input.Rest();
    const SendKeysProgram program = ParseSendKeys(command);
    const Model model(command);
    Require(program.strokes == model.strokes, "the strokes are those of the grammar");
    Require(program.error == model.error, "the error is that of the grammar");
    Require(program.strokes.size() <= 2 * command.size(), "no more than two strokes come from a character");
    const std::less_equal<const wchar_t*> notBehind;
    for (const SendKeysStroke& stroke : program.strokes) {
        if (stroke.kind == SendKeysStroke::Kind::KeyText) {
            Require(notBehind(command.data(), stroke.text.data()) &&
                        notBehind(stroke.text.data() + stroke.text.size(), command.data() + command.size()),
                    "a key text lies in the command");
        }
    }
}

} // namespace vextrel::fuzz
