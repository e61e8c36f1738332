#include "transfer/PasswordView.h"

#include "Throws.h"

#include <gtest/gtest.h>

#include <string>

namespace vextrel {
namespace {

TEST(PasswordView, MaskingReadsThePlainBoxUpToTheFirstLineBreak) {
    const struct {
        const wchar_t* plain;
        const wchar_t* password;
    } rows[] = {
        {L"", L""},           {L"abc", L"abc"},       {L"abc\r\ndef", L"abc"},     {L"\r\nabc", L""},
        {L"a\tb", L"a\r\nb"}, {L"\t\t", L"\r\n\r\n"}, {L"a\tb\r\n\tc", L"a\r\nb"}, {L"a\nb\rc\n\rd", L"a\nb\rc\n\rd"},
    };
    for (const auto& row : rows) {
        SecretText password;
        password.Assign(L"something that was longer before");
        ReadPlainBox(row.plain, password);
        EXPECT_TRUE(password.View() == row.password) << testing::PrintToString(std::wstring(row.plain));
        EXPECT_EQ(password.Buffer()[password.Size()], L'\0');
    }
    SecretText password;
    password.Assign(L"kept");
    EXPECT_TRUE(
        Throws(ErrorNumber::Overflow, [&] { ReadPlainBox(std::wstring(SecretText::capacity, L'\t'), password); }));
    EXPECT_TRUE(password.View() == L"kept");
}

TEST(PasswordView, ATransferCarriesTheSelectionOrElseEverything) {
    const struct {
        const char* name;
        BoxSelection selection;
        const wchar_t* password;
        const wchar_t* carried;
        const wchar_t* remaining;
    } rows[] = {
        {"second and third", {1, 2}, L"abcd", L"bc", L"ad"},
        {"nothing selected", {2, 0}, L"abcd", L"abcd", L""},
        {"nothing at all", {0, 0}, L"", L"", L""},
        {"cut at the end", {2, 9}, L"abcd", L"cd", L"ab"},
        {"behind the end", {7, 2}, L"abcd", L"", L"abcd"},
        {"the last sum that fits", {0, 32766}, L"abcd", L"abcd", L""},
    };
    for (const auto& row : rows) {
        SecretText password;
        password.Assign(row.password);
        const TransferPlan plan = PlanTransfer(row.selection, password.Size());
        EXPECT_TRUE(password.View(plan.carried) == row.carried) << row.name;
        EXPECT_EQ(plan.savedCaret, row.selection.start) << row.name;
        CutCarried(plan, password);
        EXPECT_TRUE(password.View() == row.remaining) << row.name;
    }
    for (const BoxSelection outside : {BoxSelection{0, 32767}, BoxSelection{32767, 0}, BoxSelection{20000, 20000}}) {
        EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { static_cast<void>(PlanTransfer(outside, 4)); }));
    }
}

TEST(PasswordView, OnlyWhatWasHandedOverMayGo) {
    EXPECT_TRUE(TakesAway(TransferEnd::HandedOver, false));
    EXPECT_FALSE(TakesAway(TransferEnd::HandedOver, true));
    EXPECT_FALSE(TakesAway(TransferEnd::NothingHandedOver, false));
}

} // namespace
} // namespace vextrel
