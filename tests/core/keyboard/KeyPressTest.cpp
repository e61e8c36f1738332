#include "keyboard/KeyPress.h"

#include "Throws.h"
#include "keyboard/KeyTable.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

constexpr auto masked = PasswordBoxView::Masked;
constexpr auto plain = PasswordBoxView::Plain;
constexpr int letterKey = 31;
constexpr int hiddenKey = 14;

struct Row {
    const char* name;
    int button; ///< 0 stands for the physical Delete key
    const wchar_t* caption;
    PasswordBoxView view;
    std::wstring box;
    std::wstring password;
    BoxSelection selection;
    const wchar_t* boxAfter;
    const wchar_t* passwordAfter;
    std::int16_t caretAfter;
};

std::wstring Applied(std::wstring text, const std::optional<Splice>& splice) {
    return splice ? text.replace(splice->range.start, splice->range.count, splice->text) : text;
}

BoxState StateOf(const Row& row) {
    const auto caret = static_cast<std::size_t>(row.selection.start);
    return {.view = row.view,
            .selection = row.selection,
            .length = row.box.size(),
            .characterBeforeCaret = caret > 0 ? row.box[caret - 1] : L'\0',
            .passwordLength = row.password.size()};
}

TEST(KeyPress, AKeyEditsBoxAndPassword) {
    const Row rows[] = {
        {"character", letterKey, L"x", plain, L"ab", L"ab", {1, 0}, L"axb", L"axb", 2},
        {"character, masked", letterKey, L"x", masked, L"**", L"ab", {1, 0}, L"***", L"axb", 2},
        {"character over a selection", letterKey, L"x", plain, L"abcd", L"abcd", {1, 2}, L"axd", L"axd", 2},
        {"the same, masked", letterKey, L"x", masked, L"****", L"abcd", {1, 2}, L"***", L"axd", 2},
        {"behind the password's end", letterKey, L"x", plain, L"a\r\nb", L"ab", {4, 0}, L"a\r\nbx", L"abx", 5},
        {"selection across the end", letterKey, L"x", plain, L"a\r\nb", L"ab", {1, 3}, L"ax", L"ax", 2},
        {"hidden spare key", hiddenKey, L"q", plain, L"", L"", {0, 0}, L"q", L"q", 1},
        {"empty caption", letterKey, L"", plain, L"", L"", {0, 0}, L" ", L" ", 1},
        {"caption \"space\"", letterKey, L"space", plain, L"", L"", {0, 0}, L" ", L" ", 1},
        {"caption \"Space\"", letterKey, L"Space", masked, L"", L"", {0, 0}, L"*****", L"Space", 5},
        {"space bar", keys::space, L" ", plain, L"a", L"a", {1, 0}, L"a ", L"a ", 2},
        {"ampersand", letterKey, L"&&", masked, L"", L"", {0, 0}, L"*", L"&", 1},
        {"two characters", letterKey, L"ij", masked, L"**", L"ab", {1, 0}, L"****", L"aijb", 3},
        {"two units", letterKey, L"\xD83D\xDE00", masked, L"", L"", {0, 0}, L"**", L"\xD83D\xDE00", 2},

        {"Tab", keys::tab, L"tab", plain, L"abc", L"abc", {1, 1}, L"a\tc", L"abc", 2},
        {"Tab, masked", keys::tab, L"tab", masked, L"***", L"abc", {1, 1}, L"***", L"abc", -1},
        {"Enter", keys::enter, L"ent", plain, L"abc", L"abc", {1, 1}, L"a\r\nc", L"abc", 3},
        {"Enter, masked", keys::enter, L"ent", masked, L"***", L"abc", {1, 1}, L"***", L"abc", -1},

        {"Backspace at the start", keys::backspace, L"", plain, L"ab", L"ab", {0, 0}, L"ab", L"ab", 0},
        {"Backspace", keys::backspace, L"", plain, L"abc", L"abc", {2, 0}, L"ac", L"ac", 1},
        {"Backspace to the start", keys::backspace, L"", masked, L"**", L"ab", {1, 0}, L"*", L"b", 0},
        {"Backspace, password empty", keys::backspace, L"", plain, L"\t", L"", {1, 0}, L"", L"", 0},
        {"Backspace beyond the password", keys::backspace, L"", plain, L"a\r\nb", L"ab", {4, 0}, L"a\r\n", L"a", 3},
        {"Backspace behind a line break", keys::backspace, L"", plain, L"a\r\nb", L"ab", {3, 0}, L"ab", L"ab", 1},
        {"Backspace behind a lone line feed", keys::backspace, L"", plain, L"\nb", L"b", {1, 0}, L"b", L"b", 0},
        {"Backspace over a selection", keys::backspace, L"", plain, L"abcd", L"abcd", {2, 2}, L"ab", L"abcd", 1},
        {"... masked", keys::backspace, L"", masked, L"****", L"abcd", {2, 2}, L"**", L"abcd", 1},
        {"... from position 1", keys::backspace, L"", plain, L"abcd", L"abcd", {1, 2}, L"ad", L"abcd", 0},
        {"... from position 0", keys::backspace, L"", plain, L"abcd", L"abcd", {0, 2}, L"cd", L"abcd", 0},
        {"... behind a line break", keys::backspace, L"", plain, L"\r\nab", L"ab", {2, 2}, L"\r\n", L"ab", 1},

        {"Delete", 0, L"", masked, L"***", L"abc", {1, 0}, L"**", L"ac", 1},
        {"Delete at the end", 0, L"", masked, L"***", L"abc", {3, 0}, L"***", L"abc", 3},
        {"Delete over a selection", 0, L"", masked, L"****", L"abcd", {1, 2}, L"**", L"ad", 1},
        {"Delete at the box's end, password longer", 0, L"", masked, L"**", L"abcd", {2, 0}, L"**", L"abcd", 2},
        {"Delete in an empty box", 0, L"", masked, L"", L"", {0, 0}, L"", L"", 0},

        {"Caps Lock", keys::capsLock, L"cap", plain, L"ab", L"ab", {1, 1}, L"ab", L"ab", -1},
        {"Shift", keys::leftShift, L"shft", plain, L"ab", L"ab", {1, 1}, L"ab", L"ab", -1},
        {"inert key", 55, L"x", plain, L"ab", L"ab", {1, 1}, L"ab", L"ab", -1},
        {"leftover", keys::messageLeftover, L"x", plain, L"ab", L"ab", {1, 1}, L"ab", L"ab", -1},
    };
    for (const Row& row : rows) {
        std::optional<TextEdit> edit;
        if (row.button == 0) {
            edit = EraseForwards(StateOf(row));
        } else {
            edit = PressKey(row.button, row.caption, StateOf(row), {}).edit;
        }
        SecretText password;
        password.Assign(row.password);
        if (edit) {
            ApplyToPassword(*edit, password);
        }
        EXPECT_TRUE(Applied(row.box, edit ? edit->box : std::nullopt) == row.boxAfter) << row.name;
        EXPECT_TRUE(password.View() == row.passwordAfter) << row.name;
        // A key that leaves caret and selection alone returns no edit: -1.
        EXPECT_EQ(edit ? edit->caret : -1, row.caretAfter) << row.name;
    }
}

