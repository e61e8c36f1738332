#include "core/SlotTable.h"

#include "core/CaptionText.h"
#include "core/Numbers.h"

#include <algorithm>
#include <cassert>

namespace vextrel {

void KeySlotTable::Rebuild(bool shuffle, const std::function<double()>& draw) {
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        buttons_[slot] = {shuffle ? std::to_wstring(RoundHalfEven(draw() * 1000 + 1)) : L"",
                          StandardButtonOfSlot(slot)};
    }
    if (shuffle) {
        std::ranges::sort(buttons_, {}, &std::pair<std::wstring, int>::first);
    }
}

int KeySlotTable::ButtonOfSlot(std::size_t slot) const noexcept {
    assert(slot < characterKeyCount);
    return buttons_[slot].second;
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
