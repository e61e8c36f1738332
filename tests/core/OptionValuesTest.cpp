#include "core/OptionValues.h"

#include "core/LayerOpacity.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

TEST(OptionValues, WordsAreExactAndCaseSensitive) {
    for (const wchar_t* text : {L"true", L"FALSE", L"", L" True", L"1", L"drag drop", L"hover entry mode"}) {
        EXPECT_EQ(ParseBoolean(text), std::nullopt);
        EXPECT_EQ(ParseDragDropMode(text), std::nullopt);
        EXPECT_EQ(ParseInputMode(text), InputMode::Standard);
        EXPECT_EQ(ParseKeyboardLayout(text), 409);
        EXPECT_TRUE(IsOnUnlessFalse(text));
    }
    EXPECT_FALSE(IsOnUnlessFalse(L"False"));
    const std::pair<const wchar_t*, int> layouts[] = {{L"English", 409}, {L"Default", 0}, {L"Config", 1}};
    for (const auto& [text, id] : layouts) {
        EXPECT_EQ(ParseKeyboardLayout(text), id);
    }
    const std::pair<const wchar_t*, InputMode> modes[] = {
        {L"Standard Mode", InputMode::Standard},
        {L"Hover Entry Mode", InputMode::Hover},
        {L"Hover Entry and Hide Mouse", InputMode::HiddenMouseAndHover}};
    for (const auto& [text, mode] : modes) {
        EXPECT_EQ(ParseInputMode(text), mode);
        EXPECT_STREQ(InputModeText(mode), text);
    }
    EXPECT_EQ(ParseDragDropMode(L"Drag Drop"), DragDropMode::DragDrop);
    EXPECT_EQ(ParseDragDropMode(L"Inject"), DragDropMode::Inject);
    EXPECT_STREQ(DragDropModeText(DragDropMode::DragDrop), L"Drag Drop");
    EXPECT_STREQ(DragDropModeText(DragDropMode::Inject), L"Inject");
    for (const bool value : {true, false}) {
        EXPECT_EQ(ParseBoolean(BooleanText(value)), value);
    }
    EXPECT_STREQ(BooleanText(true), L"True");
}

TEST(OptionValues, NumbersOfTheSettingsFile) {
    constexpr std::nullopt_t none = std::nullopt;
    const struct {
        const wchar_t* text;
        std::optional<std::int16_t> transparency;
        std::optional<std::int32_t> intervalMs;
        std::optional<std::int32_t> layerAnswer;
        int amount = 0;
    } rows[] = {
        {L"", 252, none, none},
        {L"a lot", 252, none, none},
        {L"0", 0, 2000, 0},
        {L" 1 ", 1, 1, 1, 1},
        {L"0.4", 0, 2000, 0},
        {L"256", 256, 256, 256, 256},
        {L"256.4", 256, 256, 256, 256},
        {L"257", none, 257, 257, 257},
        {L"-1", none, 2000, -1},
        {L"32767", none, 32767, 32767, 32767},
        {L"32768", none, none, 32768},
        {L"-32769", none, none, -32769},
        {L"2147483647", none, none, 2147483647},
        {L"2147483648", none, none, none},
        {L"99999999999", none, none, none},
        {L"99999999999999999999999999", none, none, none},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(ParseTransparency(row.text), row.transparency);
        EXPECT_EQ(ParseHoverInterval(row.text), row.intervalMs);
        EXPECT_EQ(ParseLayerAnswer(row.text), row.layerAnswer);
        EXPECT_EQ(ParseAmount(row.text), row.amount);
    }
}

TEST(OptionValues, AnAlphaIsAByteOrNothing) {
    for (int value = -32768; value <= 32767; ++value) {
        const auto transparency = static_cast<std::int16_t>(value);
        std::optional<std::uint8_t> alpha;
        if (value >= 0 && value <= 255) {
            alpha = static_cast<std::uint8_t>(value);
        }
        EXPECT_EQ(AlphaForLayer(transparency), alpha) << value;
        EXPECT_EQ(AlphaForKeyboard(transparency), value == 256 ? std::uint8_t{255} : alpha) << value;
    }
}

TEST(OptionValues, SlidersShowTheNearestPosition) {
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
    const std::pair<int, int> percents[] = {{-1, 20}, {0, 20}, {52, 20}, {53, 21}, {254, 100}, {256, 100}};
    for (const auto& [transparency, percent] : percents) {
        EXPECT_EQ(TransparencySliderPercent(static_cast<std::int16_t>(transparency)), percent) << transparency;
    }
}

TEST(OptionValues, TheLayerCommandSwitchesBetweenTheDefaultAndAStrength) {
    // Each row is one use of the command, on the opacity and the memory that the row before left.
    constexpr std::optional<std::int32_t> cancel;
    const struct {
        std::int16_t atOnce;
        bool marked; // and asked for a new value
        std::optional<std::int32_t> answer;
        std::int16_t after;
        bool stuck = false;                                // for the rest of the run
    } uses[] = {{100, true, cancel, 0}, {5, false, {}, 5}, // nothing was ever typed
                {100, true, 1, 1},      {5, false, {}, 5}, // too little to be remembered
                {100, true, 200, 200},  {5, false, {}, 5},      {200, true, cancel, 200},
                {5, false, {}, 5},      {200, true, 300, 300},  {5, false, {}, 5}, // the range is not enforced
                {300, true, -7, -7},    {5, false, {}, 5},      {100, true, 40000, 100},
                {5, false, {}, 5},      {5, false, {}, 5, true}}; // no 16 bits: the layer stays as it is
    LayerCommandState state;
    std::int16_t opacity = 5;
    for (const auto& use : uses) {
        SCOPED_TRACE(&use - uses);
        const LayerCommandOutcome outcome = RunLayerCommand(state, opacity);
        EXPECT_EQ(outcome.coverTransparency, use.atOnce);
        EXPECT_EQ(outcome.marked, use.marked);
        EXPECT_EQ(outcome.stuck, use.stuck);
        state = outcome.state;
        opacity = outcome.coverTransparency;
        if (outcome.marked) {
            state = TakeLayerAnswer(state, use.answer);
            opacity = LayerOpacity(state).value_or(opacity);
        }
        EXPECT_EQ(opacity, use.after);
    }
    EXPECT_EQ(state.firstSeen, 5);

    const LayerCommandOutcome fromVisible = RunLayerCommand({}, 100);
    EXPECT_EQ(fromVisible, (LayerCommandOutcome{{100, 0}, 5, true})) << "the first opacity seen decides the mark";
    EXPECT_TRUE(RunLayerCommand({5, 5}, 5).stuck) << "a typed 5 is what the layer has unmarked";
    EXPECT_FALSE(RunLayerCommand({100, 5}, 5).stuck) << "it asks";
}

} // namespace
} // namespace vextrel
