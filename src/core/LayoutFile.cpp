#include "core/LayoutFile.h"

#include "core/CaptionText.h"

#include <utility>

namespace vextrel {

namespace {

/// A section with character captions: a row in one case.
struct RowSection {
    int row;
    std::wstring KeyCaption::*caption;
    std::wstring_view name;
};

// In the order in which they are written and read.
constexpr RowSection rowSections[] = {
    {1, &KeyCaption::lower, L"Row 1 Lower Case"}, {2, &KeyCaption::lower, L"Row 2 Lower Case"},
    {3, &KeyCaption::lower, L"Row 3 Lower Case"}, {4, &KeyCaption::lower, L"Row 4 Lower Case"},
    {1, &KeyCaption::upper, L"Row 1 Upper Case"}, {2, &KeyCaption::upper, L"Row 2 Upper Case"},
    {3, &KeyCaption::upper, L"Row 3 Upper Case"}, {4, &KeyCaption::upper, L"Row 4 Upper Case"},
};

int KeysInRow(int row) {
    return keysPerRow[static_cast<std::size_t>(row - 1)];
}

std::wstring KeyName(int key) {
    return L"Key " + std::to_wstring(key);
}

/// The slot that an entry of a layout file goes to: its own place, but for two keys of the last upper-case row. "Key 2"
/// there means the row's third key, and "Key 3" the fifth key of the row above, overriding what that row's own section
/// said; the row's second key is thus never read. Deliberate, and the writer does not mirror it.
std::size_t SlotReadInto(const RowSection& section, int key) {
    const bool isLastUpperCaseRow = section.row == 4 && section.caption == &KeyCaption::upper;
    if (isLastUpperCaseRow && key == 2) {
        return SlotOf(4, 3);
    }
    return isLastUpperCaseRow && key == 3 ? SlotOf(3, 5) : SlotOf(section.row, key);
}

std::wstring WithoutNuls(std::wstring text) {
    std::erase(text, L'\0');
    return text;
}

} // namespace

std::vector<LayoutEntry> LayoutEntries(const Layout& layout) {
    std::vector<LayoutEntry> entries;
    entries.reserve(std::size_t{2} * characterKeyCount + layout.actionCaptions.size());
    for (const RowSection& section : rowSections) {
        for (int key = 1; key <= KeysInRow(section.row); ++key) {
            const KeyCaption& caption = layout.captions.At(SlotOf(section.row, key));
            entries.push_back({std::wstring(section.name), KeyName(key), caption.*section.caption});
        }
    }
    for (std::size_t i = 0; i < layout.actionCaptions.size(); ++i) {
        entries.push_back(
            {std::wstring(actionCaptionSection), std::wstring(actionCaptionKeys[i]), layout.actionCaptions[i]});
    }
    return entries;
}

void ReadLayoutEntries(const LayoutReader& read, Layout& layout) {
    for (const RowSection& section : rowSections) {
        for (int key = 1; key <= KeysInRow(section.row); ++key) {
            std::wstring value = WithoutNuls(read(section.name, KeyName(key)));
            if (!value.empty()) {
                layout.captions.At(SlotReadInto(section, key)).*section.caption = std::move(value);
            }
        }
    }
    for (std::size_t i = 0; i < layout.actionCaptions.size(); ++i) {
        layout.actionCaptions[i] = WithoutNuls(read(actionCaptionSection, actionCaptionKeys[i]));
    }
}

std::wstring ActionCaptionOrDefault(std::wstring_view stored, ActionKey key) {
    std::wstring caption = WithoutNuls(std::wstring(stored));
    return TrimBlanks(caption).empty() ? DefaultActionKeyCaptions()[static_cast<std::size_t>(key)] : caption;
}

} // namespace vextrel
