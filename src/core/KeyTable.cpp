#include "core/KeyTable.h"

#include "core/Error.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <numeric>

namespace vextrel {

namespace {

// The US English arrangement, a character per slot: all lower ones, then all upper ones.
constexpr std::wstring_view english = L"`1234567890-=qwertyuiop[]\\asdfghjkl;'zxcvbnm,./"
                                      L"~!@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:\"ZXCVBNM<>?";
static_assert(english.size() == std::size_t{2} * characterKeyCount);

/// Slots that lie on consecutively numbered buttons.
struct ButtonRun {
    std::size_t firstSlot;
    int firstButton;
};
// The backslash key came to the keyboard last and took the last number, hence the run of one.
constexpr ButtonRun buttonRuns[] = {{0, 1}, {13, 17}, {25, 65}, {26, 31}, {37, 43}};

} // namespace

const KeyCaption& KeyCaptions::At(std::size_t slot) const {
    if (slot >= slotCount) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return slots_[slot];
}

std::size_t SlotOf(int row, int key) noexcept {
    assert(row >= 1 && row <= 4 && key >= 1 && key <= keysPerRow[static_cast<std::size_t>(row - 1)]);
    return static_cast<std::size_t>(std::accumulate(keysPerRow.begin(), keysPerRow.begin() + row - 1, key - 1));
}

void LoadEnglishLayout(KeyCaptions& captions) {
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        KeyCaption& key = captions.At(slot);
        key.lower = english[slot];
        key.upper = english[slot + characterKeyCount];
    }
}

int StandardButtonOfSlot(std::size_t slot) noexcept {
    assert(slot < characterKeyCount);
    const ButtonRun& run = *std::prev(std::ranges::upper_bound(buttonRuns, slot, {}, &ButtonRun::firstSlot));
    return run.firstButton + static_cast<int>(slot - run.firstSlot);
}

std::optional<std::size_t> StandardSlotOfCharacter(wchar_t character) noexcept {
    const std::size_t place = english.find(character);
    return place == std::wstring_view::npos ? std::nullopt : std::optional(place % characterKeyCount);
}

wchar_t ShiftCounterpart(wchar_t character) noexcept {
    const std::size_t place = english.find(character);
    return place == std::wstring_view::npos ? character : english[(place + characterKeyCount) % english.size()];
}

} // namespace vextrel
