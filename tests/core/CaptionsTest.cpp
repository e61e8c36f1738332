#include "core/Captions.h"

#include "core/CaptionText.h"
#include "core/KeyText.h"
#include "core/SpokenName.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <map>
#include <set>

namespace vextrel {
namespace {

TEST(KeyTable, SlotsRunThroughTheRowsAndLieOnButtonsOfTheirOwn) {
    const struct {
        int row, key, button;
    } rows[] = {{1, 1, 1},  {1, 13, 13}, {2, 1, 17}, {2, 12, 28}, {2, 13, 65},
                {3, 1, 31}, {3, 11, 41}, {4, 1, 43}, {4, 6, 48},  {4, 10, 52}};
    for (const auto& row : rows) {
        EXPECT_EQ(StandardButtonOfSlot(SlotOf(row.row, row.key)), row.button) << row.row << '/' << row.key;
    }
    std::set<int> buttons{keys::backspace, keys::tab,        keys::enter, keys::capsLock,
                          keys::leftShift, keys::rightShift, keys::space};
    std::size_t slot = 0;
    for (int row = 1; row <= 4; ++row) {
        for (int key = 1; key <= keysPerRow[static_cast<std::size_t>(row - 1)]; ++key) {
            EXPECT_EQ(SlotOf(row, key), slot);
            EXPECT_TRUE(buttons.insert(StandardButtonOfSlot(slot++)).second) << row << '/' << key;
        }
    }
    for (int button = -1; button <= keyButtonCount + 1; ++button) {
        EXPECT_EQ(IsKeyShown(button), buttons.contains(button)) << button;
    }
}

TEST(KeyTable, TheShiftCounterpartOfACharacterIsTheOtherOneOnItsKey) {
    for (const std::wstring_view pair :
         {L"`~", L"1!", L"7&", L"0)", L"=+", L"qQ", L"[{", L"\\|", L"'\"", L"zZ", L"/?", L"  ", L"\xE4\xE4"}) {
        EXPECT_EQ(ShiftCounterpart(pair[0]), pair[1]);
        EXPECT_EQ(ShiftCounterpart(pair[1]), pair[0]);
    }
}

TEST(SlotTable, ScrambledInputEntersWhatTheKeyAtTheTypedPositionShows) {
    const std::pair<wchar_t, const wchar_t*> rows[] = {{L'q', L"&"},    {L'Q', L"&"},    {L'`', L"<1>"},
                                                       {L'|', L"<65>"}, {L'?', L"<52>"}, {L':', L"<40>"},
                                                       {L' ', L" "},    {L'\x08', L""},  {L'\xE4', L""}};
    for (const auto& [typed, text] : rows) {
        EXPECT_EQ(ScrambledInput(
                      typed, [](int button) { return button == 17 ? L"&&" : L"<" + std::to_wstring(button) + L">"; }),
                  text);
    }
}

TEST(Captions, ModifiersChooseTheCaptionOfACharacterKey) {
    const struct {
        Modifiers modifiers; // Shift, Caps Lock, AltGr
        const wchar_t *plain, *ampersand, *altGrAmpersand;
    } rows[] = {{{false, false, false}, L"a", L"7", L"b"},  {{true, false, false}, L"A", L"&&", L"B"},
                {{false, true, false}, L"A", L"&&", L"B"},  {{true, true, false}, L"a", L"7", L"b"},
                {{false, false, true}, L"A", L"&&", L"&&"}, {{true, true, true}, L"A", L"&&", L"&&"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(CharacterKeyCaption({L" a ", L" A", L"x"}, row.modifiers), row.plain);
        EXPECT_EQ(CharacterKeyCaption({L"7", L" & ", L""}, row.modifiers), row.ampersand);
        EXPECT_EQ(CharacterKeyCaption({L"b", L"B", L"&"}, row.modifiers), row.altGrAmpersand);
    }
    EXPECT_EQ(CharacterKeyCaption({L"a&b", L"", L""}, {}), L"a&b") << "only a lone ampersand is doubled";
}

TEST(Captions, ARefreshReachesEveryShownKeyOnceInTheDrawnOrder) {
    KeySlotTable reversed; // but for the first key: 1000 stands before 2 as text, 189 behind 188.5, which is 188
    double next = 0.95;
    int draws = 0;
    reversed.Rebuild(true, [&] {
        return ++draws == 1 ? 0.999 : draws == 2 ? 0.188 : draws == 3 ? 0.1875 : next -= 0.01;
    });
    EXPECT_EQ(draws, characterKeyCount);
    std::map<int, std::wstring> shown;
    const ActionKeyCaptions actions{L" back ", L"", L"   ", L"enter", L" up"};
    for (const auto& [button, caption] : RefreshedCaptions({}, actions, {.shiftIsDown = true}, reversed)) {
        EXPECT_TRUE(IsKeyShown(button) && shown.emplace(button, caption).second) << button;
    }
    EXPECT_EQ(shown.size(), 54U);
    const std::pair<int, const wchar_t*> expected[] = {
        {keys::backspace, L"back"}, {keys::capsLock, L"cap"}, {keys::enter, L"enter"}, {keys::space, L" "}, {3, L"!"},
        {keys::rightShift, L"up"},  {keys::leftShift, L"up"}, {keys::tab, L"tab"},     {1, L"~"},           {2, L"@"}};
    for (const auto& [button, caption] : expected) {
        EXPECT_EQ(shown[button], caption) << button;
    }
}

TEST(Captions, AKeyEntersAndShowsWhatItsCaptionMeans) {
    const struct {
        const wchar_t *caption, *entered, *shown;
    } rows[] = {{L" ", L" ", L" "},  {L"", L" ", L""},   {L"space", L" ", L"space"},
                {L"&&", L"&", L"&"}, {L"7", L"7", L"7"}, {L"a&&", L"a&&", L"a&&"}};
    for (const auto& row : rows) {
        EXPECT_EQ(TextOfCaption(row.caption), row.entered);
        EXPECT_EQ(TextShownOnKey(row.caption), row.shown);
        EXPECT_EQ(EntersBlank(row.caption), row.entered == std::wstring(L" "));
    }
}

TEST(Captions, ActionKeysAndSignsAreSpokenByNameLettersAndDigitsAsTheyAre) {
    using namespace keys;
    const struct {
        int button;
        bool lit;
        const wchar_t *caption, *name; // "=": the caption itself
    } rows[] = {
        {capsLock, false, L"cap", L"Caps Lock, off"}, {3, true, L"\u20AC", L"Euro sign"}, {tab, false, L"&&", L"Tab"},
        {rightShift, false, L"shft", L"Shift, off"},  {3, false, L"&&", L"Ampersand"},    {3, false, L"\u00E9", L"="},
        {capsLock, true, L"cap", L"Caps Lock, on"},   {space, false, L" ", L"Space"},     {3, false, L"", L"Space"},
        {backspace, false, L"bksp", L"Backspace"},    {3, false, L".", L"Full stop"},     {3, false, L"..", L"="},
        {leftShift, true, L"shft", L"Shift, on"},     {enter, false, L"", L"Enter"}};
    for (const auto& row : rows) {
        const wchar_t* const name = SpokenName(row.button, row.caption, row.lit);
        EXPECT_STREQ(name != nullptr ? name : L"=", row.name) << row.button;
    }
    std::set<std::wstring> names;
    for (wchar_t sign = L' '; sign < 0x7F; ++sign) {
        const wchar_t* name = SpokenName(1, CharacterKeyCaption({{sign}, {}, {}}, {}), false);
        const bool isPlain = std::iswalnum(static_cast<wint_t>(sign)) != 0;
        EXPECT_EQ(name == nullptr, isPlain) << static_cast<int>(sign);
        EXPECT_TRUE(isPlain || names.insert(name).second) << "a second " << static_cast<int>(sign);
    }
}

TEST(Captions, SingleCharactersHaveTheSizeAtWhichTheWidestFits) {
    KeyCaptions captions;
    captions.At(0) = {L" i ", L"W", L""};
    captions.At(1) = {L"&", L"two", L""};
    const std::wstring characters = SingleCharacters(captions, {L"bksp", L"\u21E5", L"cap", L"ent", L"shft"});
    for (const wchar_t c : {L'i', L'W', L'&', L'\u21E5', L'q', L'Q'}) {
        EXPECT_NE(characters.find(c), std::wstring::npos) << static_cast<int>(c);
    }
    EXPECT_EQ(characters.size(), 2U * (characterKeyCount + 2) - 1) << "the space bar counts, words do not";
    const struct {
        int keyHeight, dpi, room;
        int character, word; // of the height's own width each, the word of three
    } rows[] = {{24, 96, 18, 13, 6},   {14, 96, 10, 10, 6},  {14, 96, 24, 10, 8},    {60, 96, 54, 30, 18},
                {48, 192, 36, 26, 12}, {28, 192, 20, 20, 6}, {60, 192, 200, 30, 24}, {0, 96, 0, 6, 6}};
    for (const auto& row : rows) {
        for (const bool single : {true, false}) {
            EXPECT_EQ(FittingTextHeight(WantedTextHeight(row.keyHeight, row.dpi, single), row.room,
                                        [single](int height) { return height * (single ? 1 : 3); }),
                      single ? row.character : row.word)
                << &row - rows;
        }
    }
}

} // namespace
} // namespace vextrel
