#include "core/OptionValues.h"
#include "core/Error.h"
#include "core/LayerOpacity.h"
#include "core/Numbers.h"

#include "Each.h"

using namespace vextrel;

TEST(Numbers, SixteenBitsAreARangeAndOverflowIsNamed) {
    EXPECT_TRUE(RoundHalfEven(-2.5) == -2 && RoundHalfEven(-0.51) == -1);
    EXPECT_TRUE(ToInt16(32767) == 32767 && ToInt16(-32768) == -32768);
    EXPECT_THROW(static_cast<void>(ToInt16(32768)), Error);
    EXPECT_THROW(static_cast<void>(ToInt16(-32769)), Error);
    EXPECT_EQ(Error(ErrorNumber::Overflow).Description(), L"Overflow");
}

TEST(Numbers, ANumberIsWhatAUserWouldWrite) {
    const std::pair<const wchar_t*, std::int64_t> numbers[] = {
        {L"252", 252}, {L"  7  ", 7},  {L"+7", 7},    {L"-7", -7},   {L"007", 7}, {L"2.5", 2}, {L"3.5", 4},
        {L"2.500", 2}, {L"2.5001", 3}, {L"-2.5", -2}, {L"-3.5", -4}, {L".5", 0},  {L".6", 1},  {L"5.", 5}};
    ExpectEach(numbers, ParseNumber);
    EXPECT_EQ(ParseNumber(L"9223372036854775807"), INT64_MAX);
    EXPECT_FALSE(ParseNumber(L"9223372036854775808") || ParseNumber(L"9223372036854775807.6"));
    EXPECT_TRUE(IsNumeric(L"9223372036854775808"));
    for (const wchar_t* text :
         {L"", L"   ", L".", L"-", L"+-1", L"1 2", L"- 1", L"1e3", L"&HFF", L"1,5", L"1.2.3", L"\t1", L"12x"}) {
        EXPECT_FALSE(ParseNumber(text) || IsNumeric(text)) << testing::PrintToString(text);
    }
}

TEST(OptionValues, WordsAreExactAndCaseSensitive) {
    using enum InputMode;
    using enum DragDropMode;
    EXPECT_EQ(OfEach(BooleanText, true, false) + OfEach(InputModeText, Standard, Hover, HiddenMouseAndHover) +
                  OfEach(DragDropModeText, DragDrop, Inject),
              L"True|False|Standard Mode|Hover Entry Mode|Hover Entry and Hide Mouse|Drag Drop|Inject|");
    EXPECT_TRUE(ParseBoolean(L"True") == true && ParseBoolean(L"False") == false && !IsOnUnlessFalse(L"False"));
    for (const InputMode mode : {Standard, Hover, HiddenMouseAndHover}) {
        EXPECT_EQ(ParseInputMode(InputModeText(mode)), mode);
    }
    EXPECT_TRUE(ParseDragDropMode(L"Drag Drop") == DragDrop && ParseDragDropMode(L"Inject") == Inject);
    EXPECT_TRUE(ParseKeyboardLayout(L"Default") == 0 && ParseKeyboardLayout(L"Config") == 1);
    for (const wchar_t* other : {L"true", L"FALSE", L" True", L"", L"hover entry mode", L"drag drop", L"config"}) {
        EXPECT_TRUE(!ParseBoolean(other) && !ParseDragDropMode(other) && IsOnUnlessFalse(other) &&
                    ParseInputMode(other) == Standard && ParseKeyboardLayout(other) == 409)
            << testing::PrintToString(other);
    }
}

