#include "core/Captions.h"
#include "core/CaptionText.h"
#include "core/KeyText.h"
#include "core/SlotTable.h"
#include "core/SpokenName.h"

#include "Each.h"

#include <cwctype>
#include <map>
#include <set>

using namespace vextrel;

TEST(KeyTable, SlotsRunThroughTheRowsAndLieOnButtonsOfTheirOwn) {
    // Where a row of keys or a run of buttons begins and ends: row, key, slot, button.
    const std::tuple<int, int, std::size_t, int> rows[] = {{1, 1, 0, 1},    {1, 13, 12, 13}, {2, 1, 13, 17},
                                                           {2, 12, 24, 28}, {2, 13, 25, 65}, {3, 1, 26, 31},
                                                           {3, 11, 36, 41}, {4, 1, 37, 43},  {4, 10, 46, 52}};
    for (const auto& [row, key, slot, button] : rows) {
        EXPECT_TRUE(SlotOf(row, key) == slot && StandardButtonOfSlot(slot) == button) << slot;
    }
}

TEST(SlotTable, ShufflingSortsTheDrawnNumbersAsTextAndLosesNoButton) {
    const struct {
        double ofLast;
        double ofOthers;
        std::size_t slotOfLast;
    } drawn[] = {{0.999, 0.001, 0},    // 1000 before 2
                 {0.9999, 0.0, 46},    // 1001 after 1
                 {0.1875, 0.18775, 0}, // 188.5 is 188, before 189
                 {0.0625, 0.062, 46}}; // 63.5 is 64, after 63
    for (const auto& numbers : drawn) {
        KeySlotTable table;
        int draws = 0;
        table.Rebuild(true, [&] { return ++draws == characterKeyCount ? numbers.ofLast : numbers.ofOthers; });
        EXPECT_EQ(table.ButtonOfSlot(numbers.slotOfLast), StandardButtonOfSlot(46)) << numbers.ofLast;
        std::set<int> buttons;
        for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
            buttons.insert(table.ButtonOfSlot(slot));
        }
        EXPECT_EQ(buttons.size(), 47U) << numbers.ofLast;
        table.Rebuild(false, {});
        EXPECT_EQ(table.ButtonOfSlot(46), StandardButtonOfSlot(46));
    }
}

TEST(SlotTable, ScrambledInputEntersWhatTheKeyAtTheTypedPositionShows) {
    const auto entered = [](wchar_t typed) {
        return ScrambledInput(typed,
                              [](int button) { return button == 17 ? L"&&" : L"<" + std::to_wstring(button) + L">"; });
    };
    EXPECT_EQ(OfEach(entered, L'q', L'`', L'|', L'?', L':', L' ', L'\b', L'\u00E4'), L"&|<1>|<65>|<52>|<40>| |||");
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
    EXPECT_TRUE(EntersBlank(L" ") && EntersBlank(L"") && EntersBlank(L"space") && !EntersBlank(L"&&"));
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
