#include "PasswordSession.h"

#include <gtest/gtest.h>

#include <new>
#include <random>

namespace {

constexpr wchar_t sought = L'\u2713'; // stands in no text but the one that is wiped
std::ptrdiff_t foundInFreedMemory = 0;

} // namespace

// Those of the whole program, to look into what is freed. Inlined, one half of a pair would seem to lack the other.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const memory = std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t size) noexcept {
    const auto* const characters = static_cast<const wchar_t*>(memory);
    foundInFreedMemory += std::count(characters, characters + size / sizeof(wchar_t), sought);
    std::free(memory);
}

namespace vextrel::session {
namespace {

constexpr std::size_t full = SecretText::capacity;

bool IsZeroBehindItsEnd(const SecretText& text) {
    return std::all_of(text.CString() + text.Size(), text.CString() + full + 1, [](wchar_t c) { return c == 0; });
}

TEST(PasswordWalk, TenThousandStepsAgreeWithThePlainModelAndLeaveNothingBehindTheEnd) {
    std::mt19937 random(20240229);
    const auto pick = [&random](std::size_t below) { return static_cast<std::size_t>(random()) % below; };
    Comparison both;
    for (int step = 0; step < 10000; ++step) {
        Action action = ChooseAction(both.Now(), pick);
        if (both.Now().box.size() > 40) { // kept short enough for edits to meet
            action.kind = Action::Kind::Carry;
            action.takesAway = true;
        }
        ASSERT_TRUE(both.Agrees(action)) << "step " << step << ", kind " << static_cast<int>(action.kind) << ", button "
                                         << action.button << ", now " << testing::PrintToString(both.Now().box);
        ASSERT_TRUE(step % 50 != 0 || IsZeroBehindItsEnd(both.Secret())) << "step " << step;
    }
}

TEST(KeyPress, ModifiersChangeAsTheKeysSay) {
    using M = Modifiers; // shift, caps, AltGr, latched, physical
    const struct {
        const char* name;
        int button;
        M before, after;
    } rows[] = {{"over the physical", keys::rightShift, {true, false, false, false, true}, {false, false, false, true}},
                {"character, Shift held", 31, {true, false, false, true, true}, {false, false, false, true, true}},
                {"character, never latched", 31, {true, true, true, false}, {true, true, true, false}},
                {"inert key", 54, {true, false, false, true}, {true, false, false, true}},
                {"leftover", keys::messageLeftover, {true, false, false, true}, {true, false, false, true}}};
    for (const auto& row : rows) {
        const KeyPressOutcome outcome = PressKey(row.button, L"x", BoxState{}, row.before);
        EXPECT_EQ(outcome.modifiers, row.after) << row.name;
        EXPECT_EQ(outcome.showLeftover, row.button == keys::messageLeftover) << row.name;
    }
}

TEST(KeyPress, SixteenBitSumsOverflowBeforeAnythingChanges) {
    constexpr auto masked = PasswordBoxView::Masked, plain = PasswordBoxView::Plain;
    const struct {
        const char* name;
        const wchar_t* caption;
        BoxState box;
        bool overflows;
    } rows[] = {{"last caret that has a next one", L"x", {plain, {32766, 0}, full - 1, L'a', 5}, false},
                {"caret at the last position", L"x", {plain, {32767, 0}, full, L'a', 5}, true},
                {"selection to the last position", L"x", {plain, {32000, 767}, full, L'a', 5}, true},
                {"selection to the one before", L"x", {plain, {32000, 766}, full, L'a', 5}, false},
                {"new caret", L"xy", {masked, {32766, 0}, full - 1, L'*', full - 1}, true},
                {"new length of the box", L"x", {plain, {0, 0}, full, 0, 5}, true},
                {"new length of the password", L"x", {masked, {0, 0}, 5, 0, full}, true},
                {"full, but one is replaced", L"x", {masked, {0, 1}, full, 0, full}, false}};
    const auto overflows = [](int button, const wchar_t* caption, const BoxState& box) {
        return Throws(ErrorNumber::Overflow, [&] { static_cast<void>(PressKey(button, caption, box, {})); });
    };
    for (const auto& row : rows) {
        EXPECT_EQ(overflows(31, row.caption, row.box), row.overflows) << row.name;
    }
    for (int button = 1; button <= keyButtonCount; ++button) {
        EXPECT_TRUE(overflows(button, L"x", {plain, {32767, 0}, full, L'a', full})) << button;
    }
    EXPECT_EQ(PlanTransfer({0, 32766}, 4).carried, (TextRange{0, 4}));
    for (const BoxSelection outside : {BoxSelection{0, 32767}, BoxSelection{32767, 0}, BoxSelection{20000, 20000}}) {
        EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { static_cast<void>(PlanTransfer(outside, 4)); }));
    }
}

