#include "core/CaptureRules.h"

#include "core/KeyTable.h"

#include <gtest/gtest.h>

#include <map>

namespace vextrel {
namespace {

TEST(CaptureRules, EachSlotHasTheKeyThatCarriesItsEnglishCharacter) {
    // Letters and digits have their capital's code; the rest are the OEM keys of a US keyboard.
    const std::map<wchar_t, int> oemKeys = {{L'`', 192}, {L'-', 189},  {L'=', 187}, {L'[', 219},
                                            {L']', 221}, {L'\\', 220}, {L';', 186}, {L'\'', 222},
                                            {L',', 188}, {L'.', 190},  {L'/', 191}};
    const KeyCaptions english;
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        const KeyCaption& key = english.At(slot);
        const wchar_t lower = key.lower.at(0);
        const wchar_t capital = lower >= L'a' && lower <= L'z' ? key.upper.at(0) : lower;
        const int code = oemKeys.contains(lower) ? oemKeys.at(lower) : static_cast<int>(capital);
        EXPECT_EQ(CaptureKeyCodes().at(slot), code) << slot;
    }
}

TEST(CaptureRules, OneModifierInvertsWhatAPressGives) {
    for (unsigned bits = 0; bits < 16; ++bits) {
        const HeldModifiers held{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
        const bool anyShift = bits > 1;
        const CaptureOrder expected{.plainGivesLower = held.capsLock == anyShift, .focusTwice = bits == 0};
        EXPECT_EQ(ChooseCaptureOrder(held), expected) << bits;
    }
}

} // namespace
} // namespace vextrel
