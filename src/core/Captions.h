#pragma once

#include "core/SlotTable.h"

#include <vector>

namespace vextrel {

struct ButtonCaption {
    int button = 0;
    std::wstring caption;
};

/// The caption of a character key as a button carries it: trimmed, a lone "&" doubled. With AltGr down the upper-case
/// caption is shown, whatever the AltGr caption says, unless that is "&": then "&&". This asymmetry is deliberate.
[[nodiscard]] std::wstring CharacterKeyCaption(const KeyCaption& key, Modifiers modifiers);

/// The captions of all shown buttons: the 47 character keys, the action keys (trimmed, the default where nothing is
/// left; both Shift keys alike) and the space bar (" ").
[[nodiscard]] std::vector<ButtonCaption> RefreshedCaptions(const KeyCaptions& captions,
                                                           const ActionKeyCaptions& actionCaptions, Modifiers modifiers,
                                                           const KeySlotTable& slots);

/// Every character that stands alone on a key, with Shift or without: those share one size, which Shift does not
/// change.
[[nodiscard]] std::wstring SingleCharacters(const KeyCaptions& captions, const ActionKeyCaptions& actionCaptions);

} // namespace vextrel
