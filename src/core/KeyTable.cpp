#include "core/KeyTable.h"

#include "core/Error.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <numeric>
#include <string_view>

namespace vextrel {

namespace {

// The US English arrangement, one character per slot.
constexpr std::wstring_view englishLower = L"`1234567890-="
                                           L"qwertyuiop[]\\"
                                           L"asdfghjkl;'"
                                           L"zxcvbnm,./";
constexpr std::wstring_view englishUpper = L"~!@#$%^&*()_+"
                                           L"QWERTYUIOP{}|"
                                           L"ASDFGHJKL:\""
                                           L"ZXCVBNM<>?";
static_assert(englishLower.size() == characterKeyCount && englishUpper.size() == characterKeyCount);

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
        key.lower = englishLower[slot];
        key.upper = englishUpper[slot];
    }
}

int StandardButtonOfSlot(std::size_t slot) noexcept {
    assert(slot < characterKeyCount);
    const ButtonRun& run = *std::prev(std::ranges::upper_bound(buttonRuns, slot, {}, &ButtonRun::firstSlot));
    return run.firstButton + static_cast<int>(slot - run.firstSlot);
}

std::optional<std::size_t> StandardSlotOfCharacter(wchar_t character) noexcept {
    for (const std::wstring_view characters : {englishLower, englishUpper}) {
        if (const std::size_t slot = characters.find(character); slot != std::wstring_view::npos) {
            return slot;
        }
    }
    return std::nullopt;
}

wchar_t ShiftCounterpart(wchar_t character) noexcept {
    const std::optional<std::size_t> slot = StandardSlotOfCharacter(character);
    if (!slot) {
        return character;
    }
    return englishLower[*slot] == character ? englishUpper[*slot] : englishLower[*slot];
}

const ActionKeyCaptions& DefaultActionKeyCaptions() {
    static const ActionKeyCaptions captions{L"bksp", L"tab", L"cap", L"ent", L"shft"};
    return captions;
}

} // namespace vextrel
