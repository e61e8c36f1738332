#include "PasswordSession.h"

#include "Each.h"

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

/// So many steps in a box that is kept short enough for edits to meet, or full.
void Walk(int steps, bool isFull) {
    std::mt19937 random(20240229);
    const auto pick = [&](std::size_t below) {
        const bool isPlace = below > 100; // in a full box: near its start or its end
        const std::size_t number = random() % (isPlace ? 4 : below);
        return isPlace && random() % 2 == 0 ? below - 1 - number : number;
    };
    Comparison both;
    for (int step = 0; step < steps; ++step) {
        const std::size_t size = both.model.s.box.size();
        Action action = ChooseAction(both.model.s, pick);
        if (isFull && size < full - 20) {
            action = {.kind = Action::Kind::Paste, .text = std::wstring(full - 3 - size, L'a')};
        } else if (!isFull && size > 40) {
            action = {.kind = Action::Kind::Carry, .takesAway = true};
        }
        ASSERT_TRUE(both.Agrees(action)) << "step " << step << ", kind " << static_cast<int>(action.kind) << ", button "
                                         << action.button << ", in a text of " << size;
        ASSERT_TRUE(step % 50 != 0 || IsZeroBehindItsEnd(both.ruled.password)) << "step " << step;
    }
}

TEST(PasswordWalk, AgreesWithThePlainModelAndLeavesNothingBehindTheEnd) {
    Walk(10000, false);
}

TEST(PasswordWalk, WhatSixteenBitsCannotHoldIsRefusedAndChangesNothing) {
    Walk(600, true);
}

TEST(KeyPress, ModifiersThatNoSessionHasChangeAsTheKeysSay) {
    using M = Modifiers; // shift, caps, AltGr, latched, physical
    const auto after = [](int button, M before) { return PressKey(button, L"x", {}, before).modifiers; };
    EXPECT_EQ(after(keys::rightShift, {true, false, false, false, true}), (M{false, false, false, true, false}));
    EXPECT_EQ(after(31, {true, false, false, true, true}), (M{false, false, false, true, true})) << "Shift held";
    EXPECT_EQ(after(31, {true, true, true, false}), (M{true, true, true, false})) << "never latched";
    EXPECT_TRUE(PressKey(keys::messageLeftover, L"x", {}, {}).showLeftover && !PressKey(54, L"x", {}, {}).showLeftover);
}

TEST(SecretText, NothingIsLeftBehindItsEndNorInFreedMemory) {
    HeapText text;
    const auto expect = [&text](std::wstring_view expected) {
        EXPECT_TRUE(text.View() == expected && IsZeroBehindItsEnd(text))
            << testing::PrintToString(std::wstring(text.View()));
    };
    text.Assign(L"secrets");
    text.Replace({4, 3}, L"t");
    expect(L"secrt");
    text.Assign(text.View({2, 9}));
    expect(L"crt");
    text.SetSize(2);
    expect(L"cr");
    std::fill_n(text.Buffer(), 500, L'#'); // a system call that wrote more than it said
    text.SetSize(1);
    expect(L"#");
    text.Assign(L"\ta\r\nb\x1F \x7F~\x80\x9F\xA0\x20AC\xD83D\xDE00");
    DropControlCharacters(text);
    expect(L"ab ~\xA0\x20AC\xD83D\xDE00");
    const std::wstring whole(full, L'x');
    text.Assign(whole);
    EXPECT_THROW(text.Assign(whole + L"y"), Error);
    EXPECT_THROW(text.Replace({5, 1}, L"yy"), Error);
    EXPECT_THROW(ReadPlainBox(std::wstring(full, L'\t'), text), Error);
    EXPECT_TRUE(text.View() == whole && text.View({full + 9, 1}).empty());
    text.Clear();
    expect(L"");
    foundInFreedMemory = 0; // whoever shares the program frees what he likes
    // What the plain box let in without its tabs and line breaks becomes a piece of the password.
    EXPECT_EQ(FollowPlainBox(L"", L"a\tpiece of\r\na \u2713\u2713\u2713\u2713", 0)->text,
              L"apiece ofa \u2713\u2713\u2713\u2713");
    EXPECT_EQ(foundInFreedMemory, 0);
}

TEST(PasswordView, ForwardedCodesAreBackspaceThePrintableOnesAndOneMore) {
    for (int code = 0; code <= 0x200; ++code) {
        const bool isOutside = (code < 32 && code != 8) || code == 127 || code > 128;
        EXPECT_NE(IsForwardedCharacter(static_cast<wchar_t>(code)), isOutside) << code;
    }
}

TEST(PasswordView, ABoxThatShowsSomethingElseIsRemarkedOn) {
    constexpr const wchar_t *notWhole = L"The box does not show the whole password",
                            *oneLine = L"Only the first line is kept when masked";
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"abc", L""}, {L"", notWhole}, {L"abd", notWhole}, {L"ab\tc", notWhole}, {L"ab\r\nc", oneLine}};
    ExpectEach(rows, [](const wchar_t* text) { return RemarkOnPlainBox(text, L"abc"); });
    EXPECT_TRUE(RemarkOnMaskedBox(3, 3).empty() && RemarkOnMaskedBox(4, 3) == notWhole);
}

} // namespace
} // namespace vextrel::session
