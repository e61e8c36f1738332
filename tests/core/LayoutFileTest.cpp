#include "core/LayoutFile.h"
#include "core/FileFilter.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

using namespace std::literals;

TEST(LayoutFile, WhatIsWrittenReadsBackInTheFilesOrderButForThreeUpperCaptions) {
    Layout written; // no two captions are alike, so that one in the wrong place shows
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        written.captions.At(slot) = {L"l" + std::to_wstring(slot), L"u" + std::to_wstring(slot), L""};
    }
    written.actionCaptions = {L"a0", L" a1 ", L"", L"a3", L"a4"};
    const std::vector<LayoutEntry> entries = LayoutEntries(written);
    ASSERT_EQ(entries.size(), 99U);
    const std::wstring actions = L"Action Keyboard Button Text";
    const std::pair<std::size_t, LayoutEntry> rows[] = {
        {46, {L"Row 4 Lower Case", L"Key 10", L"l46"}}, {94, {actions, L"Backspace", L"a0"}},
        {83, {L"Row 3 Upper Case", L"Key 11", L"u36"}}, {96, {actions, L"Caps Lock", L""}},
        {13, {L"Row 2 Lower Case", L"Key 1", L"l13"}},  {95, {actions, L"Tab", L" a1 "}},
        {47, {L"Row 1 Upper Case", L"Key 1", L"u0"}},   {97, {actions, L"Enter", L"a3"}},
        {0, {L"Row 1 Lower Case", L"Key 1", L"l0"}},    {98, {actions, L"Shift", L"a4"}}};
    for (const auto& [index, entry] : rows) {
        EXPECT_EQ(entries[index], entry) << index;
    }
    // Keys beyond a row's end are of no interest to the reader, nor is anything read twice or in another order.
    std::size_t reads = 0;
    Layout read;
    ReadLayoutEntries(
        [&](std::wstring_view section, std::wstring_view key) {
            const LayoutEntry& entry = entries.at(reads++);
            EXPECT_TRUE(entry.section == section && entry.key == key) << reads;
            return entry.value;
        },
        read);
    EXPECT_EQ(reads, entries.size());
    const auto upper = [&written](int row, int key) -> std::wstring& {
        return written.captions.At(SlotOf(row, key)).upper;
    };
    upper(3, 5) = upper(4, 3);
    upper(4, 3) = upper(4, 2);
    upper(4, 2) = L"X"; // never read
    EXPECT_EQ(read, written);
}

TEST(LayoutFile, AFileOverridesCharactersButReplacesActionCaptions) {
    // The lower caption of row 2, key 1, which was "q"; no entry at all leaves it, and clears the action caption.
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"\u00E9", L"\u00E9"}, {L"", L""}, {L"\0\0"s, L""}, {L" ", L" "}, {L"\0&\0=\0"s, L"&="}};
    for (const auto& [value, read] : rows) {
        const auto reader = [&text = value](std::wstring_view section, std::wstring_view key) {
            return std::wstring(section) + std::wstring(key) == L"Row 2 Lower CaseKey 1" || key == L"Enter"
                       ? text
                       : std::wstring();
        };
        Layout layout;
        EXPECT_EQ(ReadLayoutEntries(reader, layout), !read.empty()) << "the action captions are not the layout";
        Layout expected;
        expected.captions.At(13).lower = read.empty() ? L"q" : read;
        expected.actionCaptions = {L"", L"", L"", read, L""};
        EXPECT_EQ(layout, expected);
        const bool isBlank = read.find_first_not_of(L' ') == std::wstring::npos;
        EXPECT_EQ(ActionCaptionOrDefault(value, ActionKey::Enter), isBlank ? L"ent" : read);
    }
}

TEST(LayoutFile, AnImportedLayoutIsCalledAsItsFileOnOneShortLine) {
    const struct {
        std::wstring text, name, ofFile;
    } rows[] = {{L"German", L"German", L"German"},
                {L"C:\\a.b\\Polish-typists.lng", L"", L"Polish-typists"},
                {L"c/my.own.LNG", L"", L"my.own"},
                {L" a\tb\r\nc\u202Ed\0 \0"s, L"abcd", L"abcd"},
                {L"..", L"..", L"."},
                {std::wstring(300, L'x'), std::wstring(32, L'x'), std::wstring(32, L'x')},
                {L"????", L"", L""},
                {L"", L"", L""}}; // "?" is what the code page puts for characters that it lacks
    for (const auto& row : rows) {
        EXPECT_EQ(LayoutName(row.text), row.name);
        EXPECT_EQ(LayoutNameOfFile(row.text), row.ofFile);
    }
}

TEST(FileFilter, EveryBarBecomesANulAndAPatternStartsInTheFolderThatItNames) {
    const std::pair<std::wstring_view, std::wstring_view> filters[] = {
        {L"a|b|c|d|"sv, L"a\0b\0c\0d\0\0"sv}, {L"a|b||"sv, L"a\0b\0\0"sv}, {L"T (*.t)|*.t"sv, L"T (*.t)\0*.t\0\0"sv},
        {L"a||b|||"sv, L"a\0\0b\0\0\0"sv},    {L""sv, L"\0\0"sv},          {L"a\0b\0\0"sv, L"a\0b\0\0"sv}};
    for (const auto& [filter, expected] : filters) {
        EXPECT_EQ(FilterForSystem(filter), expected) << testing::PrintToString(filter);
    }
    const std::pair<std::wstring_view, std::wstring_view> paths[] = {{L"C:\\folder\\*.lng", L"C:\\folder"},
                                                                     {L"C:\\*.lng", L"C:\\"},
                                                                     {L"\\\\server\\a\\*.lng", L"\\\\server\\a"},
                                                                     {L"C:/*.lng", L"C:/"},
                                                                     {L"folder/sub/x", L"folder/sub"},
                                                                     {L"\\*.lng", L"\\"},
                                                                     {L"folder/sub\\x", L"folder/sub"},
                                                                     {L"*.lng", L""},
                                                                     {L"", L""}};
    for (const auto& [path, folder] : paths) {
        EXPECT_EQ(FolderOfPath(path), folder) << testing::PrintToString(path);
    }
}

} // namespace
} // namespace vextrel
