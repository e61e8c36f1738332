#include "app/CaptionBoard.h"

namespace vextrel {

void CaptionBoard::SetModifiers(const vextrel::Modifiers& modifiers) {
    if (modifiers != modifiers_) {
        modifiers_ = modifiers;
        Refresh();
    }
}

void CaptionBoard::Refresh(bool shuffle) {
    const std::wstring hovered = hover_.CaptionOfCurrent();
    if (IsShuffledKeyboardType(keyboardType_)) {
        slots_.Rebuild(shuffle, [this] { return random_.Draw(); });
    }
    for (const ButtonCaption& caption :
         RefreshedCaptions(layout_.captions, layout_.actionCaptions, modifiers_, slots_)) {
        form_.Key(caption.button).SetCaption(caption.caption);
    }
    form_.Key(keys::capsLock).SetLit(modifiers_.capsLockIsDown);
    form_.Key(keys::leftShift).SetLit(modifiers_.shiftIsDown);
    form_.Key(keys::rightShift).SetLit(modifiers_.shiftIsDown);
    hover_.CaptionRefreshed(hovered);
}

} // namespace vextrel
