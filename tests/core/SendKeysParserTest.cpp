#include "core/SendKeysParser.h"

#include <gtest/gtest.h>

#include <string>

namespace vextrel {
namespace {

/// The strokes in one line: "S+" and "S-" for a modifier going down and up, "#13" for a named key, "'a'" for a key
/// text; "*3" where a key is not pressed once.
std::wstring Describe(const SendKeysProgram& program) {
    std::wstring line;
    for (const SendKeysStroke& stroke : program.strokes) {
        line += line.empty() ? L"" : L" ";
        const std::wstring modifier = stroke.virtualKey == virtualkeys::shift     ? L"S"
                                      : stroke.virtualKey == virtualkeys::control ? L"C"
                                      : stroke.virtualKey == virtualkeys::alt     ? L"A"
                                                                                  : L"?";
        switch (stroke.kind) {
        case SendKeysStroke::Kind::ModifierDown: line += modifier + L"+"; break;
        case SendKeysStroke::Kind::ModifierUp: line += modifier + L"-"; break;
        case SendKeysStroke::Kind::NamedKey: line += L"#" + std::to_wstring(stroke.virtualKey); break;
        case SendKeysStroke::Kind::KeyText: line += L"'" + std::wstring(stroke.text) + L"'"; break;
        }
        line += stroke.count == 1 ? L"" : L"*" + std::to_wstring(stroke.count);
    }
    return line;
}

void ExpectParsed(const std::wstring& command, const std::wstring& strokes, const std::wstring& error = {}) {
    const SendKeysProgram program = ParseSendKeys(command);
    EXPECT_EQ(Describe(program), strokes) << testing::PrintToString(command);
    EXPECT_EQ(program.error.value_or(L""), error) << testing::PrintToString(command);
}

TEST(SendKeysParser, CommandsBecomeStrokes) {
    const struct {
        const wchar_t *command, *strokes;
    } rows[] = {
        {L"", L""},
        {L"aB^}[ (", L"'a' 'B' '^' '}' '[' ' ' '('"},
        {L"{ENTER 3}{TAB}{F16}", L"#13*3 #9 #127"},
        {L"{~}{~ 2}{+}{%}{(}{)}{{}", L"#13 #13*2 '+' '%' '(' ')' '{'"},
        {L"{a 5}{enter}{ENTERx}", L"'a'*5 'enter' 'ENTERx'"},
        {L"{}}", L"'' '}'"},
        {L"{ 2}", L"''*2"},
        {L"{a +7}{a 007}{a 32767}{a 0}{a -1}", L"'a'*7 'a'*7 'a'*32767 'a'*0 'a'*0"},
        {L"{a -99999999999999999999}", L"'a'*0"},
        // one key
        {L"+ab", L"S+ 'a' S- 'b'"},
        {L"~%+{DEL}x", L"C+ A+ S+ #46 S- A- C- 'x'"},
        {L"~~a", L"C+ C+ 'a' C- C-"},
        {L"+{a 2}", L"S+ 'a'*2 S-"},
        // a group
        {L"+(ab)c", L"S+ 'a' 'b' S- 'c'"},
        {L"+(a~(b%(c)d)e)f", L"S+ 'a' C+ 'b' A+ 'c' A- 'd' C- 'e' S- 'f'"},
        {L"+(~ab)", L"S+ C+ 'a' C- 'b' S-"},
        {L"%()", L"A+ A-"},
        {L"+~(ab)c", L"S+ C+ 'a' 'b' C- S- 'c'"},
        // a modifier without a key
        {L"+", L"S+ S-"},
        {L"a~", L"'a' C+ C-"},
        {L"%+", L"A+ S+ S- A-"},
        {L"+(a~)", L"S+ 'a' C+ C- S-"},
    };
    for (const auto& row : rows) {
        ExpectParsed(row.command, row.strokes);
    }
    ExpectParsed({L'a', wchar_t{0xD83D}, wchar_t{0xDE00}, L'{', wchar_t{0xDC00}, L'}'},
                 {L'\'', L'a', L'\'', L' ', L'\'', wchar_t{0xD83D}, L'\'', L' ', L'\'', wchar_t{0xDE00}, L'\'', L' ',
                  L'\'', wchar_t{0xDC00}, L'\''});
}

TEST(SendKeysParser, ErrorsKeepWhatStoodBeforeAndReleaseWhatIsHeld) {
    const struct {
        const wchar_t *command, *strokes, *error;
    } rows[] = {
        {L"a)", L"'a'", L": unmatched ) at position 2"},
        {L"+(a))b", L"S+ 'a' S-", L": unmatched ) at position 5"},
        {L"(a)", L"'(' 'a'", L": unmatched ) at position 3"},
        {L"~)", L"C+ C-", L": unmatched ) at position 2"},
        {L"{", L"", L"; opening { without content or closing } at position 1"},
        {L"ab+{", L"'a' 'b' S+ S-", L"; opening { without content or closing } at position 4"},
        {L"{ENTER", L"", L"; opening { without closing } at position 1"},
        {L"{a}{ENTER", L"'a'", L"; opening { without closing } at position 4"},
        {L"+(a~(b%{c", L"S+ 'a' C+ 'b' A+ A- C- S-", L"; opening { without closing } at position 8"},
        {L"ab{c 1 2}d", L"'a' 'b'", L"; key repetitions '1 2' is invalid near position 3"},
        {L"+(a", L"S+ 'a' S-", L": more open brackets than close brackets."},
        {L"+(~(%", L"S+ C+ A+ A- C- S-", L": more open brackets than close brackets."},
    };
    for (const auto& row : rows) {
        ExpectParsed(row.command, row.strokes, std::wstring(L"Invalid sendkeys command") + row.error);
    }
    for (const std::wstring count : {L"x", L"", L" 3", L"3.0", L"-", L"32768", L"99999999999999999999"}) {
        ExpectParsed(L"{a " + count + L"}", L"",
                     L"Invalid sendkeys command; key repetitions '" + count + L"' is invalid near position 1");
    }
}

TEST(SendKeysParser, FortyOneNamesExactlyAsWritten) {
    const std::pair<const wchar_t*, int> names[] = {
        {L"BACKSPACE", 8}, {L"BS", 8},     {L"BKSP", 8},      {L"BREAK", 19},       {L"CAPSLOCK", 20},
        {L"DELETE", 46},   {L"DEL", 46},   {L"DOWN", 40},     {L"END", 35},         {L"ENTER", 13},
        {L"~", 13},        {L"ESC", 27},   {L"HELP", 47},     {L"HOME", 36},        {L"INS", 45},
        {L"INSERT", 45},   {L"LEFT", 37},  {L"NUMLOCK", 144}, {L"PGDN", 34},        {L"PGUP", 33},
        {L"PRTSC", 42},    {L"RIGHT", 39}, {L"TAB", 9},       {L"SCROLLLOCK", 145}, {L"UP", 38},
    };
    const auto expectName = [](const std::wstring& name, int code) {
        ExpectParsed(L"{" + name + L"}", L"#" + std::to_wstring(code));
        ExpectParsed(L"{" + name + L" 2}", L"#" + std::to_wstring(code) + L"*2");
    };
    for (const auto& [name, code] : names) {
        expectName(name, code);
    }
    for (int number = 1; number <= 16; ++number) {
        expectName(L"F" + std::to_wstring(number), 111 + number);
    }
    for (const wchar_t* other : {L"", L"Enter", L"F0", L"F17", L"F01", L" TAB", L"TAB ", L"PAUSE", L"^", L"+"}) {
        EXPECT_EQ(NamedKeyCode(other), std::nullopt);
    }
}

TEST(SendKeysParser, HugeCommandsEndInStrokesOrAnError) {
    // Searching anything twice would turn this test's seconds into days.
    constexpr std::size_t count = 1'000'000;
    const struct {
        const wchar_t* part;
        std::size_t strokes; // of each part
        bool fails;
    } rows[] = {{L"(((((", 5, false}, {L"{", 0, true}, {L"+", 2, false}, {L"+(", 2, true}, {L"{}", 1, false}};
    for (const auto& [part, strokes, fails] : rows) {
        std::wstring command;
        for (std::size_t i = 0; i < count; ++i) {
            command += part;
        }
        const SendKeysProgram program = ParseSendKeys(command);
        EXPECT_EQ(program.strokes.size(), strokes * count) << testing::PrintToString(std::wstring(part));
        EXPECT_EQ(program.error.has_value(), fails) << testing::PrintToString(std::wstring(part));
    }
}

} // namespace
} // namespace vextrel