TEST(OptionValues, NumbersOfTheSettingsFile) {
    constexpr int no = -99;
    const std::tuple<const wchar_t*, int, int, int, int> rows[] = {
        {L"9223372036854775808", no, no, no, 0}, {L"2147483648", no, no, no, 0}, {L"-1", no, 2000, -1, 0},
        {L"2147483647", no, no, 2147483647, 0},  {L"256", 256, 256, 256, 256},   {L"0.4", 0, 2000, 0, 0},
        {L"32767", no, 32767, 32767, 32767},     {L"32768", no, no, 32768, 0},   {L"", 252, no, no, 0},
        {L"256.4", 256, 256, 256, 256},          {L"257", no, 257, 257, 257},    {L"0", 0, 2000, 0, 0},
        {L"-32769", no, no, -32769, 0},          {L"a lot", 252, no, no, 0},     {L" 1 ", 1, 1, 1, 1}};
    for (const auto& [text, transparency, intervalMs, layerAnswer, amount] : rows) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_EQ(ParseTransparency(text).value_or(no), transparency);
        EXPECT_EQ(ParseHoverInterval(text).value_or(no), intervalMs);
        EXPECT_EQ(ParseLayerAnswer(text).value_or(no), layerAnswer);
        EXPECT_EQ(ParseAmount(text), amount);
    }
}

TEST(OptionValues, SlidersShowTheNearestPositionAndAnAlphaIsAByteOrNothing) {
    const std::pair<std::int32_t, int> positions[] = {{-2147483647, 500}, {549, 500},   {550, 600},        {650, 700},
                                                      {1949, 1900},       {1950, 2000}, {2147483647, 2000}};
    ExpectEach(positions, HoverSliderPosition);
    const std::pair<int, int> alphas[] = {{20, 51}, {30, 76}, {50, 128}, {70, 178}, {90, 230}, {99, 252}, {100, 255}};
    ExpectEach(alphas, TransparencyOfPercent);
    for (int percent = 20; percent <= 100; ++percent) {
        EXPECT_EQ(TransparencySliderPercent(TransparencyOfPercent(percent)), percent);
    }
    const std::pair<std::int16_t, int> percents[] = {{-32768, 20}, {52, 20}, {53, 21}, {254, 100}, {257, 100}};
    ExpectEach(percents, TransparencySliderPercent);
    EXPECT_TRUE(AlphaForKeyboard(53) == 53 && AlphaForKeyboard(256) == 255 && AlphaForLayer(255) == 255);
    EXPECT_FALSE(AlphaForKeyboard(257) || AlphaForKeyboard(-1) || AlphaForLayer(256) || AlphaForLayer(-1));
}

TEST(OptionValues, TheLayerCommandSwitchesBetweenTheDefaultAndAStrength) {
    // Each row is one use of the command, which asks, and one more, which goes back. Nothing is typed at first, 1 is
    // too little to be remembered, no range is enforced, and what has no 16 bits leaves the layer as it was.
    const std::tuple<std::int16_t, std::optional<std::int32_t>, std::int16_t> uses[] = {
        {100, std::nullopt, 0}, {100, 1, 1},   {100, 200, 200},  {200, std::nullopt, 200},
        {200, 300, 300},        {300, -7, -7}, {100, 40000, 100}};
    LayerCommandState state;
    for (const auto& [atOnce, answer, after] : uses) {
        SCOPED_TRACE(atOnce);
        const LayerCommandOutcome outcome = RunLayerCommand(state, 5);
        EXPECT_EQ(outcome, (LayerCommandOutcome{{5, state.lastTyped}, atOnce, true, false}));
        state = TakeLayerAnswer(outcome.state, answer);
        EXPECT_EQ(LayerOpacity(state).value_or(atOnce), after);
        EXPECT_EQ(RunLayerCommand(state, after), (LayerCommandOutcome{state, 5, false, false}));
    }
    EXPECT_TRUE(RunLayerCommand(state, 5).stuck) << "what has no 16 bits is no strength";
    EXPECT_EQ(RunLayerCommand({}, 100), (LayerCommandOutcome{{100, 0}, 5, true})) << "the first seen decides the mark";
    EXPECT_FALSE(RunLayerCommand({100, 5}, 5).stuck) << "it asks";
}
