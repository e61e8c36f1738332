#include "core/Commands.h"

#include "core/ids.h"

#include <algorithm>

namespace vextrel {

namespace {

template <auto member, auto value = true>
bool Is(const CommandSnapshot& snapshot) noexcept {
    return snapshot.*member == value;
}

using S = CommandSnapshot;
using enum UnderTransfer;

constexpr Command separator{};

constexpr Command fileCommands[] = {
    {ids::mnuFileKeepOnTop, L"Keep on &Top", ids::toolKeepOnTop, Is<&S::keepOnTop>},
    {ids::mnuFileExit, L"E&xit"},
};
constexpr Command modeCommands[] = {
    {ids::mnuModeStandard, L"1. Standard", ids::toolStandard, Is<&S::inputMode, InputMode::Standard>},
    {ids::mnuModeHover, L"2. Hover Entry", ids::toolHover, Is<&S::inputMode, InputMode::Hover>},
    {ids::mnuModeHiddenMouseAndHover, L"3. Hidden Mouse and Hover Entry", ids::toolHideMouse,
     Is<&S::inputMode, InputMode::HiddenMouseAndHover>},
};
constexpr Command viewCommands[] = {
    {ids::mnuViewToolbar, L"&Toolbar", 0, Is<&S::toolbarShown>},
    {ids::mnuViewProtectiveLayer, L"Protective Layer", 0, Is<&S::layerMarked>},
    separator,
    {ids::mnuViewPasswordMask, L"&Password Mask", ids::toolToggleMask, Is<&S::textIsMasked>, Refused},
};
constexpr Command optionCommands[] = {
    {ids::mnuOptionsBeepOnHover, L"&Beep on Hover Entry", ids::toolBeep, Is<&S::beepOnHover>},
    {ids::mnuOptionsKeepPasswordAfterDragDrop, L"&Keep Password after Drag Drop", ids::toolKeepPassword,
     Is<&S::keepPassword>},
    separator,
    {ids::mnuOptionsDragDrop, L"Drag and Drop Mode", 0, Is<&S::dragDropMode, DragDropMode::DragDrop>},
    {ids::mnuOptionsInjectMode, L"Injection Mode", 0, Is<&S::dragDropMode, DragDropMode::Inject>},
    separator,
    {ids::mnuOptionsSaveSettingsInINI, L"Save setting changes in the vxrconfig.ini file", 0, Is<&S::saveSettings>},
};
constexpr Command layoutCommands[] = {
    {ids::mnuKeyboardLayoutDefault, L"Default Language Layout", 0, Is<&S::layout, LayoutMark::Default>, Refused},
    {ids::mnuKeyboardLayoutEnglish, L"English Layout", 0, Is<&S::layout, LayoutMark::English>, Refused},
    {ids::mnuKeyboardLayoutLastSaved, L"Load Last Imported Layout", 0, Is<&S::layout, LayoutMark::LastSaved>, Refused},
    separator,
    {ids::mnuKeyboardLayoutImport, L"Import a Layout...", 0, nullptr, Refused},
    {ids::mnuKeyboardCreateNewLayoutFile, L"Save current layout...", 0, nullptr, Refused},
};
constexpr Command helpCommands[] = {
    {ids::mnuHelpVisitHomepage, L"Visit Vextrel homepage"},
    {ids::mnuHelpDonate, L"Donate..."},
    separator,
    {ids::mnuHelpAbout, L"About Vextrel"},
};
constexpr Command toolbarCommands[] = {
    {0, nullptr, ids::toolInject, Is<&S::dragDropMode, DragDropMode::Inject>},
    {0, nullptr, ids::toolRefresh, nullptr, Refused},
    {0, nullptr, ids::toolClear, nullptr, Waits},
};

/// The menu bar and, last, what only the toolbar has.
constexpr Menu commandGroups[] = {
    {L"&File", fileCommands},      {L"&Mouse Mode", modeCommands},        {L"&View", viewCommands},
    {L"&Options", optionCommands}, {L"&Keyboard Layout", layoutCommands}, {L"Help", helpCommands},
    {nullptr, toolbarCommands},
};

// The keys are part of the program's contract, misspellings included.
constexpr ToolButton toolButtons[] = {
    {ids::toolStandard, L"Standard", L"Standard Entry", ToolButtonStyle::Group, false},
    {ids::toolHover, L"Hover", L"Hover Entry", ToolButtonStyle::GroupWithMenu, false},
    {ids::toolHideMouse, L"HideMouse", L"Hidden Mouse and Hover Entry", ToolButtonStyle::Group, false},
    {ids::toolInject, L"Inject", L"Injection Mode: try it if drag-drop doesn't work", ToolButtonStyle::Check, true},
    {ids::toolScrambleOnScreen, L"ScrambleOnScreen", L"Scramble JUST the on-screen keys", ToolButtonStyle::Plain, true},
    {ids::toolScrambleAll, L"ScrambleAll", L"Scramble the on-screen keys AND keyboard input", ToolButtonStyle::Plain,
     false},
    {ids::toolDvorak, L"Dvorak", L"Use Dvorak layout for on-screen keys AND keyboard", ToolButtonStyle::Plain, false},
    {ids::toolUnscramble, L"Unscramble", L"Unscramble on-screen keys and keyboard input", ToolButtonStyle::Plain,
     false},
    {ids::toolToggleMask, L"ToggleMask", L"Show/hide the password masking", ToolButtonStyle::Check, true},
    {ids::toolBeep, L"Beep", L"Beep on Hover Entry", ToolButtonStyle::Check, false},
    {ids::toolKeepPassword, L"KeepPassword", L"Keep Password After Drag Drop", ToolButtonStyle::Check, false},
    {ids::toolObsfucate, L"Obsfucate", L"Hide password in amongst random characters", ToolButtonStyle::Plain, false},
    {ids::toolKeepOnTop, L"KeepOnTop", L"Keep On Top", ToolButtonStyle::Check, true},
    {ids::toolRefresh, L"Refresh", L"Resize Vextrel", ToolButtonStyle::Plain, false},
    {ids::toolClear, L"Clear", L"Clear text/password (Ctrl+Delete)", ToolButtonStyle::Plain, false},
};

constexpr HoverDelayItem hoverDelays[] = {
    {ids::hoverDelayHalfSecond, L"halfseconddely", L"Half Second Delay", 500},
    {ids::hoverDelayOneSecond, L"oneseconddelay", L"One Second Delay", 1000},
    {ids::hoverDelayOneAndAHalfSeconds, L"oneandhalfseconddelay", L"One and a Half Second Delay", 1500},
    {ids::hoverDelayTwoSeconds, L"twosecondsdelay", L"Two Second Delay", 2000},
};

std::wstring InputModeStatus(InputMode mode, int intervalMs) {
    if (mode == InputMode::Standard) {
        return L"Standard entry";
    }
    return (mode == InputMode::Hover ? L"Hover entry, " : L"Hidden mouse, ") + SecondsText(intervalMs);
}

const wchar_t* WarningStatus(const CommandSnapshot& snapshot) noexcept {
    if (snapshot.answersOthers) {
        return L"Open to other programs";
    }
    return snapshot.hardeningOff ? L"Not hardened" : L"";
}

std::wstring LayoutStatus(const CommandSnapshot& snapshot, const std::wstring& name) {
    switch (snapshot.layout) {
    case LayoutMark::Default: return L"Default layout";
    case LayoutMark::LastSaved:
        if (snapshot.noneImported) {
            return L"No layout imported yet";
        }
        return name.empty() ? L"Last imported layout" : name + L", as stored";
    case LayoutMark::Imported: return name.empty() ? L"Imported layout" : name;
    default: return L"English layout"; // captions that no command has set yet are the built-in ones
    }
}

} // namespace

std::span<const Menu> MenuBar() noexcept {
    return std::span(commandGroups).first(std::size(commandGroups) - 1);
}

std::span<const ToolButton> ToolButtons() noexcept {
    return toolButtons;
}

bool IsToolButton(int id) noexcept {
    return std::ranges::find(toolButtons, id, &ToolButton::id) != std::end(toolButtons);
}

std::span<const HoverDelayItem> HoverDelayMenu() noexcept {
    return hoverDelays;
}

const Command* CommandOf(int id) noexcept {
    for (const Menu& group : commandGroups) {
        for (const Command& command : group.items) {
            if (id != 0 && (command.menuId == id || command.toolId == id)) {
                return &command;
            }
        }
    }
    return nullptr;
}

CommandState StateOfCommand(int id, const CommandSnapshot& snapshot) noexcept {
    const Command* const command = CommandOf(id);
    if (command == nullptr) {
        return {};
    }
    return {.checked = command->isChecked != nullptr && command->isChecked(snapshot),
            .enabled = !(snapshot.transferRunning && command->underTransfer == Refused),
            .waits = snapshot.transferRunning && command->underTransfer == Waits};
}

StatusTexts StatusBarTexts(const CommandSnapshot& snapshot, int intervalMs, const std::wstring& layoutName) {
    return {InputModeStatus(snapshot.inputMode, intervalMs),
            snapshot.dragDropMode == DragDropMode::Inject ? L"Injection" : L"Drag and drop",
            LayoutStatus(snapshot, layoutName), WarningStatus(snapshot)};
}

std::wstring BriefStatus(std::wstring text) {
    for (const std::wstring_view word : {L" entry", L" layout", L" and drop", L" to other programs", L", as stored"}) {
        const std::size_t place = text.find(word);
        if (place != std::wstring::npos && (text.ends_with(word) || text[place + word.size()] == L',')) {
            text.erase(place, word.size());
        }
    }
    return text;
}

} // namespace vextrel