TEST(SecretText, NothingIsLeftBehindItsEnd) {
    const struct {
        TextRange range;
        const wchar_t *piece, *result;
    } pieces[] = {{{1, 3}, L"x", L"sxet"},
                  {{1, 1}, L"xyz", L"sxyzcret"},
                  {{4, 2}, L"", L"secr"},
                  {{4, ~std::size_t{0}}, L"u", L"secru"},
                  {{~std::size_t{0}, 2}, L"s", L"secrets"}};
    HeapText text;
    const auto expect = [&text](const wchar_t* content) {
        EXPECT_TRUE(text.View() == content && IsZeroBehindItsEnd(text))
            << testing::PrintToString(std::wstring(text.View()));
    };
    for (const auto& [range, piece, result] : pieces) {
        text.Assign(L"secret");
        text.Replace(range, piece);
        expect(result);
    }
    text.Assign(L"secret");
    text.Assign(text.View({2, 3}));
    expect(L"cre");
    text.SetSize(2);
    expect(L"cr");
    std::fill_n(text.Buffer(), 500, L'#'); // a system call that wrote more than it said
    text.SetSize(1);
    expect(L"#");
    text.Assign(L"\ta\r\nb\x1F \x7F~\x80\x9F\xA0\x20AC\xD83D\xDE00");
    DropControlCharacters(text);
    expect(L"ab ~\xA0\x20AC\xD83D\xDE00");
    text.Clear();
    expect(L"");
    foundInFreedMemory = 0; // whoever shares the program frees what he likes
    // What the plain box let in without its tabs and line breaks becomes a piece of the password.
    EXPECT_EQ(FollowPlainBox(L"", L"a\tpiece of\r\na \u2713\u2713\u2713\u2713", 0)->text,
              L"apiece ofa \u2713\u2713\u2713\u2713");
    EXPECT_EQ(foundInFreedMemory, 0);
}

TEST(SecretText, WhatDoesNotFitChangesNothing) {
    const std::wstring whole(full, L'x');
    HeapText text;
    text.Assign(whole);
    EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { text.Assign(whole + L"y"); }));
    EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { text.Replace({5, 1}, L"yy"); }));
    EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { ReadPlainBox(std::wstring(full, L'\t'), text); }));
    EXPECT_TRUE(text.View() == whole && text.View({full, 1}).empty() && text.View({full + 9, 1}).empty());
    text.Replace({0, 1}, L"y");
    EXPECT_TRUE(text.View() == L"y" + whole.substr(1));
}

TEST(PasswordView, ForwardedCodesAreBackspaceThePrintableOnesAndOneMore) {
    for (int code = 0; code <= 0x200; ++code) {
        const bool isOutside = (code < 32 && code != 8) || code == 127 || code > 128;
        EXPECT_NE(IsForwardedCharacter(static_cast<wchar_t>(code)), isOutside) << code;
    }
}

TEST(PasswordView, MaskingReadsThePlainBoxUpToTheFirstLineBreak) {
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"", L""},           {L"abc", L"abc"},       {L"abc\r\ndef", L"abc"},     {L"\r\nabc", L""},
        {L"a\tb", L"a\r\nb"}, {L"\t\t", L"\r\n\r\n"}, {L"a\tb\r\n\tc", L"a\r\nb"}, {L"a\nb\rc\n\rd", L"a\nb\rc\n\rd"}};
    for (const auto& [plain, read] : rows) {
        HeapText password;
        password.Assign(L"something that was longer before");
        ReadPlainBox(plain, password);
        EXPECT_TRUE(password.View() == read && IsZeroBehindItsEnd(password))
            << testing::PrintToString(std::wstring(password.View()));
    }
}

TEST(PasswordView, ABoxThatShowsSomethingElseIsRemarkedOn) {
    constexpr std::wstring_view notWhole = L"The box does not show the whole password";
    constexpr std::wstring_view firstLine = L"Only the first line is kept when masked";
    EXPECT_EQ(RemarkOnMaskedBox(3, 3), L"");
    EXPECT_EQ(RemarkOnMaskedBox(4, 3), notWhole);
    const std::tuple<const wchar_t*, const wchar_t*, std::wstring_view> rows[] = {
        {L"abc", L"abc", L""},      {L"", L"abc", notWhole},         {L"abd", L"abc", notWhole},
        {L"a\tb", L"ab", notWhole}, {L"ab\r\nc", L"abc", firstLine}, {L"ab\r\nc", L"ab\r\nc", firstLine}};
    for (const auto& [text, password, remark] : rows) {
        EXPECT_EQ(RemarkOnPlainBox(text, password), remark);
    }
}

} // namespace
} // namespace vextrel::session
