#include "core/PhysicalInput.h"

#include "core/KeyTable.h"

#include "HeapText.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

TEST(PhysicalInput, ShiftIsInEffectWhenExactlyOneOfCapsLockAndShiftIs) {
    for (unsigned bits = 0; bits < 4; ++bits) {
        EXPECT_EQ(FoldedShift({(bits & 1) != 0, (bits & 2) != 0}), bits == 1 || bits == 2) << bits;
    }
}

TEST(PhysicalInput, ForwardedCodesAreBackspaceThePrintableOnesAndOneMore) {
    for (int code = 0; code <= 0x200; ++code) {
        const bool isOutside = (code < 32 && code != 8) || code == 127 || code > 128;
        EXPECT_NE(IsForwardedCharacter(static_cast<wchar_t>(code)), isOutside) << code;
    }
}

TEST(PhysicalInput, ControlCharactersDoNotComeInFromOutside) {
    HeapText text;
    text.Assign(L"\ta\r\nb\x1F \x7F~\x80\x9F\xA0\x20AC\xD83D\xDE00");
    DropControlCharacters(text);
    EXPECT_EQ(text.View(), L"ab ~\xA0\x20AC\xD83D\xDE00");
    text.Assign(L"\r\n");
    DropControlCharacters(text);
    EXPECT_TRUE(text.IsEmpty());
}

} // namespace
} // namespace vextrel
