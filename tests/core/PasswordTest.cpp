#include "Each.h"
#include "RuledSession.h"

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
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size);
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

/// So many steps of both, in a box that is kept short enough for edits to meet, or full. What 16 bits cannot hold is
/// refused, and then nothing changes.
void Walk(int steps, bool isFull) {
    using enum Action::Kind;
    std::mt19937 random(20240229);
    const auto pick = [&](std::size_t below) {
        const bool isPlace = below > 100; // in a full box: near its start or its end
        const std::size_t number = random() % (isPlace ? 4 : below);
        return isPlace && random() % 2 == 0 ? below - 1 - number : number;
    };
    Model model;
    Ruled ruled;
    model.s.modifiers = ruled.s.modifiers = {.shiftIsDown = true, .shiftIsPhysical = true}; // from a physical key
    for (int step = 0; step < steps; ++step) {
        const Session& s = model.s;
        Action action = ChooseAction(s, pick);
        if (isFull && s.box.size() < full - 20) {
            action = {.kind = Paste, .text = std::wstring(full - 3 - s.box.size(), L'a')};
        } else if (!isFull && s.box.size() > 40) {
            action = {.kind = Carry, .takesAway = true};
        }
        SCOPED_TRACE(testing::Message() << "step " << step << ", kind " << static_cast<int>(action.kind) << ", button "
                                        << action.button << ", in a text of " << s.box.size());
        Model next = model;
        const std::wstring carried = Play(next, action);
        // For these, caret and selection are added up in 16 bits, whatever is then done with them.
        const bool adds = action.kind == Press || action.kind == Carry ||
                          (action.kind == Paste && s.masked && !PastedText(action.text).empty());
        const bool refused =
            std::max(next.s.box.size(), next.s.password.size()) > full || (adds && s.caret + s.selected + 1 > full);
        try {
            ASSERT_TRUE(Play(ruled, action) == carried && !refused);
            model = std::move(next);
        } catch (const Error& error) {
            ASSERT_TRUE(refused && error.Number() == 6);
        }
        ruled.s.password = ruled.password.View();
        ASSERT_TRUE(ruled.s == model.s && (step % 50 != 0 || IsZeroBehindItsEnd(ruled.password)));
    }
}

TEST(PasswordWalk, AgreesWithThePlainModelAndLeavesNothingBehindTheEnd) {
    Walk(10000, false);
    Walk(600, true);
}

TEST(SecretText, NothingIsLeftBehindItsEndNorInFreedMemory) {
    SecretText text(heapPages);
    const auto expect = [&text](std::wstring_view expected) {
        EXPECT_TRUE(text.View() == expected && IsZeroBehindItsEnd(text))
            << testing::PrintToString(std::wstring(text.View()));
    };
    text.Assign(L"secrets");
    text.Replace({4, 3}, L"t");
    expect(L"secrt");
    text.Assign(text.View({2, 9}));
    expect(L"crt");
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
    EXPECT_EQ(FollowPlainBox(L"", L"a\tpiece\r\na \u2713\u2713\u2713", 0)->text, L"apiecea \u2713\u2713\u2713");
    EXPECT_EQ(foundInFreedMemory, 0);
}

TEST(PasswordView, ForwardedCodesAreBackspaceThePrintableOnesAndOneMore) {
    for (int code = 0; code <= 0x200; ++code) {
        const bool isOutside = (code < 32 && code != 8) || code == 127 || code > 128;
        EXPECT_NE(IsForwardedCharacter(static_cast<wchar_t>(code)), isOutside) << code;
    }
}

TEST(PasswordView, ABoxThatShowsSomethingElseIsRemarkedOn) {
    constexpr const wchar_t* notWhole = L"The box does not show the whole password";
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"abc", L""}, {L"abd", notWhole}, {L"ab\r\nc", L"Only the first line is kept when masked"}};
    ExpectEach(rows, [](const wchar_t* text) { return RemarkOnPlainBox(text, L"abc"); });
    EXPECT_TRUE(RemarkOnMaskedBox(3, 3).empty() && RemarkOnMaskedBox(4, 3) == notWhole);
}

} // namespace
} // namespace vextrel::session
