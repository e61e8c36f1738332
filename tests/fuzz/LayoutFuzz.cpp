// Layout files, valid and not: what is read is compared with what each entry is said to become.

#include "Fuzz.h"

#include "core/CaptionText.h"
#include "core/Captions.h"
#include "core/LayoutFile.h"
#include "core/TextEdit.h"

#include <map>

namespace vextrel::fuzz {

namespace {

using Source = std::map<std::pair<std::wstring, std::wstring>, std::wstring>;

LayoutReader Reader(const Source& source) {
    return [&source](std::wstring_view section, std::wstring_view key) {
        const auto found = source.find({std::wstring(section), std::wstring(key)});
        return found == source.end() ? std::wstring() : found->second;
    };
}

/// A profile file: of equal keys the first counts, and values are cut.
Source ReadSource(Bytes& input) {
    Source source;
    std::wstring section;
    while (!input.IsAtEnd()) {
        const std::wstring line = input.TextUpTo(L'\n');
        const std::size_t equals = line.find(L'=');
        if (line.starts_with(L'[')) {
            section = line.substr(1, line.find(L']') - 1);
        } else if (equals != std::wstring::npos) {
            source.try_emplace({section, line.substr(0, equals)}, line.substr(equals + 1, 254));
        }
    }
    return source;
}

/// Reads the source over a layout, with the exceptions of the last upper-case row.
Layout ReadAsSaid(const Source& source, const Layout& before) {
    Layout layout = before;
    ReadLayoutEntries(Reader(source), layout);
    const std::vector<LayoutEntry> old = LayoutEntries(before);
    const std::vector<LayoutEntry> now = LayoutEntries(layout);
    const auto value = [&source](std::wstring_view section, std::wstring_view key) {
        std::wstring text = Reader(source)(section, key);
        std::erase(text, L'\0');
        return text;
    };
    for (std::size_t i = 0; i < now.size(); ++i) {
        constexpr std::wstring_view last = L"Row 4 Upper Case";
        const std::wstring& key = now[i].key;
        std::wstring wanted = value(now[i].section, key);
        if (now[i].section == last && (key == L"Key 2" || key == L"Key 3")) {
            wanted = key == L"Key 2" ? L"" : value(last, L"Key 2");
        } else if (now[i].section == L"Row 3 Upper Case" && key == L"Key 5" && !value(last, L"Key 3").empty()) {
            wanted = value(last, L"Key 3");
        }
        Require(now[i].value == (wanted.empty() && i < 94 ? old[i].value : wanted),
                "a character's caption is what the file says, or stays; an action caption is set, to nothing too");
    }
    return layout;
}

} // namespace

void Run(Bytes input) {
    const Source source = ReadSource(input);
    const Layout layout = ReadAsSaid(source, {});
    Require(ReadAsSaid(source, layout) == layout, "reading twice is reading once");
    for (const auto& [button, caption] : RefreshedCaptions(layout.captions, layout.actionCaptions, {}, {})) {
        Require(button == keys::space || TrimBlanks(caption) == caption, "captions are trimmed");
        Require(!IsCharacterKey(button) || caption != L"&", "no character key shows the mark of an access key");
        Require(!TextOfCaption(caption).empty(), "every character key enters something");
    }
    Source written;
    for (const LayoutEntry& entry : LayoutEntries(layout)) {
        Require(written.try_emplace({entry.section, entry.key}, entry.value).second, "nothing is written twice");
    }
    Require(ReadAsSaid(written, {}).actionCaptions == layout.actionCaptions, "action captions survive the way back");
}

} // namespace vextrel::fuzz
