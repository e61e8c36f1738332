#include "core/LayoutFile.h"

#include "core/CaptionText.h"

#include <algorithm>

namespace vextrel {

namespace {

/// Visits the 94 character captions in the order in which they are written and read: which caption of which key in
/// which row, and the section and the name that it has in the file.
template <typename Visitor>
void ForEachCharacterCaption(const Visitor& visit) {
    for (std::wstring KeyCaption::*const caption : {&KeyCaption::lower, &KeyCaption::upper}) {
        for (int row = 1; row <= std::ssize(keysPerRow); ++row) {
            const std::wstring section =
                L"Row " + std::to_wstring(row) + (caption == &KeyCaption::lower ? L" Lower Case" : L" Upper Case");
            for (int key = 1; key <= keysPerRow[static_cast<std::size_t>(row - 1)]; ++key) {
                visit(caption, row, key, section, L"Key " + std::to_wstring(key));
            }
        }
    }
}

/// The slot that an entry of a layout file goes to: its own place, but for two keys of the last upper-case row. "Key 2"
/// there means the row's third key, and "Key 3" the fifth key of the row above, overriding what that row's own section
/// said; the row's second key is thus never read. Deliberate, and the writer does not mirror it.
std::size_t SlotReadInto(std::wstring KeyCaption::*caption, int row, int key) {
    const bool isLastUpperCaseRow = row == 4 && caption == &KeyCaption::upper;
    if (isLastUpperCaseRow && key == 2) {
        return SlotOf(4, 3);
    }
    return isLastUpperCaseRow && key == 3 ? SlotOf(3, 5) : SlotOf(row, key);
}

/// Control characters, line ends, and what only steers how others are written.
bool IsUnseen(wchar_t c) noexcept {
    const auto isBetween = [c](int first, int last) { return c >= first && c <= last; };
    return c < L' ' || isBetween(0x7F, 0x9F) || isBetween(0x200B, 0x200F) || isBetween(0x2028, 0x202E) ||
           isBetween(0x2060, 0x206F);
}

std::wstring WithoutNuls(std::wstring text) {
    std::erase(text, L'\0');
    return text;
}

} // namespace

std::vector<LayoutEntry> LayoutEntries(const Layout& layout) {
    std::vector<LayoutEntry> entries;
    entries.reserve(std::size_t{2} * characterKeyCount + layout.actionCaptions.size());
    ForEachCharacterCaption([&](auto caption, int row, int key, const std::wstring& section, const std::wstring& name) {
        entries.push_back({section, name, layout.captions.At(SlotOf(row, key)).*caption});
    });
    for (std::size_t i = 0; i < layout.actionCaptions.size(); ++i) {
        entries.push_back(
            {std::wstring(actionCaptionSection), std::wstring(actionCaptionKeys[i]), layout.actionCaptions[i]});
    }
    return entries;
}

bool ReadLayoutEntries(const LayoutReader& read, Layout& layout) {
    bool found = false;
    ForEachCharacterCaption([&](auto caption, int row, int key, const std::wstring& section, const std::wstring& name) {
        std::wstring value = WithoutNuls(read(section, name));
        if (!value.empty()) {
            found = true;
            layout.captions.At(SlotReadInto(caption, row, key)).*caption = std::move(value);
        }
    });
    for (std::size_t i = 0; i < layout.actionCaptions.size(); ++i) {
        layout.actionCaptions[i] = WithoutNuls(read(actionCaptionSection, actionCaptionKeys[i]));
    }
    return found;
}

std::wstring LayoutName(std::wstring_view text) {
    constexpr std::size_t longest = 32;
    // No file is called so; a question mark is also what the code page puts for a character that it lacks.
    if (text.find_first_of(L"\\/:*?\"<>|") != std::wstring_view::npos) {
        return {};
    }
    std::wstring name(text);
    std::erase_if(name, IsUnseen);
    name = TrimBlanks(name);
    name.resize(std::min(name.size(), longest));
    return name;
}

std::wstring LayoutNameOfFile(std::wstring_view path) {
    path.remove_prefix(path.find_last_of(L"\\/") + 1); // 0 where there is none
    return LayoutName(path.substr(0, path.find_last_of(L'.')));
}

std::wstring ActionCaptionOrDefault(std::wstring_view stored, ActionKey key) {
    std::wstring caption = WithoutNuls(std::wstring(stored));
    return TrimBlanks(caption).empty() ? defaultActionKeyCaptions[static_cast<std::size_t>(key)] : caption;
}

} // namespace vextrel
