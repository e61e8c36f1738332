#include "core/SlotTable.h"

#include "core/CaptionText.h"
#include "core/Numbers.h"

#include <algorithm>
#include <cassert>

namespace vextrel {

namespace {

std::wstring DrawnSortKey(double draw) {
    return std::to_wstring(RoundHalfEven(draw * 1000 + 1));
}

} // namespace

KeySlotTable::KeySlotTable() {
    Rebuild(false, {});
}

void KeySlotTable::Rebuild(bool shuffle, const std::function<double()>& draw) {
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        Row& row = rows_[slot];
        row.button = StandardButtonOfSlot(slot);
        if (shuffle) {
            row.sortKey = DrawnSortKey(draw());
        } else {
            row.sortKey = static_cast<int>(slot);
        }
    }
    if (shuffle) {
        std::sort(rows_.begin(), rows_.begin() + characterKeyCount,
                  [](const Row& a, const Row& b) { return a.sortKey < b.sortKey; });
    }
}

int KeySlotTable::ButtonOfSlot(std::size_t slot) const noexcept {
    assert(slot < characterKeyCount);
    return rows_[slot].button;
}

std::wstring ScrambledInput(wchar_t typed, const std::function<std::wstring(int)>& captionOfButton) {
    if (typed == L' ') {
        return L" ";
    }
    const std::optional<std::size_t> slot = StandardSlotOfCharacter(typed);
    if (!slot) {
        return {};
    }
    return std::wstring(TextShownOnKey(captionOfButton(StandardButtonOfSlot(*slot))));
}

} // namespace vextrel
