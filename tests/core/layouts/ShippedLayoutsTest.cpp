// What the layout files that ship say, imported over the English layout. That the program shows it so is another test.

#include "layouts/LayoutFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#ifdef _WIN32
#include "win32/Windows.h"
#else
#include <iconv.h>
#endif

namespace vextrel {
namespace {

struct Spot {
    int row;
    int key;
    const wchar_t* lowerAndUpper;
};

struct Shipped {
    const char* file;
    int codePage;
    const wchar_t* touched; ///< upper captions that the reading of the last row touches: row 4 keys 2, 3, row 3 key 5
    std::vector<Spot> spots;
    const wchar_t* twice = L""; ///< characters on two keys
};

const Shipped shippedLayouts[] = {
    {"Belgian", 1252, L"XCG", {{2, 1, L"aA"}, {1, 7, L"\u00A76"}, {4, 10, L"=+"}}},
    {"British", 1252, L"XCG", {{1, 4, L"3\u00A3"}, {3, 11, L"'@"}, {2, 13, L"#~"}}},
    {"Colemak", 1252, L"XCD", {{2, 3, L"fF"}, {3, 10, L"oO"}, {2, 10, L";:"}}},
    {"Czech", 1250, L"XCG", {{1, 3, L"\u011B2"}, {2, 6, L"zZ"}, {3, 10, L"\u016F\""}, {1, 13, L"\u00B4\u02C7"}}},
    {"Danish", 1252, L"XCG", {{3, 10, L"\u00E6\u00C6"}, {3, 11, L"\u00F8\u00D8"}, {2, 11, L"\u00E5\u00C5"}}},
    {"Dutch", 1252, L"XCG", {{1, 1, L"@\u00A7"}, {3, 10, L"+\u00B1"}, {4, 10, L"-="}}},
    {"Dvorak", 1252, L"XJI", {{2, 1, L"'\""}, {3, 2, L"oO"}, {4, 1, L";:"}, {4, 10, L"zZ"}}, L"X"},
    {"French", 1252, L"XCG", {{2, 1, L"aA"}, {1, 3, L"\u00E92"}, {3, 10, L"mM"}, {2, 11, L"^\u00A8"}}},
    {"German", 1252, L"XCG", {{2, 6, L"zZ"}, {4, 1, L"yY"}, {3, 10, L"\u00F6\u00D6"}, {1, 12, L"\u00DF?"}}},
    {"Greek", 1253, L"X\u03A8\u0393", {{3, 1, L"\u03B1\u0391"}, {2, 1, L";:"}, {3, 10, L"\u0384\u00A8"}}, L"\u03A3"},
    {"Italian", 1252, L"XCG", {{2, 11, L"\u00E8\u00E9"}, {3, 10, L"\u00F2\u00E7"}, {1, 1, L"\\|"}}},
    {"Norwegian", 1252, L"XCG", {{3, 10, L"\u00F8\u00D8"}, {3, 11, L"\u00E6\u00C6"}, {1, 1, L"|\u00A7"}}},
    {"Polish", 1250, L"XCG", {{2, 6, L"yY"}, {3, 11, L"'\""}}},
    {"Polish-typists", 1250, L"XCG", {{3, 10, L"\u0142\u0141"}, {3, 11, L"\u0105\u0119"}, {2, 11, L"\u017C\u0144"}}},
    {"Portuguese", 1252, L"XCG", {{3, 10, L"\u00E7\u00C7"}, {1, 13, L"\u00AB\u00BB"}, {2, 13, L"~^"}}},
    {"Russian", 1251, L"X\u0421\u041F", {{2, 1, L"\u0439\u0419"}, {1, 1, L"\u0451\u0401"}, {1, 4, L"3\u2116"}}},
    {"Spanish", 1252, L"XCG", {{3, 10, L"\u00F1\u00D1"}, {1, 13, L"\u00A1\u00BF"}, {3, 11, L"\u00B4\u00A8"}}},
    {"Swedish-Finnish", 1252, L"XCG", {{3, 10, L"\u00F6\u00D6"}, {2, 11, L"\u00E5\u00C5"}, {1, 1, L"\u00A7\u00BD"}}},
    {"Swiss-German", 1252, L"XCG", {{3, 10, L"\u00F6\u00E9"}, {2, 6, L"zZ"}, {2, 13, L"$\u00A3"}}},
};

const std::filesystem::path folder = "assets/layouts"; // tests run in the root of the source tree

std::wstring Decode(const std::string& text, int codePage) {
    std::wstring result(text.size(), L'\0'); // all are code pages of one byte per character
#ifdef _WIN32
    const int size = static_cast<int>(text.size());
    EXPECT_EQ(::MultiByteToWideChar(static_cast<UINT>(codePage), MB_ERR_INVALID_CHARS, text.data(), size, result.data(),
                                    size),
              size);
#else
    const iconv_t converter = ::iconv_open("WCHAR_T", ("CP" + std::to_string(codePage)).c_str());
    std::string bytes = text;
    char* from = bytes.data();
    char* to = reinterpret_cast<char*>(result.data());
    std::size_t fromLeft = bytes.size();
    std::size_t toLeft = result.size() * sizeof(wchar_t);
    EXPECT_EQ(::iconv(converter, &from, &fromLeft, &to, &toLeft), 0U);
    EXPECT_EQ(fromLeft + toLeft, 0U);
    ::iconv_close(converter);
#endif
    return result;
}

struct RawEntry {
    std::string section;
    std::string key;
    std::string value;
};

/// The entries of a file that holds nothing else. The rules are stricter than the system's, so that what passes them
/// means the same to every reader.
std::vector<RawEntry> RawEntries(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    const std::string text = content.str();
    std::vector<RawEntry> entries;
    std::string section;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2) {
        const std::string line = text.substr(start, end - start);
        if (line.starts_with('[') && line.ends_with(']')) {
            section = line.substr(1, line.size() - 2);
            continue;
        }
        const std::size_t sign = line.find('=');
        if (sign == std::string::npos) {
            ADD_FAILURE() << file << ": " << line;
            return {};
        }
        entries.push_back({section, line.substr(0, sign), line.substr(sign + 1)});
    }
    EXPECT_EQ(start, text.size()) << "the last line has no end";
    return entries;
}

Layout Import(const Shipped& shipped, const std::vector<RawEntry>& entries) {
    std::size_t next = 0; // the reader goes through a complete file in its order
    const auto read = [&](std::wstring_view section, std::wstring_view key) -> std::wstring {
        if (next >= entries.size() || Decode(entries[next].section, shipped.codePage) != section ||
            Decode(entries[next].key, shipped.codePage) != key) {
            ADD_FAILURE() << "entry " << next << " is missing or in another place";
            return {};
        }
        return Decode(entries[next++].value, shipped.codePage);
    };
    Layout layout;
    layout.actionCaptions = {};
    ReadLayoutEntries(read, layout);
    EXPECT_EQ(next, entries.size()) << "more in the file than is read";
    return layout;
}

TEST(ShippedLayouts, ShowTheRightCaptionsOnceImported) {
    for (const Shipped& shipped : shippedLayouts) {
        SCOPED_TRACE(shipped.file);
        const std::vector<RawEntry> entries = RawEntries(folder / (shipped.file + std::string(".lng")));
        ASSERT_EQ(entries.size(), 99U);
        const Layout layout = Import(shipped, entries);

        std::set<std::wstring> shown;
        std::wstring twice;
        for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
            const KeyCaption& key = layout.captions.At(slot);
            for (const std::wstring& caption : {key.lower, key.upper}) {
                EXPECT_EQ(caption.size(), 1U) << slot;
                twice += shown.insert(caption).second ? L"" : caption;
            }
        }
        EXPECT_EQ(twice, shipped.twice);
        for (const std::wstring& caption : layout.actionCaptions) {
            EXPECT_TRUE(caption.size() >= 2 && caption.size() <= 6);
        }
        const auto upper = [&](int row, int key) { return layout.captions.At(SlotOf(row, key)).upper; };
        EXPECT_EQ(upper(4, 2) + upper(4, 3) + upper(3, 5), shipped.touched);
        for (const Spot& spot : shipped.spots) {
            const KeyCaption& key = layout.captions.At(SlotOf(spot.row, spot.key));
            EXPECT_EQ(key.lower + key.upper, spot.lowerAndUpper) << spot.row << ", " << spot.key;
        }
    }
}

TEST(ShippedLayouts, AllAreTested) {
    std::set<std::string> tested;
    for (const Shipped& shipped : shippedLayouts) {
        tested.insert(shipped.file + std::string(".lng"));
    }
    std::set<std::string> present;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        present.insert(entry.path().filename().string());
    }
    EXPECT_EQ(present, tested);
}

} // namespace
} // namespace vextrel
