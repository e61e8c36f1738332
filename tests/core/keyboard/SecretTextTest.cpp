#include "keyboard/SecretText.h"

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
        const char* name;
        void (*change)(SecretText&);
        const wchar_t* result;
    } rows[] = {
        {"a shorter piece",
         [](SecretText& t) {
             t.Replace({1, 3}, L"x");
         },
         L"sxet"},
        {"a longer piece",
         [](SecretText& t) {
             t.Replace({1, 1}, L"xyz");
         },
         L"sxyzcret"},
        {"a piece at the end",
         [](SecretText& t) {
             t.Replace({4, 2}, L"");
         },
         L"secr"},
        {"more than there is",
         [](SecretText& t) {
             t.Replace({4, ~std::size_t{0}}, L"u");
         },
         L"secru"},
        {"behind the end",
         [](SecretText& t) {
             t.Replace({~std::size_t{0}, 2}, L"s");
         },
         L"secrets"},
        {"a shorter text", [](SecretText& t) { t.Assign(L"ab"); }, L"ab"},
        {"a part of its own",
         [](SecretText& t) {
             t.Assign(t.View({2, 3}));
         },
         L"cre"},
        {"nothing", [](SecretText& t) { t.Clear(); }, L""},
        {"a size", [](SecretText& t) { t.SetSize(3); }, L"sec"},
        {"a system call that wrote more than it said",
         [](SecretText& t) {
             std::fill_n(t.Buffer(), 500, L'#');
             t.SetSize(1);
         },
         L"#"},
    };
    for (const auto& row : rows) {
        SecretText text;
        text.Assign(L"secret");
        row.change(text);
        EXPECT_TRUE(text.View() == row.result) << row.name;
        EXPECT_TRUE(IsZeroBehindItsEnd(text)) << row.name;
    }
}

TEST(SecretText, APartIsCutAtTheEnd) {
    SecretText text;
    text.Assign(L"abc");
    EXPECT_TRUE(text.View({1, 5}) == L"bc");
    EXPECT_TRUE(text.View({3, 1}).empty());
    EXPECT_TRUE(text.View({9, 1}).empty());
}

TEST(SecretText, WhatDoesNotFitChangesNothing) {
    const std::wstring full(SecretText::capacity, L'x');
    SecretText text;
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
