#include "core/SendKeysParser.h"

#include "core/Numbers.h"

#include <algorithm>

namespace vextrel {

namespace {

struct NamedKey {
    std::wstring_view name;
    std::uint8_t code;
};

constexpr NamedKey namedKeys[] = {
    {L"BACKSPACE", 8}, {L"BS", 8},           {L"BKSP", 8},   {L"BREAK", 19},  {L"CAPSLOCK", 20}, {L"DELETE", 46},
    {L"DEL", 46},      {L"DOWN", 40},        {L"END", 35},   {L"ENTER", 13},  {L"~", 13},        {L"ESC", 27},
    {L"HELP", 47},     {L"HOME", 36},        {L"INS", 45},   {L"INSERT", 45}, {L"LEFT", 37},     {L"NUMLOCK", 144},
    {L"PGDN", 34},     {L"PGUP", 33},        {L"PRTSC", 42}, // the Print key; the one that takes screenshots is 44
    {L"RIGHT", 39},    {L"SCROLLLOCK", 145}, {L"TAB", 9},    {L"UP", 38},     {L"F1", 112},      {L"F2", 113},
    {L"F3", 114},      {L"F4", 115},         {L"F5", 116},   {L"F6", 117},    {L"F7", 118},      {L"F8", 119},
    {L"F9", 120},      {L"F10", 121},        {L"F11", 122},  {L"F12", 123},   {L"F13", 124},     {L"F14", 125},
    {L"F15", 126},     {L"F16", 127},
};
static_assert(std::size(namedKeys) == 41);

std::optional<std::uint8_t> ModifierKey(wchar_t c) noexcept {
    switch (c) {
    case L'+': return virtualkeys::shift;
    case L'~': return virtualkeys::control;
    case L'%': return virtualkeys::alt;
    default: return std::nullopt;
    }
}

class Parser {
  public:
    explicit Parser(std::wstring_view command) noexcept
        : command_(command) {}

    SendKeysProgram Parse() {
        // No character gives more than one stroke, but a modifier is released, too. Growing step by step would move the
        // strokes of a long command again and again, which takes longer than the parsing.
        const auto modifiers = std::ranges::count_if(command_, [](wchar_t c) { return ModifierKey(c).has_value(); });
        program_.strokes.reserve(command_.size() + static_cast<std::size_t>(modifiers));
        while (at_ < command_.size() && !program_.error) {
            ParseNext();
        }
        if (!program_.error && groups_.size() > 1) {
            program_.error = L"Invalid sendkeys command: more open brackets than close brackets.";
        }
        groups_.resize(1);
        ReleaseWaiting();
        return std::move(program_);
    }

  private:
    void ParseNext() {
        const wchar_t c = command_[at_];
        if (const auto modifier = ModifierKey(c)) {
            ParseModifier(*modifier);
        } else if (c == L')') {
            ParseGroupEnd();
        } else if (c == L'{') {
            ParseBraces();
        } else {
            AddKey({SendKeysStroke::Kind::KeyText, 0, 1, command_.substr(at_, 1)}); // no name is a plain character
            ++at_;
        }
    }

    void ParseModifier(std::uint8_t virtualKey) {
        program_.strokes.push_back({SendKeysStroke::Kind::ModifierDown, virtualKey});
        held_.push_back(virtualKey);
        ++at_;
        if (at_ < command_.size() && command_[at_] == L'(') {
            // Modifiers before this one wait for the group as for a key: they are held until it ends.
            groups_.push_back(held_.size());
            ++at_;
        }
    }

    void ParseGroupEnd() {
        ReleaseWaiting();
        if (groups_.size() == 1) {
            FailAt(L"Invalid sendkeys command: unmatched ) at position ");
            return;
        }
        groups_.pop_back();
        ReleaseWaiting();
        ++at_;
    }

    void ParseBraces() {
        if (at_ + 1 == command_.size()) {
            FailAt(L"Invalid sendkeys command; opening { without content or closing } at position ");
            return;
        }
        // A missing brace ends the parsing, so that no stretch of the command is searched twice.
        const std::size_t end = command_.find(L'}', at_ + 1);
        if (end == std::wstring_view::npos) {
            FailAt(L"Invalid sendkeys command; opening { without closing } at position ");
            return;
        }
        const std::wstring_view content = command_.substr(at_ + 1, end - at_ - 1);
        const std::size_t blank = content.find(L' ');
        std::int16_t count = 1;
        if (blank != std::wstring_view::npos) {
            const std::wstring_view countText = content.substr(blank + 1);
            const auto number = RepetitionCount(countText);
            if (!number) {
                FailAt(L"Invalid sendkeys command; key repetitions '" + std::wstring(countText) +
                       L"' is invalid near position ");
                return;
            }
            count = *number;
        }
        const std::wstring_view name = content.substr(0, blank);
        if (const auto code = NamedKeyCode(name)) {
            AddKey({SendKeysStroke::Kind::NamedKey, *code, count});
        } else {
            AddKey({SendKeysStroke::Kind::KeyText, 0, count, name});
        }
        at_ = end + 1;
    }

    /// The text is to be digits, with a sign or without.
    static std::optional<std::int16_t> RepetitionCount(std::wstring_view text) noexcept {
        if (!IsNumeric(text) || text.find_first_of(L" .") != std::wstring_view::npos) {
            return std::nullopt;
        }
        // However negative: nothing is played.
        const auto number = text.starts_with(L'-') ? 0 : ParseNumber(text);
        return number ? Narrowed<std::int16_t>(*number) : std::nullopt;
    }

    void AddKey(const SendKeysStroke& stroke) {
        program_.strokes.push_back(stroke);
        ReleaseWaiting();
    }

    /// Releases what no open group holds.
    void ReleaseWaiting() {
        for (; held_.size() > groups_.back(); held_.pop_back()) {
            program_.strokes.push_back({SendKeysStroke::Kind::ModifierUp, held_.back()});
        }
    }

    void FailAt(std::wstring message) { program_.error = std::move(message) + std::to_wstring(at_ + 1); }

    std::wstring_view command_;
    std::size_t at_ = 0;
    std::vector<std::uint8_t> held_;     ///< modifiers in the order of pressing
    std::vector<std::size_t> groups_{0}; ///< how many of them stay when a key comes: at first none, then per group
    SendKeysProgram program_;
};

} // namespace

SendKeysProgram ParseSendKeys(std::wstring_view command) {
    return Parser(command).Parse();
}

std::optional<std::uint8_t> NamedKeyCode(std::wstring_view name) noexcept {
    const auto* const found = std::ranges::find(namedKeys, name, &NamedKey::name);
    return found == std::end(namedKeys) ? std::nullopt : std::optional(found->code);
}

} // namespace vextrel
