#pragma once

#include "core/KeyTable.h"
#include "core/SlotTable.h"

#include <string>
#include <string_view>
#include <vector>

namespace vextrel {

/// What decides which caption of a key is shown.
struct ModifierState {
    bool shiftIsDown = false;
    bool altGrIsDown = false;
    bool capsLockIsDown = false;
    friend constexpr bool operator==(ModifierState, ModifierState) = default;
};

struct ButtonCaption {
    int button = 0;
    std::wstring caption;
    friend bool operator==(const ButtonCaption&, const ButtonCaption&) = default;
};

[[nodiscard]] std::wstring_view TrimBlanks(std::wstring_view text) noexcept;

/// The caption of a character key as a button carries it: trimmed, a lone "&" doubled. With AltGr down the upper-case
/// caption is shown, whatever the AltGr caption says, unless that is "&": then "&&". This asymmetry is deliberate.
[[nodiscard]] std::wstring CharacterKeyCaption(const KeyCaption& key, ModifierState modifiers);

/// The captions of all shown buttons: the 47 character keys, the action keys (trimmed, the default where nothing is
/// left; both Shift keys alike) and the space bar (" ").
[[nodiscard]] std::vector<ButtonCaption> RefreshedCaptions(const KeyCaptions& captions,
                                                           const ActionKeyCaptions& actionCaptions,
                                                           ModifierState modifiers, const KeySlotTable& slots);

/// What a key is called when spoken: "space" for the space bar and for a key without a caption, which enters a blank
/// just the same; "&" for "&&"; else the caption.
[[nodiscard]] std::wstring SpokenNameOfKey(int button, std::wstring_view caption);

} // namespace vextrel
