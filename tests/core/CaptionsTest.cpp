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

TEST(Captions, ModifiersChooseTheCaptionOfACharacterKey) {
    const KeyCaption plain{L" a ", L" A", L"x"};
    const KeyCaption ampersand{L"7", L" & ", L""};
    const KeyCaption altGrAmpersand{L"b", L"B", L"&"};
    const struct {
        Modifiers modifiers; // Shift, Caps Lock, AltGr
        const wchar_t* plain;
        const wchar_t* ampersand;
        const wchar_t* altGrAmpersand;
    } rows[] = {
        {{false, false, false}, L"a", L"7", L"b"},  {{true, false, false}, L"A", L"&&", L"B"},
        {{false, true, false}, L"A", L"&&", L"B"},  {{true, true, false}, L"a", L"7", L"b"},
        {{false, false, true}, L"A", L"&&", L"&&"}, {{true, false, true}, L"A", L"&&", L"&&"},
        {{false, true, true}, L"A", L"&&", L"&&"},  {{true, true, true}, L"A", L"&&", L"&&"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(CharacterKeyCaption(plain, row.modifiers), row.plain);
        EXPECT_EQ(CharacterKeyCaption(ampersand, row.modifiers), row.ampersand);
        EXPECT_EQ(CharacterKeyCaption(altGrAmpersand, row.modifiers), row.altGrAmpersand);
    }
    EXPECT_EQ(CharacterKeyCaption({L"   ", L"", L""}, {}), L"");
    EXPECT_EQ(CharacterKeyCaption({L"a&b", L"", L""}, {}), L"a&b") << "only a lone ampersand is doubled";
}

TEST(Captions, ARefreshReachesEveryShownKeyOnce) {
    KeySlotTable reversed;
    double next = 0.98;
    reversed.Rebuild(true, [&next] { return next -= 0.01; });
    const ActionKeyCaptions actions{L" back ", L"", L"   ", L"enter", L" up"};

    std::map<int, std::wstring> shown;
    for (const auto& [button, caption] : RefreshedCaptions({}, actions, {.shiftIsDown = true}, reversed)) {
        EXPECT_TRUE(IsKeyShown(button)) << button;
        EXPECT_TRUE(shown.emplace(button, caption).second) << button;
    }
    EXPECT_EQ(shown.size(), 54U);

    const std::pair<int, const wchar_t*> expected[] = {{keys::backspace, L"back"},
                                                       {keys::tab, L"tab"},
                                                       {keys::capsLock, L"cap"},
                                                       {keys::enter, L"enter"},
                                                       {keys::leftShift, L"up"},
                                                       {keys::rightShift, L"up"},
                                                       {keys::space, L" "},
                                                       {52, L"~"},
                                                       {1, L"?"}};
    for (const auto& [button, caption] : expected) {
        EXPECT_EQ(shown[button], caption) << button;
    }
}

TEST(Captions, AKeyEntersAndShowsWhatItsCaptionMeans) {
    const struct {
        const wchar_t* caption;
        const wchar_t* entered;
        const wchar_t* shown;
    } rows[] = {{L" ", L" ", L" "},  {L"", L" ", L""},   {L"space", L" ", L"space"},
                {L"&&", L"&", L"&"}, {L"7", L"7", L"7"}, {L"a&&", L"a&&", L"a&&"}};
    for (const auto& row : rows) {
        EXPECT_EQ(TextOfCaption(row.caption), row.entered);
        EXPECT_EQ(TextShownOnKey(row.caption), row.shown);
        EXPECT_EQ(EntersBlank(row.caption), row.entered == std::wstring(L" "));
    }
}

TEST(Captions, ActionKeysAndSignsAreSpokenByNameLettersAndDigitsAsTheyAre) {
    const struct {
        int button;
        bool lit;
        const wchar_t* caption;
        const wchar_t* name; // null: the caption itself
    } rows[] = {{keys::backspace, false, L"bksp", L"Backspace"},
                {keys::tab, false, L"&&", L"Tab"},
                {keys::enter, false, L"", L"Enter"},
                {keys::capsLock, false, L"cap", L"Caps Lock, off"},
                {keys::capsLock, true, L"cap", L"Caps Lock, on"},
                {keys::leftShift, true, L"shft", L"Shift, on"},
                {keys::rightShift, false, L"shft", L"Shift, off"},
                {keys::space, false, L" ", L"Space"},
                {3, false, L"", L"Space"},
                {3, false, L"&&", L"Ampersand"},
                {3, false, L".", L"Full stop"},
                {3, false, L"~", L"Tilde"},
                {3, true, L"\u20AC", L"Euro sign"},
                {3, false, L"..", nullptr},
                {3, false, L"\u00E9", nullptr}};
    for (const auto& row : rows) {
        EXPECT_STREQ(SpokenName(row.button, row.caption, row.lit), row.name) << row.button;
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
        SCOPED_TRACE(&row - rows);
        const auto fit = [&](bool single) {
            return FittingTextHeight(WantedTextHeight(row.keyHeight, row.dpi, single), row.room,
                                     [single](int height) { return height * (single ? 1 : 3); });
        };
        EXPECT_EQ(fit(true), row.character);
        EXPECT_EQ(fit(false), row.word);
    }
}

} // namespace
} // namespace vextrel
