#include "core/GateRules.h"
#include "core/Absence.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

using enum GatedWindow;

constexpr std::uint32_t paint = 0x0F, firstOfPrograms = 0x400, lastOfAll = 0xFFFF;

TEST(GateRules, WhoeverSendsOrPostsGetsNamesAndNoSecretAndGivesNoOrder) {
    const struct {
        std::uint32_t message;
        const char* name;
        std::string answersSent; // form, control, box of a secret
        bool takesPosted;
    } rows[] = {{0x211, "enter menu loop", "", false}, {0x2E0, "dpi changed", "", false}, {0x111, "command", "", false},
                {0x112, "system command", "F", true},  {0xA1, "frame button", "", true},  {0x2B1, "session", "F", true},
                {0x2CC, "tablet query", "FCB", true},  {0x201, "button down", "", true},  {0x02, "destroy", "", false},
                {0x87, "dialog code", "FCB", false},   {0x2A3, "mouse leave", "", true},  {0x0F, "paint", "FCB", true},
                {0x0E, "text length", "FC", false},    {0x0D, "get text", "FC", false},   {0x114, "scroll", "", false},
                {0x3D, "get object", "FCB", false},    {0x1A, "settings", "FCB", true},   {0x4E, "notify", "", false},
                {0x82, "destroy frame", "", false},    {0xD0, "word break", "", false},   {0x81, "create", "", false},
                {0xB0, "get selection", "", false},    {0x200, "mouse move", "", true},   {0x317, "print", "", false},
                {0x16, "end session", "F", false},     {0x4A, "copy data", "", false},    {0x10, "close", "F", true},
                {0x28, "next control", "", false},     {0x80, "set icon", "F", false},    {0x113, "timer", "", true},
                {0x7B, "context menu", "", false},     {0x102, "character", "", true},    {0x301, "copy", "", false},
                {0xF2, "button state", "", false},     {0x0C, "set text", "", false},     {0x304, "undo", "", false},
                {0xF5, "button click", "", false},     {0x30, "set font", "", false},     {0x300, "cut", "", false},
                {0x11F, "menu select", "", false},     {0x100, "key down", "", true}};
    const auto answers = [](std::uint32_t message, std::uintptr_t wParam) {
        return std::string(AnswersSent(Form, message, wParam) ? "F" : "") +
               (AnswersSent(Control, message, wParam) ? "C" : "") +
               (AnswersSent(SecretBox, message, wParam) ? "B" : "");
    };
    for (const auto& row : rows) {
        EXPECT_EQ(answers(row.message, 0), row.answersSent) << row.name;
        EXPECT_EQ(TakesPosted(row.message, 0, 0), row.takesPosted) << row.name;
    }
    for (std::uint32_t message = firstOfPrograms; message <= lastOfAll; ++message) {
        ASSERT_TRUE(answers(message, 0).empty() && !TakesPosted(message, 0, 0)) << std::hex << message;
    }
    for (std::uint32_t message = 0; message <= lastOfAll; ++message) {
        ASSERT_TRUE(AnswersSent(Form, message, 0) || !IsTakenLater(message)) << std::hex << message;
    }
    EXPECT_TRUE(answers(paint, 1).empty() && !TakesPosted(paint, 1, 0)) << "onto what?";
    EXPECT_TRUE(TakesPosted(0x113, 1, 0));
    EXPECT_FALSE(TakesPosted(0x113, 1, 1) || TakesPosted(0x118, 1, 1)) << "a timer's procedure";
}

TEST(GateRules, InputCountsWhenSomebodyMadeIt) {
    using enum InputSource;
    // Keys down and up, system key, button beside the content and in it, wheel; moves, in the content and beside it.
    for (const std::uint32_t message : {0x100U, 0x101U, 0x104U, 0xA1U, 0x201U, 0x20AU, 0x200U, 0xA0U}) {
        SCOPED_TRACE(testing::Message() << std::hex << message);
        EXPECT_TRUE(IsInput(message) && !IsCharacter(message));
        EXPECT_TRUE(CountsAsInput(message, Hardware) && CountsAsInput(message, Injected));
        EXPECT_TRUE(CountsAsInput(message, InputSource::Touch) && !CountsAsInput(message, Nobody));
        EXPECT_EQ(CountsAsInput(message, System), message == 0x200 || message == 0xA0);
        EXPECT_EQ(IsKeyDown(message), message == 0x100 || message == 0x104);
    }
    for (const std::uint32_t message : {0x102U, 0x106U}) {
        EXPECT_TRUE(IsCharacter(message) && !IsInput(message)) << std::hex << message;
    }
    EXPECT_FALSE(IsInput(0x113) || IsInput(0xBFFF) || IsInput(0xC001));
    // Of pens and fingers; of nobody in particular.
    EXPECT_TRUE(IsOfTouch(0xFF515700U) && IsOfTouch(0xFF515780U) && IsOfTouch(0xFF5157FFU));
    EXPECT_FALSE(IsOfTouch(0) || IsOfTouch(1) || IsOfTouch(0x51570080U) || IsOfTouch(0xFF515880U));
}

TEST(Absence, BeginsWhenTheSessionIsLockedOrLeftOrWithTheLastOfSoManyMinutesWithoutInput) {
    // The system's numbers: left (console, remote), logged off, ended; locked.
    for (std::uintptr_t change = 0; change <= 12; ++change) {
        const bool isLeft = change == 2 || change == 4 || change == 6 || change == 11;
        const wchar_t* const reason = change == 7 ? L"Cleared: the session was locked" : L"";
        EXPECT_EQ(std::wstring(ClearedBySession(change)), isLeft ? L"Cleared: the session was left" : reason) << change;
    }
    const struct {
        int minutes;
        std::uint64_t nowMs, lastInputMs;
        bool expected;
    } rows[] = {{1, 160000, 100000, true},    {1, 159999, 100000, false},
                {0, 99999999, 0, false},      {1, 100000, 160000, false}, // the clock was read before the input came
                {32767, 1966020000, 0, true}, {32767, 1966019999, 0, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(IsAbsent(row.minutes, row.nowMs, row.lastInputMs), row.expected) << row.minutes << ", " << row.nowMs;
    }
    EXPECT_EQ(ClearedByAbsence(1), L"Cleared after 1 minute without input");
    EXPECT_EQ(ClearedByAbsence(5), L"Cleared after 5 minutes without input");
}

} // namespace
} // namespace vextrel
