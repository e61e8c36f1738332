#include "core/Captions.h"

#include "core/CaptionText.h"
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
        const wchar_t* caption;
        const wchar_t* off; // null: the caption itself
        const wchar_t* lit;
    } rows[] = {
        {keys::backspace, L"bksp", L"Backspace", L"Backspace"},
        {keys::tab, L"&&", L"Tab", L"Tab"},
        {keys::enter, L"", L"Enter", L"Enter"},
        {keys::capsLock, L"cap", L"Caps Lock, off", L"Caps Lock, on"},
        {keys::leftShift, L"shft", L"Shift, off", L"Shift, on"},
        {keys::rightShift, L"shft", L"Shift, off", L"Shift, on"},
        {keys::space, L" ", L"Space", L"Space"},
        {3, L"", L"Space", L"Space"},
        {3, L"&&", L"Ampersand", L"Ampersand"},
        {3, L".", L"Full stop", L"Full stop"},
        {3, L"\u20AC", L"Euro sign", L"Euro sign"},
        {3, L"..", nullptr, nullptr},
        {3, L"\u00E9", nullptr, nullptr},
    };
    for (const auto& row : rows) {
        EXPECT_STREQ(SpokenName(row.button, row.caption, false), row.off) << row.button;
        EXPECT_STREQ(SpokenName(row.button, row.caption, true), row.lit) << row.button;
    }
    // What is drawn in a way of its own, and no letter or digit, has a name, and no two have the same.
    std::set<std::wstring> names;
    std::size_t signs = 0;
    for (wchar_t character = L' '; character < 0x7F; ++character) {
        const bool plain = std::iswalnum(static_cast<wint_t>(character)) != 0;
        const wchar_t* name = SpokenName(1, CharacterKeyCaption({{character}, {}, {}}, {}), false);
        EXPECT_EQ(name == nullptr, plain) << static_cast<int>(character);
        signs += plain ? 0 : 1;
        names.insert(name != nullptr ? name : L"");
    }
    EXPECT_EQ(names.size(), signs + 1);
}

} // namespace
} // namespace vextrel
