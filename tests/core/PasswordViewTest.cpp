#include "core/PasswordView.h"

#include "HeapText.h"

#include "Throws.h"

#include <gtest/gtest.h>

#include <string>

namespace vextrel {
namespace {

TEST(PasswordView, ForwardedCodesAreBackspaceThePrintableOnesAndOneMore) {
    for (int code = 0; code <= 0x200; ++code) {
        const bool isOutside = (code < 32 && code != 8) || code == 127 || code > 128;
        EXPECT_NE(IsForwardedCharacter(static_cast<wchar_t>(code)), isOutside) << code;
    }
}

TEST(PasswordView, ControlCharactersDoNotComeInFromOutside) {
    HeapText text;
    text.Assign(L"\ta\r\nb\x1F \x7F~\x80\x9F\xA0\x20AC\xD83D\xDE00");
    DropControlCharacters(text);
    EXPECT_EQ(text.View(), L"ab ~\xA0\x20AC\xD83D\xDE00");
    text.Assign(L"\r\n");
    DropControlCharacters(text);
    EXPECT_EQ(text.Size(), 0U);
}

TEST(PasswordView, MaskingReadsThePlainBoxUpToTheFirstLineBreak) {
    const struct {
        const wchar_t* plain;
        const wchar_t* password;
    } rows[] = {
        {L"", L""},           {L"abc", L"abc"},       {L"abc\r\ndef", L"abc"},     {L"\r\nabc", L""},
        {L"a\tb", L"a\r\nb"}, {L"\t\t", L"\r\n\r\n"}, {L"a\tb\r\n\tc", L"a\r\nb"}, {L"a\nb\rc\n\rd", L"a\nb\rc\n\rd"},
    };
    for (const auto& row : rows) {
        HeapText password;
        password.Assign(L"something that was longer before");
        ReadPlainBox(row.plain, password);
        EXPECT_TRUE(password.View() == row.password) << testing::PrintToString(std::wstring(row.plain));
        EXPECT_EQ(password.Buffer()[password.Size()], L'\0');
    }
    HeapText password;
    password.Assign(L"kept");
    EXPECT_TRUE(
        Throws(ErrorNumber::Overflow, [&] { ReadPlainBox(std::wstring(SecretText::capacity, L'\t'), password); }));
    EXPECT_TRUE(password.View() == L"kept");
}

TEST(PasswordView, ABoxThatShowsSomethingElseIsRemarkedOn) {
    constexpr std::wstring_view notWhole = L"The box does not show the whole password";
    EXPECT_EQ(RemarkOnMaskedBox(3, 3), L"");
    EXPECT_EQ(RemarkOnMaskedBox(0, 3), notWhole);
    EXPECT_EQ(RemarkOnMaskedBox(4, 3), notWhole);
    const struct {
        const wchar_t* text;
        const wchar_t* password;
        std::wstring_view remark;
    } rows[] = {
        {L"abc", L"abc", L""},
        {L"", L"abc", notWhole},
        {L"abd", L"abc", notWhole},
        {L"a\tb", L"ab", notWhole},
        {L"ab\r\nc", L"abc", L"Only the first line is kept when masked"},
        {L"ab\r\nc", L"ab\r\nc", L"Only the first line is kept when masked"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(RemarkOnPlainBox(row.text, row.password), row.remark);
    }
}

// What a transfer carries and leaves the random walk compares with a model.
TEST(PasswordView, ASelectionBeyondSixteenBitsIsNoPlan) {
    EXPECT_EQ(PlanTransfer({0, 32766}, 4).carried, (TextRange{0, 4}));
    for (const BoxSelection outside : {BoxSelection{0, 32767}, BoxSelection{32767, 0}, BoxSelection{20000, 20000}}) {
        EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { static_cast<void>(PlanTransfer(outside, 4)); }));
    }
}

} // namespace
} // namespace vextrel
