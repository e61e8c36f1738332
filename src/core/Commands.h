#pragma once

#include "core/OptionValues.h"

#include <span>
#include <string>

namespace vextrel {

enum class ToolButtonStyle { Plain, Check, Group, GroupWithMenu };
struct ToolButton {
    int id;
    const wchar_t* key;
    const wchar_t* toolTip;
    ToolButtonStyle style;
    bool startsGroup; ///< a gap stands before it
};
[[nodiscard]] bool IsToolButton(int id) noexcept;
/// The toolbar's 15 buttons, in order; the position is also the number of the picture.
[[nodiscard]] std::span<const ToolButton> ToolButtons() noexcept;

struct HoverDelayItem {
    int id;
    const wchar_t* key;
    const wchar_t* caption;
    int delayMs;
};
/// The menu of the Hover button, shortest first.
[[nodiscard]] std::span<const HoverDelayItem> HoverDelayMenu() noexcept;

/// What the layout commands did last. The menu marks the first three; "Imported" stands for a file.
enum class LayoutMark { None, Default, English, LastSaved, Imported };

/// Everything that check marks, enabled states and pressed buttons depend on. The layer's mark and the layout's mark
/// tell what was done; no option implies them.
struct CommandSnapshot {
    InputMode inputMode = InputMode::Standard;
    DragDropMode dragDropMode = DragDropMode::DragDrop;
    bool textIsMasked = true;
    bool beepOnHover = false;
    bool keepPassword = false;
    bool keepOnTop = true;
    bool saveSettings = true;
    bool toolbarShown = true;
    bool layerMarked = false;
    LayoutMark layout = LayoutMark::None;
    bool answersOthers = false;   ///< other programs may read and order the windows
    bool hardeningOff = false;    ///< the process is as open as any other
    bool transferRunning = false; ///< a drag, an injection or a capture: what would disturb it is disabled
    bool noneImported = false;    ///< the last imported layout was asked for when there was none
    friend constexpr bool operator==(const CommandSnapshot&, const CommandSnapshot&) = default;
};

/// What would change the password, its boxes, the captions or the window's place is refused while a transfer runs, but
/// that clearing is put off until it has ended.
enum class UnderTransfer { Allowed, Refused, Waits };

/// One command of the user's, in the menu bar, on the toolbar or on both; all empty, a separator.
struct Command {
    int menuId = 0;                                               ///< 0: it has no menu item
    const wchar_t* caption = nullptr;                             ///< of the menu item; "&" marks the access key
    int toolId = 0;                                               ///< 0: it has no button
    bool (*isChecked)(const CommandSnapshot&) noexcept = nullptr; ///< whether it shows as being in force
    UnderTransfer underTransfer = UnderTransfer::Allowed;

    /// What names the command: its menu item's number, else its button's.
    [[nodiscard]] constexpr int Id() const noexcept { return menuId != 0 ? menuId : toolId; }
};
struct Menu {
    const wchar_t* caption;
    std::span<const Command> items;
};
/// The menu bar, in order.
[[nodiscard]] std::span<const Menu> MenuBar() noexcept;
/// The command of a menu item or toolbar button; null for numbers that stand for none (the buttons that are there to
/// be seen, the hover delays).
[[nodiscard]] const Command* CommandOf(int id) noexcept;

struct CommandState {
    bool checked = false;
    bool enabled = true;
    bool waits = false; ///< is carried out when the transfer has ended
    friend constexpr bool operator==(CommandState, CommandState) = default;
};
/// The state of a menu item or toolbar button. Unknown identifiers are enabled and not checked.
[[nodiscard]] CommandState StateOfCommand(int id, const CommandSnapshot& snapshot) noexcept;

/// The panes of the status bar: input mode with the delay, transfer mode, layout in use, and what a settings file that
/// somebody else has planted would have opened.
struct StatusTexts {
    std::wstring inputMode;
    std::wstring transferMode;
    std::wstring layout;
    std::wstring warning; ///< empty when there is none
    friend bool operator==(const StatusTexts&, const StatusTexts&) = default;
};
/// @param intervalMs the hover delay. @param layoutName of the imported layout; empty when it is not known.
[[nodiscard]] StatusTexts StatusBarTexts(const CommandSnapshot& snapshot, int intervalMs,
                                         const std::wstring& layoutName = {});
/// A pane's text without the words that can be missed where room is short.
[[nodiscard]] std::wstring BriefStatus(std::wstring text);

} // namespace vextrel
