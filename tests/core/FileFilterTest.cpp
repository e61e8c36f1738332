#include "core/FileFilter.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

using namespace std::literals;

TEST(FileFilter, EveryBarBecomesANulAndTwoEndTheWhole) {
    const struct {
        std::wstring_view filter;
        std::wstring_view expected;
    } rows[] = {
        {L"Text (*.txt)|*.txt"sv, L"Text (*.txt)\0*.txt\0\0"sv},
        {L"a|b|c|d|"sv, L"a\0b\0c\0d\0\0"sv}, // one more NUL only
        {L"a|b||"sv, L"a\0b\0\0"sv},
        {L"a||b|||"sv, L"a\0\0b\0\0\0"sv},
        {L"a\0b\0\0"sv, L"a\0b\0\0"sv},
        {L""sv, L"\0\0"sv},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FilterForSystem(row.filter), row.expected) << testing::PrintToString(row.filter);
    }
}

TEST(FileFilter, APatternStartsInTheFolderThatItNames) {
    const struct {
        std::wstring_view path;
        std::wstring_view folder;
    } rows[] = {
        {L"C:\\folder\\*.lng", L"C:\\folder"},
        {L"C:\\*.lng", L"C:\\"},
        {L"\\\\server\\share\\*.lng", L"\\\\server\\share"},
        {L"\\*.lng", L"\\"},
        {L"folder/sub\\x", L"folder/sub"},
        {L"*.lng", L""},
        {L"", L""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FolderOfPath(row.path), row.folder) << testing::PrintToString(row.path);
    }
}

} // namespace
} // namespace vextrel
