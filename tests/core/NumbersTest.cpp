#include "core/Numbers.h"

#include "Throws.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

TEST(Numbers, HalvesRoundToTheEvenNeighbour) {
    const struct {
        double value;
        std::int64_t rounded;
    } rows[] = {{0.5, 0},   {1.5, 2},  {2.5, 2},    {-0.5, 0},     {-1.5, -2}, {-2.5, -2},
                {2.49, 2},  {2.51, 3}, {-2.51, -3}, {252.45, 252}, {0.0, 0},   {1e15 + 0.5, 1000000000000000},
                {-0.51, -1}};
    for (const auto& row : rows) {
        EXPECT_EQ(RoundHalfEven(row.value), row.rounded) << row.value;
    }
}

TEST(Numbers, SixteenBitsAreARangeAndNotAWrap) {
    EXPECT_EQ(ToInt16(32767), 32767);
    EXPECT_EQ(ToInt16(-32768), -32768);
    EXPECT_EQ(Error(ErrorNumber::Overflow).Number(), 6);
    for (const std::int64_t outside : {32768LL, -32769LL, 65536LL, 99999999999LL}) {
        EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] { static_cast<void>(ToInt16(outside)); })) << outside;
    }
}

TEST(Numbers, ANumberIsWhatAUserWouldWrite) {
    const std::pair<const wchar_t*, std::int64_t> numbers[] = {
        {L"252", 252}, {L"  7  ", 7}, {L"+7", 7},    {L"-7", -7},    {L"007", 7},
        {L"2.5", 2},   {L"3.5", 4},   {L"2.500", 2}, {L"2.5001", 3}, {L"-2.5", -2},
        {L"-3.5", -4}, {L".5", 0},    {L".6", 1},    {L"5.", 5},     {L"9223372036854775807", 9223372036854775807}};
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(ParseNumber(text), number);
        EXPECT_TRUE(IsNumeric(text));
    }
    EXPECT_TRUE(IsNumeric(L"9223372036854775808"));
    EXPECT_EQ(ParseNumber(L"9223372036854775808"), std::nullopt);
    for (const wchar_t* text :
         {L"", L"   ", L".", L"-", L"+-1", L"1 2", L"- 1", L"1e3", L"&HFF", L"1,5", L"1.2.3", L"\t1", L"12x"}) {
        EXPECT_EQ(ParseNumber(text), std::nullopt) << testing::PrintToString(std::wstring(text));
        EXPECT_FALSE(IsNumeric(text)) << testing::PrintToString(std::wstring(text));
    }
}

} // namespace
} // namespace vextrel
