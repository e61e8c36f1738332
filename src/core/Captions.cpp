#include "core/Captions.h"

#include <iterator>
#include <utility>

namespace vextrel {

namespace {

/// A single ampersand would be taken as the mark of an access key; two show one.
constexpr std::wstring_view shownAmpersand = L"&&";

std::wstring ActionKeyCaption(const ActionKeyCaptions& captions, ActionKey key) {
    const auto index = static_cast<std::size_t>(key);
    const std::wstring_view caption = TrimBlanks(captions[index]);
    return caption.empty() ? DefaultActionKeyCaptions()[index] : std::wstring(caption);
}

} // namespace

std::wstring_view TrimBlanks(std::wstring_view text) noexcept {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::wstring CharacterKeyCaption(const KeyCaption& key, ModifierState modifiers) {
    if (modifiers.altGrIsDown && key.altGr == L"&") {
        return std::wstring(shownAmpersand);
    }
    const bool upper = modifiers.altGrIsDown || modifiers.shiftIsDown != modifiers.capsLockIsDown;
    const std::wstring_view caption = TrimBlanks(upper ? key.upper : key.lower);
    return std::wstring(caption == L"&" ? shownAmpersand : caption);
}

std::vector<ButtonCaption> RefreshedCaptions(const KeyCaptions& captions, const ActionKeyCaptions& actionCaptions,
                                             ModifierState modifiers, const KeySlotTable& slots) {
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
        refreshed.push_back({button, ActionKeyCaption(actionCaptions, key)});
    }
    refreshed.push_back({keys::space, L" "});
    return refreshed;
}

std::wstring SpokenNameOfKey(int button, std::wstring_view caption) {
    if (button == keys::space || TrimBlanks(caption).empty()) {
        return L"space";
    }
    return std::wstring(caption == shownAmpersand ? L"&" : caption);
}

} // namespace vextrel
