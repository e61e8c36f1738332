#include "core/OptionValues.h"

#include "core/LayerOpacity.h"
#include "core/Numbers.h"

#include "Throws.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

TEST(Numbers, SixteenBitsAreARangeAndOverflowIsNamed) {
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(-0.51), -1);
    EXPECT_EQ(ToInt16(32767), 32767);
    EXPECT_EQ(ToInt16(-32768), -32768);
    EXPECT_EQ(Error(ErrorNumber::Overflow).Number(), 6);
    EXPECT_EQ(Error(ErrorNumber::Overflow).Description(), L"Overflow");
    for (const std::int64_t outside : {32768LL, -32769LL, 65536LL, 99999999999LL}) {
        EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { static_cast<void>(ToInt16(outside)); })) << outside;
    }
}

TEST(Numbers, ANumberIsWhatAUserWouldWrite) {
    const std::pair<const wchar_t*, std::int64_t> numbers[] = {
        {L"252", 252}, {L"  7  ", 7},  {L"+7", 7},    {L"-7", -7},   {L"007", 7}, {L"2.5", 2}, {L"3.5", 4},
        {L"2.500", 2}, {L"2.5001", 3}, {L"-2.5", -2}, {L"-3.5", -4}, {L".5", 0},  {L".6", 1},  {L"5.", 5}};
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(ParseNumber(text), number);
        EXPECT_TRUE(IsNumeric(text));
    }
    EXPECT_EQ(ParseNumber(L"9223372036854775807"), 9223372036854775807);
    EXPECT_TRUE(IsNumeric(L"9223372036854775808"));
    EXPECT_EQ(ParseNumber(L"9223372036854775808"), std::nullopt);
    EXPECT_EQ(ParseNumber(L"9223372036854775807.6"), std::nullopt);
    for (const wchar_t* text :
         {L"", L"   ", L".", L"-", L"+-1", L"1 2", L"- 1", L"1e3", L"&HFF", L"1,5", L"1.2.3", L"\t1", L"12x"}) {
        EXPECT_EQ(ParseNumber(text), std::nullopt) << testing::PrintToString(std::wstring(text));
        EXPECT_FALSE(IsNumeric(text)) << testing::PrintToString(std::wstring(text));
    }
}

TEST(OptionValues, WordsAreExactAndCaseSensitive) {
    constexpr int no = -1;
    const struct {
        const wchar_t* word;
        int boolean, injects, mode, layout;
    } rows[] = {{L"Hover Entry Mode", no, no, 2, 409}, {L"Inject", no, 1, 1, 409}, {L"Config", no, no, 1, 1},
                {L"hover entry mode", no, no, 1, 409}, {L"Default", no, no, 1, 0}, {L"true", no, no, 1, 409},
                {L"Standard Mode", no, no, 1, 409},    {L"FALSE", no, no, 1, 409}, {L"True", 1, no, 1, 409},
                {L"drag drop", no, no, 1, 409},        {L" True", no, no, 1, 409}, {L"1", no, no, 1, 409},
                {L"Drag Drop", no, 0, 1, 409},         {L"False", 0, no, 1, 409},  {L"", no, no, 1, 409},
                {L"English", no, no, 1, 409}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.word)));
        const auto boolean = ParseBoolean(row.word);
        const auto transfer = ParseDragDropMode(row.word);
        EXPECT_EQ(boolean ? int{*boolean} : no, row.boolean);
        EXPECT_EQ(IsOnUnlessFalse(row.word), row.boolean != 0);
        EXPECT_EQ(transfer ? int{*transfer == DragDropMode::Inject} : no, row.injects);
        EXPECT_EQ(static_cast<int>(ParseInputMode(row.word)), row.mode);
        EXPECT_EQ(ParseKeyboardLayout(row.word), row.layout);
    }
    std::wstring written = BooleanText(true) + std::wstring(BooleanText(false));
    for (const InputMode mode : {InputMode::Standard, InputMode::Hover, InputMode::HiddenMouseAndHover}) {
        EXPECT_EQ(ParseInputMode(InputModeText(mode)), mode);
        written += InputModeText(mode);
    }
    written += std::wstring(DragDropModeText(DragDropMode::DragDrop)) + DragDropModeText(DragDropMode::Inject);
    EXPECT_EQ(written, L"TrueFalseStandard ModeHover Entry ModeHover Entry and Hide MouseDrag DropInject");
}

