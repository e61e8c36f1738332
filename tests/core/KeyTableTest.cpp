#include "core/KeyTable.h"

#include "Throws.h"

#include <gtest/gtest.h>

#include <set>

namespace vextrel {
namespace {

TEST(KeyTable, SlotsRunThroughTheRowsAndLieOnButtonsOfTheirOwn) {
    const struct {
        int row;
        int key;
        int button;
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

TEST(KeyTable, ThereAreFortyNineSlots) {
    KeyCaptions captions;
    EXPECT_EQ(captions.At(48), KeyCaption{});
    EXPECT_TRUE(Throws(ErrorNumber{9}, [&] { captions.At(49).lower = L"x"; }));
}

TEST(KeyTable, TheEnglishLayoutSetsBothCasesAndNothingElse) {
    KeyCaptions captions;
    EXPECT_EQ(captions.At(SlotOf(2, 13)), (KeyCaption{L"\\", L"|", L""}));
    EXPECT_EQ(captions.At(SlotOf(3, 11)), (KeyCaption{L"'", L"\"", L""}));
    for (std::size_t slot = 0; slot < KeyCaptions::slotCount; ++slot) {
        captions.At(slot) = {L"l", L"u", L"g"};
    }
    LoadEnglishLayout(captions);
    EXPECT_EQ(captions.At(0), (KeyCaption{L"`", L"~", L"g"}));
    EXPECT_EQ(captions.At(46), (KeyCaption{L"/", L"?", L"g"}));
    EXPECT_EQ(captions.At(47), (KeyCaption{L"l", L"u", L"g"}));
}

TEST(KeyTable, TheShiftCounterpartOfACharacterIsTheOtherOneOnItsKey) {
    for (const std::wstring_view pair :
         {L"`~", L"1!", L"7&", L"0)", L"=+", L"qQ", L"[{", L"\\|", L"'\"", L"zZ", L"/?"}) {
        EXPECT_EQ(ShiftCounterpart(pair[0]), pair[1]);
    }
    int paired = 0;
    for (unsigned code = 0; code <= 0xFFFF; ++code) {
        const auto character = static_cast<wchar_t>(code);
        EXPECT_EQ(ShiftCounterpart(ShiftCounterpart(character)), character) << code;
        paired += ShiftCounterpart(character) != character ? 1 : 0;
    }
    EXPECT_EQ(paired, 2 * characterKeyCount) << "the blank, for one, is its own counterpart";
}

TEST(KeyTable, ShiftIsInEffectWhenExactlyOneOfCapsLockAndShiftIs) {
    for (unsigned bits = 0; bits < 4; ++bits) {
        EXPECT_EQ(FoldedShift({(bits & 1) != 0, (bits & 2) != 0}), bits == 1 || bits == 2) << bits;
    }
}

} // namespace
} // namespace vextrel
