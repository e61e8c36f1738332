#include "core/LayoutFile.h"
#include "core/FileFilter.h"

#include "Each.h"

using namespace vextrel;
using namespace std::literals;

TEST(LayoutFile, WhatIsWrittenReadsBackInTheFilesOrderButForThreeUpperCaptions) {
    Layout written; // no two captions are alike, so that one in the wrong place shows
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        written.captions.At(slot) = {L"l" + std::to_wstring(slot), L"u" + std::to_wstring(slot), L""};
    }
    written.actionCaptions = {L"a0", L" a1 ", L"", L"a3", L"a4"};
    const std::vector<LayoutEntry> entries = LayoutEntries(written);
    ASSERT_EQ(entries.size(), 99U);
    const auto text = [&](std::size_t i) {
        return entries[i].section + L"/" + entries[i].key + L"=" + entries[i].value;
    };
    EXPECT_EQ(OfEach(text, 0U, 46U, 47U, 98U),
              L"Row 1 Lower Case/Key 1=l0|Row 4 Lower Case/Key 10=l46|Row 1 Upper Case/Key 1=u0|"
              L"Action Keyboard Button Text/Shift=a4|");
    // Keys beyond a row's end are of no interest to the reader, nor is anything read twice or in another order.
    std::size_t reads = 0;
    Layout read;
    const auto reader = [&](std::wstring_view section, std::wstring_view key) {
        const LayoutEntry& entry = entries.at(reads++);
        EXPECT_TRUE(entry.section == section && entry.key == key) << reads;
        return entry.value;
    };
    ReadLayoutEntries(reader, read);
    EXPECT_EQ(reads, entries.size());
    // The last row's second upper caption is never read, the third goes to another key, and the second's to the third.
    written.captions.At(SlotOf(3, 5)).upper = L"u39";
    written.captions.At(SlotOf(4, 3)).upper = L"u38";
    written.captions.At(SlotOf(4, 2)).upper = L"X";
    EXPECT_EQ(read, written);
}

TEST(LayoutFile, AFileOverridesCharactersButReplacesActionCaptions) {
    // The lower caption of row 2, key 1, which was "q"; no entry at all leaves it, and clears the action caption.
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"\u00E9", L"\u00E9"}, {L"\0\0"s, L""}, {L" ", L" "}, {L"\0&\0=\0"s, L"&="}};
    for (const auto& [value, read] : rows) {
        const auto reader = [&text = value](std::wstring_view section, std::wstring_view key) {
            const bool isThere = key == L"Enter" || (section == L"Row 2 Lower Case" && key == L"Key 1");
            return isThere ? text : std::wstring();
        };
        Layout layout, expected;
        EXPECT_EQ(ReadLayoutEntries(reader, layout), !read.empty()) << "the action captions are not the layout";
        expected.captions.At(13).lower = read.empty() ? L"q" : read;
        expected.actionCaptions = {L"", L"", L"", read, L""};
        EXPECT_EQ(layout, expected);
        const bool isBlank = read.find_first_not_of(L' ') == std::wstring::npos;
        EXPECT_EQ(ActionCaptionOrDefault(value, ActionKey::Enter), isBlank ? L"ent" : read);
    }
}

TEST(LayoutFile, AnImportedLayoutIsCalledAsItsFileOnOneShortLine) {
    // Question marks are what the code page puts for characters that it lacks.
    EXPECT_EQ(OfEach(LayoutName, L"German", L"C:\\x.lng", L"a/b", L"..", L"????", L" a\tb\r\nc\u202Ed\0 \0"s),
              L"German|||..||abcd|");
    EXPECT_EQ(LayoutName(std::wstring(300, L'x')), std::wstring(32, L'x'));
    EXPECT_EQ(OfEach(LayoutNameOfFile, L"C:\\a.b\\Polish-typists.lng", L"c/my.own.LNG", L"..", L""),
              L"Polish-typists|my.own|.||");
}

TEST(FileFilter, EveryBarBecomesANulAndAPatternStartsInTheFolderThatItNames) {
    const std::pair<std::wstring_view, std::wstring_view> filters[] = {
        {L"a|b|c|d|"sv, L"a\0b\0c\0d\0\0"sv}, {L"a|b||"sv, L"a\0b\0\0"sv}, {L"T (*.t)|*.t"sv, L"T (*.t)\0*.t\0\0"sv},
        {L"a||b|||"sv, L"a\0\0b\0\0\0"sv},    {L""sv, L"\0\0"sv},          {L"a\0b\0\0"sv, L"a\0b\0\0"sv}};
    ExpectEach(filters, FilterForSystem);
    EXPECT_EQ(OfEach(FolderOfPath, L"C:\\folder\\*.lng", L"\\\\server\\a\\*.lng", L"C:\\*.lng", L"\\*.lng", L"C:/*.lng",
                     L"folder/sub/x", L"folder/sub\\x", L"*.lng", L""),
              L"C:\\folder|\\\\server\\a|C:\\|\\|C:/|folder/sub|folder/sub|||");
}
