#include "keyboard/PhysicalInput.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

TEST(PhysicalInput, ShiftIsInEffectWhenExactlyOneOfCapsLockAndShiftIs) {
    for (unsigned bits = 0; bits < 16; ++bits) {
        const bool caps = (bits & 1) != 0;
        const bool anyShift = (bits & 14) != 0;
        EXPECT_EQ(FoldedShift({caps, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0}), caps ? !anyShift : anyShift)
            << bits;
    }
}

TEST(PhysicalInput, ForwardedCodesAreBackspaceThePrintableOnesAndOneMore) {
    for (int code = 0; code <= 0x200; ++code) {
        const bool isOutside = (code < 32 && code != 8) || code == 127 || code > 128;
        EXPECT_NE(IsForwardedCharacter(static_cast<wchar_t>(code)), isOutside) << code;
    }
}

TEST(PhysicalInput, ControlCharactersDoNotComeInFromOutside) {
    SecretText text;
    text.Assign(L"\ta\r\nb\x1F \x7F~\x80\x9F\xA0\x20AC\xD83D\xDE00");
    DropControlCharacters(text);
    EXPECT_EQ(text.View(), L"ab ~\xA0\x20AC\xD83D\xDE00");
    text.Assign(L"\r\n");
    DropControlCharacters(text);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(PhysicalInput, ThePasswordFollowsThePlainBox) {
    const struct {
        const char* name;
        const wchar_t* before;
        const wchar_t* after;
        std::size_t passwordLength;
        std::optional<Splice> splice;
    } rows[] = {
        {"no change", L"abc", L"abc", 3, std::nullopt},
        {"a paste in the middle", L"abc", L"aXYbc", 3, Splice{{1, 0}, L"XY"}},
        {"a paste over a selection", L"abcd", L"aXd", 4, Splice{{1, 2}, L"X"}},
        {"tabs and line breaks stay out", L"ab", L"a\t1\r\n2\n\r3b", 2, Splice{{1, 0}, L"123"}},
        {"only a line break", L"ab", L"a\r\nb", 2, Splice{{1, 0}, L""}},
        {"a cut", L"abcd", L"ad", 4, Splice{{1, 2}, L""}},
        {"a cut beyond the password", L"a\r\nbc", L"a\r\n", 3, Splice{{3, 0}, L""}},
        {"a cut across its end", L"a\r\nbc", L"a", 3, Splice{{1, 2}, L""}},
        {"a character behind its end", L"a\r\nb", L"a\r\nbX", 2, Splice{{2, 0}, L"X"}},
        {"all of it", L"abc", L"", 3, Splice{{0, 3}, L""}},
        {"repeated characters", L"aa", L"aaa", 2, Splice{{2, 0}, L"a"}},
        {"repeated characters, shorter", L"aaa", L"a", 3, Splice{{1, 2}, L""}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FollowPlainBox(row.before, row.after, row.passwordLength), row.splice) << row.name;
    }
}

} // namespace
} // namespace vextrel