TEST(OptionValues, NumbersOfTheSettingsFile) {
    constexpr int no = -99;
    const struct {
        const wchar_t* text;
        int transparency, intervalMs, layerAnswer, amount;
    } rows[] = {{L"9223372036854775808", no, no, no, 0}, {L"2147483648", no, no, no, 0}, {L"-1", no, 2000, -1, 0},
                {L"2147483647", no, no, 2147483647, 0},  {L"256", 256, 256, 256, 256},   {L"0.4", 0, 2000, 0, 0},
                {L"32767", no, 32767, 32767, 32767},     {L"32768", no, no, 32768, 0},   {L"", 252, no, no, 0},
                {L"256.4", 256, 256, 256, 256},          {L"257", no, 257, 257, 257},    {L"0", 0, 2000, 0, 0},
                {L"-32769", no, no, -32769, 0},          {L"a lot", 252, no, no, 0},     {L" 1 ", 1, 1, 1, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(ParseTransparency(row.text).value_or(no), row.transparency);
        EXPECT_EQ(ParseHoverInterval(row.text).value_or(no), row.intervalMs);
        EXPECT_EQ(ParseLayerAnswer(row.text).value_or(no), row.layerAnswer);
        EXPECT_EQ(ParseAmount(row.text), row.amount);
    }
}

TEST(OptionValues, SlidersShowTheNearestPositionAndAnAlphaIsAByteOrNothing) {
    const std::pair<std::int32_t, int> positions[] = {
        {-5, 500},    {1, 500},     {549, 500},   {550, 600},    {650, 700},         {1000, 1000},
        {1949, 1900}, {1950, 2000}, {2001, 2000}, {32767, 2000}, {2147483647, 2000}, {-2147483647, 500}};
    for (const auto& [intervalMs, position] : positions) {
        EXPECT_EQ(HoverSliderPosition(intervalMs), position) << intervalMs;
    }
    for (int percent = 20; percent <= 100; ++percent) {
        EXPECT_EQ(TransparencySliderPercent(TransparencyOfPercent(percent)), percent);
    }
    const std::pair<int, int> alphas[] = {{20, 51}, {30, 76}, {50, 128}, {70, 178}, {90, 230}, {99, 252}, {100, 255}};
    for (const auto& [percent, alpha] : alphas) {
        EXPECT_EQ(TransparencyOfPercent(percent), alpha) << percent;
    }
    const struct {
        std::int16_t transparency;
        int percent, keyboard, layer; // -1: no alpha
    } rows[] = {{254, 100, 254, 254}, {-32768, 20, -1, -1}, {257, 100, -1, -1}, {52, 20, 52, 52}, {0, 20, 0, 0},
                {255, 100, 255, 255}, {256, 100, 255, -1},  {-1, 20, -1, -1},   {53, 21, 53, 53}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.transparency);
        const auto keyboard = AlphaForKeyboard(row.transparency), layer = AlphaForLayer(row.transparency);
        EXPECT_EQ(TransparencySliderPercent(row.transparency), row.percent);
        EXPECT_EQ(keyboard ? int{*keyboard} : -1, row.keyboard);
        EXPECT_EQ(layer ? int{*layer} : -1, row.layer);
    }
}

TEST(OptionValues, TheLayerCommandSwitchesBetweenTheDefaultAndAStrength) {
    // Each row is one use of the command, on the opacity and the memory that the row before left: nothing is typed at
    // first, 1 is too little to be remembered, no range is enforced, and what has no 16 bits leaves the layer stuck.
    const struct {
        std::int16_t atOnce;
        bool asks; // and is marked
        int answer, after;
    } uses[] = {{100, true, 0, 0},       {5, false, 0, 5}, {100, true, 1, 1},   {5, false, 0, 5},
                {100, true, 200, 200},   {5, false, 0, 5}, {200, true, 0, 200}, {5, false, 0, 5},
                {200, true, 300, 300},   {5, false, 0, 5}, {300, true, -7, -7}, {5, false, 0, 5},
                {100, true, 40000, 100}, {5, false, 0, 5}};
    LayerCommandState state;
    std::int16_t opacity = 5;
    for (const auto& use : uses) {
        SCOPED_TRACE(&use - uses);
        const LayerCommandOutcome outcome = RunLayerCommand(state, opacity);
        EXPECT_TRUE(outcome.coverTransparency == use.atOnce && outcome.marked == use.asks && !outcome.stuck);
        state = outcome.state;
        opacity = outcome.coverTransparency;
        if (outcome.marked) { // 0 stands for a cancel
            state = TakeLayerAnswer(state, use.answer != 0 ? std::optional(use.answer) : std::nullopt);
            opacity = LayerOpacity(state).value_or(opacity);
        }
        EXPECT_EQ(opacity, use.after);
    }
    EXPECT_TRUE(RunLayerCommand(state, opacity).stuck && state.firstSeen == 5);
    EXPECT_EQ(RunLayerCommand({}, 100), (LayerCommandOutcome{{100, 0}, 5, true})) << "the first seen decides the mark";
    EXPECT_TRUE(RunLayerCommand({5, 5}, 5).stuck) << "a typed 5 is what the layer has unmarked";
    EXPECT_FALSE(RunLayerCommand({100, 5}, 5).stuck) << "it asks";
}

} // namespace
} // namespace vextrel
