#include "core/SecretText.h"

#include "HeapText.h"

#include "Throws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace vextrel {
namespace {

bool IsZeroBehindItsEnd(SecretText& text) {
    wchar_t* const end = text.Buffer() + SecretText::capacity + 1;
    return std::all_of(text.Buffer() + text.Size(), end, [](wchar_t c) { return c == 0; });
}

TEST(SecretText, NothingIsLeftBehindItsEnd) {
    const struct {
        TextRange range;
        const wchar_t* piece;
        const wchar_t* result;
    } pieces[] = {{{1, 3}, L"x", L"sxet"},
                  {{1, 1}, L"xyz", L"sxyzcret"},
                  {{4, 2}, L"", L"secr"},
                  {{4, ~std::size_t{0}}, L"u", L"secru"},
                  {{~std::size_t{0}, 2}, L"s", L"secrets"}};
    for (const auto& [range, piece, result] : pieces) {
        HeapText text;
        text.Assign(L"secret");
        text.Replace(range, piece);
        EXPECT_TRUE(text.View() == result && IsZeroBehindItsEnd(text)) << testing::PrintToString(std::wstring(result));
    }
    HeapText text;
    const auto holds = [&text](const wchar_t* content) { return text.View() == content && IsZeroBehindItsEnd(text); };
    text.Assign(L"secret");
    text.Assign(text.View({2, 3}));
    EXPECT_TRUE(holds(L"cre"));
    text.SetSize(2);
    EXPECT_TRUE(holds(L"cr"));
    std::fill_n(text.Buffer(), 500, L'#'); // a system call that wrote more than it said
    text.SetSize(1);
    EXPECT_TRUE(holds(L"#"));
    text.Clear();
    EXPECT_TRUE(holds(L""));
}

TEST(SecretText, APartIsCutAtTheEnd) {
    HeapText text;
    text.Assign(L"abc");
    EXPECT_TRUE(text.View({1, 5}) == L"bc");
    EXPECT_TRUE(text.View({3, 1}).empty());
    EXPECT_TRUE(text.View({9, 1}).empty());
}

TEST(SecretText, WhatDoesNotFitChangesNothing) {
    const std::wstring full(SecretText::capacity, L'x');
    HeapText text;
    text.Assign(full);
    EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { text.Assign(full + L"y"); }));
    EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { text.Replace({0, 0}, L"y"); }));
    EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { text.Replace({5, 1}, L"yy"); }));
    EXPECT_TRUE(text.View() == full);
    text.Replace({0, 1}, L"y");
    EXPECT_TRUE(text.View() == L"y" + full.substr(1));
    EXPECT_TRUE(IsZeroBehindItsEnd(text));
}

} // namespace
} // namespace vextrel
