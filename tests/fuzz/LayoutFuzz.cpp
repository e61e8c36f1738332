// Layout files, valid and not: what is read is compared with what each key is said to take, seen from the key's side.

#include "Fuzz.h"

#include "core/CaptionText.h"
#include "core/Captions.h"
#include "core/LayoutFile.h"
#include "core/TextEdit.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vextrel::fuzz {

namespace {

using Source = std::map<std::pair<std::wstring, std::wstring>, std::wstring>;

/// As profile files are read: the first of equal keys counts, values are cut.
Source ReadSource(Bytes& input) {
    constexpr std::size_t longestValue = 254;
    Source source;
    std::wstring section;
    while (!input.IsAtEnd()) {
        const std::wstring line = input.TextUpTo(L'\n');
        const std::size_t equals = line.find(L'=');
        if (line.starts_with(L'[')) {
            section = line.substr(1, line.find(L']') - 1);
        } else if (equals != std::wstring::npos) {
            source.try_emplace({section, line.substr(0, equals)}, line.substr(equals + 1, longestValue));
        }
    }
    return source;
}

LayoutReader Reader(const Source& source) {
    return [&source](std::wstring_view section, std::wstring_view key) {
        const auto found = source.find({std::wstring(section), std::wstring(key)});
        return found == source.end() ? std::wstring() : found->second;
    };
}

std::wstring Value(const Source& source, std::wstring_view section, std::wstring_view key) {
    std::wstring value = Reader(source)(section, key);
    value.erase(std::remove(value.begin(), value.end(), L'\0'), value.end());
    return value;
}

std::wstring Value(const Source& source, int row, bool upper, int key) {
    return Value(source, L"Row " + std::to_wstring(row) + (upper ? L" Upper Case" : L" Lower Case"),
                 L"Key " + std::to_wstring(key));
}

/// What a key's caption becomes, with the exceptions of the last upper-case row.
std::wstring Expected(const Source& source, int row, bool upper, int key, const std::wstring& before) {
    std::wstring value = Value(source, row, upper, key);
    if (upper && row == 4 && key == 2) {
        value.clear();
    } else if (upper && row == 4 && key == 3) {
        value = Value(source, 4, true, 2);
    } else if (upper && row == 3 && key == 5) {
        if (std::wstring other = Value(source, 4, true, 3); !other.empty()) {
            value = std::move(other);
        }
    }
    return value.empty() ? before : value;
}

void RequireReadAsSaid(const Source& source, const Layout& before, const Layout& after) {
    for (int row = 1; row <= 4; ++row) {
        for (int key = 1; key <= keysPerRow[static_cast<std::size_t>(row - 1)]; ++key) {
            const KeyCaption& old = before.captions.At(SlotOf(row, key));
            const KeyCaption& now = after.captions.At(SlotOf(row, key));
            Require(now.lower == Expected(source, row, false, key, old.lower), "a lower caption is what the file says");
            Require(now.upper == Expected(source, row, true, key, old.upper), "an upper caption is what the file says");
            Require(!now.lower.empty() && !now.upper.empty(), "no character caption becomes empty");
            Require(now.altGr == old.altGr, "a file has no AltGr captions");
        }
    }
    for (std::size_t slot = characterKeyCount; slot < KeyCaptions::slotCount; ++slot) {
        Require(after.captions.At(slot) == before.captions.At(slot), "only character keys take captions");
    }
    for (std::size_t i = 0; i < after.actionCaptions.size(); ++i) {
        Require(after.actionCaptions[i] == Value(source, actionCaptionSection, actionCaptionKeys[i]),
                "an action caption is set, to nothing if the file lacks it");
    }
}

void RequireShownWell(const Layout& layout) {
    constexpr Modifiers plain, shift{.shiftIsDown = true}, altGr{.altGrIsDown = true};
    for (const Modifiers modifiers : {plain, shift, altGr}) {
        const auto shown = RefreshedCaptions(layout.captions, layout.actionCaptions, modifiers, KeySlotTable());
        Require(shown.size() == characterKeyCount + 7, "every shown key gets a caption");
        for (std::size_t i = 0; i < shown.size(); ++i) {
            const auto& [button, caption] = shown[i];
            Require(button == keys::space || TrimBlanks(caption) == caption, "captions are trimmed");
            Require(i >= characterKeyCount || caption != L"&", "no character key shows the mark of an access key");
            Require(!TextOfCaption(caption).empty(), "every character key enters something");
        }
    }
}

} // namespace

void Run(Bytes input) {
    const Source source = ReadSource(input);
    const Layout before;
    Layout layout = before;
    ReadLayoutEntries(Reader(source), layout);
    RequireReadAsSaid(source, before, layout);
    RequireShownWell(layout);

    Layout again = layout;
    ReadLayoutEntries(Reader(source), again);
    Require(again == layout, "reading twice is reading once");

    Source written;
    for (const LayoutEntry& entry : LayoutEntries(layout)) {
        Require(written.try_emplace({entry.section, entry.key}, entry.value).second, "no entry is written twice");
    }
    Layout back = layout;
    ReadLayoutEntries(Reader(written), back);
    RequireReadAsSaid(written, layout, back);
    Require(back.actionCaptions == layout.actionCaptions, "action captions survive the way there and back");
}

} // namespace vextrel::fuzz
