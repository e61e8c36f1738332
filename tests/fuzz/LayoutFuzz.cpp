// Layout files, valid and not, as a line of the input per value: what is read is compared with what each entry is said
// to become.

#include "Fuzz.h"

#include "core/CaptionText.h"
#include "core/Captions.h"
#include "core/LayoutFile.h"

#include <map>

using namespace vextrel;
using fuzz::Require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input{{data, size}};
    std::map<std::wstring, std::wstring> file;
    const auto read = [&](std::wstring_view section, std::wstring_view key) {
        const auto [entry, isNew] = file.try_emplace(std::wstring(section) + L"/" + std::wstring(key));
        if (isNew) {
            entry->second = input.TextUpTo(L'\n').substr(0, 254);
        }
        return entry->second;
    };
    const auto value = [&](const std::wstring& name) {
        std::wstring text = file[name];
        std::erase(text, L'\0');
        return text;
    };
    Layout layout;
    ReadLayoutEntries(read, layout);
    const std::vector<LayoutEntry> english = LayoutEntries({}), entries = LayoutEntries(layout);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::wstring name = entries[i].section + L"/" + entries[i].key, row4 = L"Row 4 Upper Case/Key ";
        std::wstring wanted = value(name);
        if (name == row4 + L"2" || name == row4 + L"3") {
            wanted = name.ends_with(L'2') ? L"" : value(row4 + L"2");
        } else if (name == L"Row 3 Upper Case/Key 5" && !value(row4 + L"3").empty()) {
            wanted = value(row4 + L"3");
        }
        Require(entries[i].value == (wanted.empty() && i < 94 ? english[i].value : wanted),
                "a character's caption is what the file says, or stays; an action caption is set, to nothing too");
    }
    for (const auto& [button, caption] : RefreshedCaptions(layout.captions, layout.actionCaptions, {}, {})) {
        Require(button == keys::space || TrimBlanks(caption) == caption, "captions are trimmed");
        Require(!IsCharacterKey(button) || caption != L"&", "no character key shows the mark of an access key");
        Require(!TextOfCaption(caption).empty(), "every character key enters something");
    }
    Layout again = layout;
    ReadLayoutEntries(read, again);
    Require(again == layout, "reading twice is reading once");
    return 0;
}
