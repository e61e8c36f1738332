// What the layout files that ship say, imported over the English layout. That the program shows it so is another test.

#include "core/LayoutFile.h"
#include "win32/Windows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

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

// Tests run in the root of the source tree. That may lie where the code page cannot say; with a backslash, a relative
// path is not looked for in Windows' folder.
const std::filesystem::path folder = ".\\assets\\layouts";

/// A value as the program gets it, from the system's own functions, but in the file's code page.
std::wstring ReadValue(const std::filesystem::path& file, const Shipped& shipped, std::wstring_view section,
                       std::wstring_view key) {
    const auto narrow = [](std::wstring_view text) { return std::string(text.begin(), text.end()); };
    char bytes[255] = {};
    const auto size = static_cast<int>(::GetPrivateProfileStringA(narrow(section).c_str(), narrow(key).c_str(), "",
                                                                  bytes, sizeof bytes, file.string().c_str()));
    std::wstring value(255, L'\0');
    value.resize(static_cast<std::size_t>(::MultiByteToWideChar(static_cast<UINT>(shipped.codePage),
                                                                MB_ERR_INVALID_CHARS, bytes, size, value.data(), 255)));
    return value;
}

Layout Import(const std::filesystem::path& file, const Shipped& shipped) {
    std::set<std::wstring> sections;
    std::ptrdiff_t read = 0;
    Layout layout;
    layout.actionCaptions = {};
    ReadLayoutEntries(
        [&](std::wstring_view section, std::wstring_view key) {
            sections.insert(std::wstring(section));
            std::wstring value = ReadValue(file, shipped, section, key);
            read += value.empty() ? 0 : 1;
            return value;
        },
        layout);
    std::ifstream content(file);
    const std::ptrdiff_t lines = std::count(std::istreambuf_iterator<char>(content), {}, '\n');
    EXPECT_EQ(read, 99);
    EXPECT_EQ(lines, read + static_cast<std::ptrdiff_t>(sections.size())) << "more in the file than is read";
    return layout;
}

TEST(ShippedLayouts, ShowTheRightCaptionsOnceImported) {
    for (const Shipped& shipped : shippedLayouts) {
        SCOPED_TRACE(shipped.file);
        const Layout layout = Import(folder / (shipped.file + std::string(".lng")), shipped);

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
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), std::ssize(shippedLayouts));
}

} // namespace
} // namespace vextrel
