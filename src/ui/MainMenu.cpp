#include "ui/MainMenu.h"

namespace vextrel {

void MainMenu::Create() {
    bar_.Reset(::CreateMenu());
    shown_.reset();
    for (const Menu& menu : MenuBar()) {
        const HMENU items = ::CreatePopupMenu();
        for (const Command& item : menu.items) {
            ::AppendMenuW(items, item.caption == nullptr ? MF_SEPARATOR : MF_STRING, static_cast<UINT_PTR>(item.menuId),
                          item.caption);
        }
        ::AppendMenuW(bar_.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(items), menu.caption);
    }
}

void MainMenu::Refresh(const CommandSnapshot& snapshot) noexcept {
    if (shown_ == snapshot) {
        return;
    }
    shown_ = snapshot;
    for (const Menu& menu : MenuBar()) {
        for (const Command& item : menu.items) {
            const CommandState state = StateOfCommand(item.menuId, snapshot);
            const auto id = static_cast<UINT>(item.menuId);
            ::CheckMenuItem(bar_.Get(), id,
                            static_cast<UINT>(MF_BYCOMMAND) | (state.checked ? MF_CHECKED : MF_UNCHECKED));
            ::EnableMenuItem(bar_.Get(), id,
                             static_cast<UINT>(MF_BYCOMMAND) | (state.enabled ? MF_ENABLED : MF_GRAYED));
        }
    }
}

} // namespace vextrel