TEST(KeyPress, ModifiersChangeAsTheKeysSay) {
    using M = PressModifiers; // shift, caps, latched
    const struct {
        const char* name;
        int button;
        M before;
        M after;
        bool refresh;
        bool leftover = false;
    } rows[] = {
        {"first Shift", keys::leftShift, {false, false, false}, {true, false, true}, true},
        {"second Shift", keys::rightShift, {true, false, true}, {false, false, true}, true},
        {"Shift over the physical one", keys::rightShift, {true, false, false}, {false, false, true}, true},
        {"Caps Lock on", keys::capsLock, {true, false, true}, {true, true, true}, true},
        {"Caps Lock off", keys::capsLock, {false, true, false}, {false, false, false}, true},
        {"character, never latched", letterKey, {true, false, false}, {true, false, false}, false},
        {"character releases Shift", letterKey, {true, true, true}, {false, true, true}, true},
        {"space releases Shift", keys::space, {true, false, true}, {false, false, true}, true},
        {"character, Shift up", letterKey, {false, true, true}, {false, true, true}, false},
        {"Backspace keeps Shift", keys::backspace, {true, false, true}, {true, false, true}, false},
        {"Tab keeps Shift", keys::tab, {true, false, true}, {true, false, true}, false},
        {"Enter keeps Shift", keys::enter, {true, false, true}, {true, false, true}, false},
        {"inert key", 54, {true, false, true}, {true, false, true}, false},
        {"leftover", keys::messageLeftover, {true, false, true}, {true, false, true}, false, true},
    };
    for (const auto& row : rows) {
        const KeyPressOutcome outcome = PressKey(row.button, L"x", BoxState{}, row.before);
        EXPECT_EQ(outcome.modifiers, row.after) << row.name;
        EXPECT_EQ(outcome.refreshCaptions, row.refresh) << row.name;
        EXPECT_EQ(outcome.showLeftover, row.leftover) << row.name;
    }
}

TEST(KeyPress, SixteenBitSumsOverflowBeforeAnythingChanges) {
    constexpr std::size_t full = SecretText::capacity;
    const struct {
        const char* name;
        const wchar_t* caption;
        BoxState box;
        bool overflows;
    } rows[] = {
        {"last caret that has a next one", L"x", {plain, {32766, 0}, full - 1, L'a', 5}, false},
        {"caret at the last position", L"x", {plain, {32767, 0}, full, L'a', 5}, true},
        {"selection to the last position", L"x", {plain, {32000, 767}, full, L'a', 5}, true},
        {"selection to the one before", L"x", {plain, {32000, 766}, full, L'a', 5}, false},
        {"new caret", L"xy", {masked, {32766, 0}, full - 1, L'*', full - 1}, true},
        {"new length of the box", L"x", {plain, {0, 0}, full, 0, 5}, true},
        {"new length of the password", L"x", {masked, {0, 0}, 5, 0, full}, true},
        {"full, but one is replaced", L"x", {masked, {0, 1}, full, 0, full}, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(
            Throws(ErrorNumber::Overflow, [&] { static_cast<void>(PressKey(letterKey, row.caption, row.box, {})); }),
            row.overflows)
            << row.name;
    }
    for (int button = 1; button <= keyButtonCount; ++button) {
        EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] {
            static_cast<void>(PressKey(button, L"x", {plain, {32767, 0}, full, L'a', full}, {}));
        })) << button;
    }
}

} // namespace
} // namespace vextrel
