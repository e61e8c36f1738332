#include "core/LayoutFile.h"

#include <gtest/gtest.h>

#include <map>

namespace vextrel {
namespace {

using Entries = std::map<std::pair<std::wstring, std::wstring>, std::wstring>;

LayoutReader ReaderOf(const Entries& entries) {
    return [&entries](std::wstring_view section, std::wstring_view key) {
        const auto found = entries.find({std::wstring(section), std::wstring(key)});
        return found == entries.end() ? std::wstring() : found->second;
    };
}

/// A layout in which no two captions are alike, so that one in the wrong place shows.
Layout SentinelLayout() {
    Layout layout;
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        const std::wstring number = std::to_wstring(slot);
        layout.captions.At(slot) = {L"l" + number, L"u" + number, L""};
    }
    layout.actionCaptions = {L"a0", L" a1 ", L"a2", L"a3", L"a4"};
    return layout;
}

TEST(LayoutFile, EntriesAreWrittenInTheFilesOrder) {
    Layout layout = SentinelLayout();
    layout.captions.At(0).lower.clear();
    const std::vector<LayoutEntry> entries = LayoutEntries(layout);
    ASSERT_EQ(entries.size(), 99U);
    const std::pair<std::size_t, LayoutEntry> rows[] = {
        {0, {L"Row 1 Lower Case", L"Key 1", L""}},
        {13, {L"Row 2 Lower Case", L"Key 1", L"l13"}},
        {46, {L"Row 4 Lower Case", L"Key 10", L"l46"}},
        {47, {L"Row 1 Upper Case", L"Key 1", L"u0"}},
        {83, {L"Row 3 Upper Case", L"Key 11", L"u36"}},
        {94, {L"Action Keyboard Button Text", L"Backspace", L"a0"}},
        {95, {L"Action Keyboard Button Text", L"Tab", L" a1 "}},
        {96, {L"Action Keyboard Button Text", L"Caps Lock", L"a2"}},
        {97, {L"Action Keyboard Button Text", L"Enter", L"a3"}},
        {98, {L"Action Keyboard Button Text", L"Shift", L"a4"}},
    };
    for (const auto& [index, entry] : rows) {
        EXPECT_EQ(entries[index], entry) << index;
    }
}

TEST(LayoutFile, WhatIsWrittenReadsBackButForThreeUpperCaptions) {
    const std::size_t second = SlotOf(4, 2);
    const std::size_t third = SlotOf(4, 3);
    const std::size_t rowAbove = SlotOf(3, 5);
    for (const Layout& written : {SentinelLayout(), Layout{}}) {
        const std::vector<LayoutEntry> entries = LayoutEntries(written);
        Entries file;
        for (const LayoutEntry& entry : entries) {
            file[{entry.section, entry.key}] = entry.value;
        }
        // Keys beyond a row's end are of no interest to the reader, nor is anything read twice or in another order.
        std::size_t reads = 0;
        const auto recording = [&](std::wstring_view section, std::wstring_view key) {
            EXPECT_TRUE(reads < entries.size() && entries[reads].section == section && entries[reads].key == key);
            ++reads;
            return ReaderOf(file)(section, key);
        };
        Layout read;
        ReadLayoutEntries(recording, read);
        EXPECT_EQ(reads, entries.size());

        Layout expected = written;
        expected.captions.At(second).upper = L"X"; // never read
        expected.captions.At(third).upper = written.captions.At(second).upper;
        expected.captions.At(rowAbove).upper = written.captions.At(third).upper;
        EXPECT_EQ(read, expected);
    }
}

TEST(LayoutFile, AFileOverridesCharactersButReplacesActionCaptions) {
    const struct {
        std::wstring value;
        const wchar_t* lower; // of row 2, key 1, which was "q"
        bool isEntry = true;
    } rows[] = {{L"\u00E9", L"\u00E9"},
                {L"", L"q", false},
                {std::wstring(2, L'\0'), L"q", false},
                {L" ", L" "},
                {{L'\0', L'&', L'\0', L'=', L'\0'}, L"&="}};
    for (const auto& row : rows) {
        const Entries file{{{L"Row 2 Lower Case", L"Key 1"}, row.value},
                           {{L"Action Keyboard Button Text", L"Enter"}, row.value}};
        Layout layout;
        EXPECT_EQ(ReadLayoutEntries(ReaderOf(file), layout), row.isEntry) << "the action captions are not the layout";
        Layout expected;
        expected.captions.At(13).lower = row.lower;
        expected.actionCaptions = {};
        expected.actionCaptions[3] = row.isEntry ? row.lower : L"";
        EXPECT_EQ(layout, expected);
    }
}

TEST(LayoutFile, AnImportedLayoutIsCalledAsItsFileOnOneShortLine) {
    const struct {
        std::wstring text;
        std::wstring name;
        std::wstring ofFile;
    } rows[] = {
        {L"German", L"German", L"German"},
        {L"C:\\a.b\\Polish-typists.lng", L"", L"Polish-typists"},
        {L"c/my.own.LNG", L"", L"my.own"},
        {L"..", L"..", L"."},
        {L" a\tb\r\nc\u202Ed\0 " + std::wstring(1, L'\0'), L"abcd", L"abcd"},
        {std::wstring(300, L'x'), std::wstring(32, L'x'), std::wstring(32, L'x')},
        {L"????", L"", L""}, // of characters that the code page lacks
        {L"", L"", L""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LayoutName(row.text), row.name);
        EXPECT_EQ(LayoutNameOfFile(row.text), row.ofFile);
    }
}

TEST(LayoutFile, AnActionCaptionOfBlanksGivesTheDefault) {
    const std::pair<std::wstring, const wchar_t*> rows[] = {
        {L"", L"ent"}, {L"   ", L"ent"}, {{L' ', L'\0'}, L"ent"}, {{L' ', L'e', L'\0', L' '}, L" e "}};
    for (const auto& [stored, caption] : rows) {
        EXPECT_EQ(ActionCaptionOrDefault(stored, ActionKey::Enter), caption);
    }
}

} // namespace
} // namespace vextrel
