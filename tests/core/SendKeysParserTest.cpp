#include "core/SendKeysParser.h"

#include "Each.h"

#include <sstream>

using namespace vextrel;

/// The strokes in one line: "S+" and "S-" for a modifier going down and up, "#13" for a named key, "'a'" for a key
/// text; "*3" where a key is not pressed once. Behind them the error.
static std::wstring Parsed(const std::wstring& command) {
    const SendKeysProgram program = ParseSendKeys(command);
    std::wstring line;
    for (const SendKeysStroke& stroke : program.strokes) {
        const std::wstring modifier(1, stroke.virtualKey < 19 ? L"SCA"[(stroke.virtualKey + 2) % 3] : L'?');
        switch (stroke.kind) {
        case SendKeysStroke::Kind::ModifierDown: line += modifier + L"+"; break;
        case SendKeysStroke::Kind::ModifierUp: line += modifier + L"-"; break;
        case SendKeysStroke::Kind::NamedKey: line += L"#" + std::to_wstring(stroke.virtualKey); break;
        case SendKeysStroke::Kind::KeyText: line += L"'" + std::wstring(stroke.text) + L"'"; break;
        }
        line += stroke.count == 1 ? L" " : L"*" + std::to_wstring(stroke.count) + L" ";
    }
    return line + program.error.value_or(L"");
}

TEST(SendKeysParser, CommandsBecomeStrokesAndErrorsReleaseWhatIsHeld) {
    const std::wstring invalid = L"Invalid sendkeys command";
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"aB^}[ ({}}{ 2}{\xDC00}\xD83D", L"'a' 'B' '^' '}' '[' ' ' '(' '' '}' ''*2 '\xDC00' '\xD83D' "},
        {L"{ENTER 3}{TAB}{F16}{F17}{enter}{~}{~ 2}", L"#13*3 #9 #127 'F17' 'enter' #13 #13*2 "},
        {L"{a 5}{a +7}{a 007}{a 32767}{a 0}{a -1}{a -9999999999999999999}",
         L"'a'*5 'a'*7 'a'*7 'a'*32767 'a'*0 'a'*0 'a'*0 "},
        {L"{+}{%}{(}{)}{{}+ab~%+{DEL}x", L"'+' '%' '(' ')' '{' S+ 'a' S- 'b' C+ A+ S+ #46 S- A- C- 'x' "},
        {L"~~a+{a 2}+(ab)c", L"C+ C+ 'a' C- C- S+ 'a'*2 S- S+ 'a' 'b' S- 'c' "},
        {L"+(a~(b%(c)d)e)f+(~ab)", L"S+ 'a' C+ 'b' A+ 'c' A- 'd' C- 'e' S- 'f' S+ C+ 'a' C- 'b' S- "},
        {L"%()+~(ab)c+(a~)%+", L"A+ A- S+ C+ 'a' 'b' C- S- 'c' S+ 'a' C+ C- S- A+ S+ S- A- "},
        {L"", L""},
        {L"+(a))b", L"S+ 'a' S- " + invalid + L": unmatched ) at position 5"},
        {L"~)", L"C+ C- " + invalid + L": unmatched ) at position 2"},
        {L"ab+{", L"'a' 'b' S+ S- " + invalid + L"; opening { without content or closing } at position 4"},
        {L"{a}{ENTER", L"'a' " + invalid + L"; opening { without closing } at position 4"},
        {L"+(a~(b%{c", L"S+ 'a' C+ 'b' A+ A- C- S- " + invalid + L"; opening { without closing } at position 8"},
        {L"ab{c 1 2}d", L"'a' 'b' " + invalid + L"; key repetitions '1 2' is invalid near position 3"},
        {L"+(~(%", L"S+ C+ A+ A- C- S- " + invalid + L": more open brackets than close brackets."}};
    ExpectEach(rows, Parsed);
    const std::wstring badCount = invalid + L"; key repetitions '";
    for (const std::wstring count : {L"x", L"", L" 3", L"3.0", L"-", L"32768", L"99999999999999999999"}) {
        EXPECT_EQ(Parsed(L"{a " + count + L"}"), badCount + count + L"' is invalid near position 1");
    }
}

TEST(SendKeysParser, FortyOneNamesExactlyAsWritten) {
    std::wistringstream names(L"BACKSPACE 8 BS 8 BKSP 8 BREAK 19 CAPSLOCK 20 DELETE 46 DEL 46 DOWN 40 END 35 ENTER 13 "
                              L"~ 13 ESC 27 HELP 47 HOME 36 INS 45 INSERT 45 LEFT 37 NUMLOCK 144 PGDN 34 PGUP 33 "
                              L"PRTSC 42 RIGHT 39 TAB 9 SCROLLLOCK 145 UP 38 F1 112 F2 113 F3 114 F4 115 F5 116 "
                              L"F6 117 F7 118 F8 119 F9 120 F10 121 F11 122 F12 123 F13 124 F14 125 F15 126 F16 127");
    int code = 0;
    for (std::wstring name; names >> name >> code;) {
        EXPECT_EQ(NamedKeyCode(name), code) << testing::PrintToString(name);
    }
    EXPECT_FALSE(NamedKeyCode(L"") || NamedKeyCode(L"Enter") || NamedKeyCode(L"F17") || NamedKeyCode(L"TAB "));
}
