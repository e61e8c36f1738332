#include "core/GateRules.h"
#include "core/Absence.h"

#include "Each.h"

using namespace vextrel;
using enum GatedWindow;

TEST(GateRules, WhoeverSendsOrPostsGetsNamesAndNoSecretAndGivesNoOrder) {
    // Who answers when it is sent: form, control, box of a secret; whether it is taken when it is posted.
    const std::tuple<std::uint32_t, const char*, std::string, bool> rows[] = {
        {0x112, "system command", "F", true}, {0xA1, "frame button", "", true}, {0x2B1, "session", "F", true},
        {0x2CC, "tablet query", "FCB", true}, {0x201, "button down", "", true}, {0x111, "command", "", false},
        {0x87, "dialog code", "FCB", false},  {0x2A3, "mouse leave", "", true}, {0x0F, "paint", "FCB", true},
        {0x0E, "text length", "FC", false},   {0x0D, "get text", "FC", false},  {0x4E, "notify", "", false},
        {0x3D, "get object", "FCB", false},   {0x1A, "settings", "FCB", true},  {0xD0, "word break", "", false},
        {0xB0, "get selection", "", false},   {0x200, "mouse move", "", true},  {0x317, "print", "", false},
        {0x16, "end session", "F", false},    {0x4A, "copy data", "", false},   {0x10, "close", "F", true},
        {0x80, "set icon", "F", false},       {0x113, "timer", "", true},       {0x301, "copy", "", false},
        {0x304, "undo", "", false},           {0x300, "cut", "", false},        {0x2E0, "dpi changed", "", false},
        {0x7B, "context menu", "", false},    {0x102, "character", "", true},   {0x0C, "set text", "", false},
        {0xF5, "button click", "", false},    {0x100, "key down", "", true}};
    const auto answers = [](std::uint32_t message, std::uintptr_t wParam) {
        return std::string(AnswersSent(Form, message, wParam) ? "F" : "") +
               (AnswersSent(Control, message, wParam) ? "C" : "") +
               (AnswersSent(SecretBox, message, wParam) ? "B" : "");
    };
    for (const auto& [message, name, whoAnswers, isTaken] : rows) {
        EXPECT_EQ(answers(message, 0), whoAnswers) << name;
        EXPECT_EQ(TakesPosted(message, 0, 0), isTaken) << name;
    }
    for (std::uint32_t message = 0; message <= 0xFFFF; ++message) {
        ASSERT_TRUE(AnswersSent(Form, message, 0) || !IsTakenLater(message)) << std::hex << message;
        const bool isOfPrograms = message >= 0x400; // each has its own meaning for them
        ASSERT_FALSE(isOfPrograms && (!answers(message, 0).empty() || TakesPosted(message, 0, 0)))
            << std::hex << message;
    }
    EXPECT_FALSE(AnswersSent(Form, 0x0F, 1) || TakesPosted(0x0F, 1, 0)) << "painting, onto what?";
    EXPECT_TRUE(TakesPosted(0x113, 1, 0));
    EXPECT_FALSE(TakesPosted(0x113, 1, 1) || TakesPosted(0x118, 1, 1)) << "a timer's procedure";
}

TEST(GateRules, InputCountsWhenSomebodyMadeIt) {
    using enum InputSource;
    const auto kind = [](std::uint32_t message) {
        return std::wstring(IsInput(message) ? L"input" : L"") + (IsKeyDown(message) ? L" down" : L"") +
               (IsCharacter(message) ? L"character" : L"") + (CountsAsInput(message, System) ? L" move" : L"");
    };
    // Keys down and up, system key; buttons beside the content and in it, wheel; moves, in the content and beside it.
    EXPECT_EQ(OfEach(kind, 0x100U, 0x101U, 0x104U, 0xA1U, 0x201U, 0x20AU, 0x200U, 0xA0U),
              L"input down|input|input down|input|input|input|input move|input move|");
    EXPECT_EQ(OfEach(kind, 0x102U, 0x106U, 0x113U, 0xBFFFU, 0xC001U), L"character|character||||");
    EXPECT_TRUE(CountsAsInput(0x100, Hardware) && CountsAsInput(0x100, Injected));
    EXPECT_TRUE(CountsAsInput(0x100, InputSource::Touch) && !CountsAsInput(0x200, Nobody));
    EXPECT_TRUE(IsOfTouch(0xFF515780U) && !IsOfTouch(0x51570080U) && !IsOfTouch(0xFF515880U));
}

TEST(Absence, BeginsWhenTheSessionIsLockedOrLeftOrWithTheLastOfSoManyMinutesWithoutInput) {
    // The system's numbers: left (console, remote), logged off, ended; locked.
    for (const unsigned left : {2U, 4U, 6U, 11U}) {
        EXPECT_EQ(ClearedBySession(left), L"Cleared: the session was left") << left;
    }
    EXPECT_EQ(OfEach(ClearedBySession, 7U, 0U, 1U, 3U, 5U, 8U, 12U), L"Cleared: the session was locked|||||||");
    EXPECT_TRUE(IsAbsent(1, 160000, 100000) && !IsAbsent(1, 159999, 100000) && IsAbsent(32767, 1966020000, 0));
    EXPECT_FALSE(IsAbsent(0, 99999999, 0)) << "never";
    EXPECT_FALSE(IsAbsent(1, 100000, 160000)) << "the clock was read before the input came";
    EXPECT_EQ(OfEach(ClearedByAbsence, 1, 5),
              L"Cleared after 1 minute without input|Cleared after 5 minutes without input|");
}
