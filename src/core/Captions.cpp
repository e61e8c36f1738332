#include "core/Captions.h"

#include "core/CaptionText.h"
#include "core/LayoutFile.h"

namespace vextrel {

std::wstring CharacterKeyCaption(const KeyCaption& key, Modifiers modifiers) {
    const bool upper = modifiers.altGrIsDown || modifiers.shiftIsDown != modifiers.capsLockIsDown;
    const std::wstring_view caption = TrimBlanks(upper ? key.upper : key.lower);
    const bool isAmpersand = caption == L"&" || (modifiers.altGrIsDown && key.altGr == L"&");
    return std::wstring(isAmpersand ? shownAmpersand : caption);
}

std::vector<ButtonCaption> RefreshedCaptions(const KeyCaptions& captions, const ActionKeyCaptions& actionCaptions,
                                             Modifiers modifiers, const KeySlotTable& slots) {
    constexpr std::pair<int, ActionKey> actionKeys[] = {
        {keys::backspace, ActionKey::Backspace}, {keys::tab, ActionKey::Tab},
        {keys::capsLock, ActionKey::CapsLock},   {keys::enter, ActionKey::Enter},
        {keys::leftShift, ActionKey::Shift},     {keys::rightShift, ActionKey::Shift},
    };
    std::vector<ButtonCaption> refreshed;
    refreshed.reserve(characterKeyCount + std::size(actionKeys) + 1);
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        refreshed.push_back({slots.ButtonOfSlot(slot), CharacterKeyCaption(captions.At(slot), modifiers)});
    }
    for (const auto& [button, key] : actionKeys) {
        const std::wstring caption = ActionCaptionOrDefault(actionCaptions[static_cast<std::size_t>(key)], key);
        refreshed.push_back({button, std::wstring(TrimBlanks(caption))});
    }
    refreshed.push_back({keys::space, L" "});
    return refreshed;
}

std::wstring SingleCharacters(const KeyCaptions& captions, const ActionKeyCaptions& actionCaptions) {
    std::wstring characters;
    for (const bool shift : {false, true}) {
        for (const auto& [button, caption] : RefreshedCaptions(captions, actionCaptions, {.shiftIsDown = shift}, {})) {
            if (const std::wstring_view shown = TextShownOnKey(caption); shown.size() == 1) {
                characters += shown;
            }
        }
    }
    return characters;
}

} // namespace vextrel
