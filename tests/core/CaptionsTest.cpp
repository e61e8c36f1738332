#include "core/Captions.h"
#include "core/CaptionText.h"
#include "core/KeyText.h"
#include "core/SpokenName.h"

#include "Each.h"

#include <cwctype>
#include <map>
#include <set>

using namespace vextrel;

TEST(KeyTable, SlotsRunThroughTheRowsAndLieOnButtonsOfTheirOwn) {
    std::string buttons;
    std::size_t slot = 0;
    for (int row = 1; row <= 4; ++row, buttons += '\n') {
        for (int key = 1; key <= keysPerRow[static_cast<std::size_t>(row - 1)]; ++key) {
            EXPECT_EQ(SlotOf(row, key), slot++);
            buttons += std::to_string(StandardButtonOfSlot(SlotOf(row, key))) + ' ';
        }
    }
    EXPECT_EQ(buttons, "1 2 3 4 5 6 7 8 9 10 11 12 13 \n"
                       "17 18 19 20 21 22 23 24 25 26 27 28 65 \n"
                       "31 32 33 34 35 36 37 38 39 40 41 \n"
                       "43 44 45 46 47 48 49 50 51 52 \n");
}

TEST(Captions, ModifiersChooseTheCaptionOfACharacterKey) {
    const auto captions = [](Modifiers m) {
        return OfEach([m](const KeyCaption& key) { return CharacterKeyCaption(key, m); },
                      KeyCaption{L" a ", L" A", L"x"}, KeyCaption{L"7", L" & ", L""}, KeyCaption{L"b", L"B", L"&"},
                      KeyCaption{L"a&b", L"x", L""});
    };
    const std::pair<Modifiers, std::wstring> rows[] = {
        {{false, false, false}, L"a|7|b|a&b|"}, // Shift, Caps Lock, AltGr
        {{true, false, false}, L"A|&&|B|x|"},   {{false, true, false}, L"A|&&|B|x|"},
        {{true, true, false}, L"a|7|b|a&b|"},   {{false, false, true}, L"A|&&|&&|x|"},
        {{true, true, true}, L"A|&&|&&|x|"}};
    ExpectEach(rows, captions);
    const std::pair<const wchar_t*, bool> blanks[] = {
        {L" ", true}, {L"", true}, {L"space", true}, {L"&&", false}, {L"7", false}};
    ExpectEach(blanks, EntersBlank);
}

TEST(Captions, ARefreshReachesEveryShownKeyOnce) {
    std::map<int, std::wstring> shown;
    const ActionKeyCaptions actions{L" back ", L"", L"   ", L"enter", L" up"};
    for (const auto& [button, caption] : RefreshedCaptions({}, actions, {.shiftIsDown = true}, {})) {
        EXPECT_TRUE(IsKeyShown(button) && shown.emplace(button, caption).second) << button;
    }
    EXPECT_EQ(shown.size(), 54U);
    using namespace keys;
    EXPECT_EQ(OfEach([&](int button) { return shown[button]; }, backspace, tab, capsLock, enter, leftShift, rightShift,
                     space, 1, 2, 65),
              L"back|tab|cap|enter|up|up| |~|!|||");
}

TEST(Captions, ActionKeysAndSignsAreSpokenByNameLettersAndDigitsAsTheyAre) {
    using namespace keys;
    const auto unlit = [](int button) { return SpokenName(button, L"&&", false); };
    EXPECT_EQ(OfEach(unlit, backspace, tab, enter, capsLock, leftShift, rightShift, 3),
              L"Backspace|Tab|Enter|Caps Lock, off|Shift, off|Shift, off|Ampersand|");
    const auto lit = [](int button) { return SpokenName(button, L"", true); };
    EXPECT_EQ(OfEach(lit, capsLock, leftShift, rightShift, space, 3),
              L"Caps Lock, on|Shift, on|Shift, on|Space|Space|");
    EXPECT_STREQ(SpokenName(3, L"\u20AC", false), L"Euro sign");
    EXPECT_TRUE(SpokenName(3, L"\u00E9", false) == nullptr && SpokenName(3, L"..", false) == nullptr);
    std::set<std::wstring> names;
    for (wchar_t sign = L' '; sign < 0x7F; ++sign) {
        const wchar_t* name = SpokenName(1, CharacterKeyCaption({{sign}, {}, {}}, {}), false);
        const bool isPlain = std::iswalnum(static_cast<wint_t>(sign)) != 0;
        EXPECT_TRUE(isPlain ? name == nullptr : name != nullptr && names.insert(name).second) << static_cast<int>(sign);
    }
}

TEST(Captions, SingleCharactersHaveTheSizeAtWhichTheWidestFits) {
    KeyCaptions captions;
    captions.At(0) = {L" i ", L"W", L""};
    captions.At(1) = {L"&", L"two", L""};
    const std::wstring characters = SingleCharacters(captions, {L"bksp", L"\u21E5", L"cap", L"ent", L"shft"});
    EXPECT_EQ(characters, L"i&234567890-=qwertyuiop[]\\asdfghjkl;'zxcvbnm,./\u21E5 "
                          L"W@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:\"ZXCVBNM<>?\u21E5 ");
    const auto height = [](int key, int room) {
        return FittingTextHeight(WantedTextHeight(key, 96, true), room, [](int px) { return px; });
    };
    EXPECT_TRUE(height(60, 54) == 30 && height(24, 18) == 13 && height(14, 24) == 10 && height(14, 9) == 9);
}
