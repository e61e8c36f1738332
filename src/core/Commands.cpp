#include "core/Commands.h"

#include "core/ids.h"

#include <algorithm>
#include <iterator>

namespace vextrel {

namespace {

constexpr MenuItem separator{};

constexpr MenuItem fileItems[] = {
    {ids::mnuFileKeepOnTop, L"Keep on &Top"},
    {ids::mnuFileExit, L"E&xit"},
};
constexpr MenuItem modeItems[] = {
    {ids::mnuModeStandard, L"1. Standard"},
    {ids::mnuModeHover, L"2. Hover Entry"},
    {ids::mnuModeHiddenMouseAndHover, L"3. Hidden Mouse and Hover Entry"},
};
constexpr MenuItem viewItems[] = {
    {ids::mnuViewToolbar, L"&Toolbar"},
    {ids::mnuViewProtectiveLayer, L"Protective Layer"},
    separator,
    {ids::mnuViewPasswordMask, L"&Password Mask"},
};
constexpr MenuItem optionItems[] = {
    {ids::mnuOptionsBeepOnHover, L"&Beep on Hover Entry"},
    {ids::mnuOptionsKeepPasswordAfterDragDrop, L"&Keep Password after Drag Drop"},
    separator,
    {ids::mnuOptionsDragDrop, L"Drag and Drop Mode"},
    {ids::mnuOptionsInjectMode, L"Injection Mode"},
    separator,
    {ids::mnuOptionsSaveSettingsInINI, L"Save setting changes in the vxrconfig.ini file"},
};
constexpr MenuItem layoutItems[] = {
    {ids::mnuKeyboardLayoutDefault, L"Default Language Layout"},
    {ids::mnuKeyboardLayoutEnglish, L"English Layout"},
    {ids::mnuKeyboardLayoutLastSaved, L"Load Last Imported Layout"},
    separator,
    {ids::mnuKeyboardLayoutImport, L"Import a Layout..."},
    {ids::mnuKeyboardCreateNewLayoutFile, L"Save current layout..."},
};
constexpr MenuItem helpItems[] = {
    {ids::mnuHelpVisitHomepage, L"Visit Vextrel homepage"},
    {ids::mnuHelpDonate, L"Donate..."},
    separator,
    {ids::mnuHelpAbout, L"About Vextrel"},
};

constexpr Menu menuBar[] = {
    {L"&File", fileItems},      {L"&Mouse Mode", modeItems},        {L"&View", viewItems},
    {L"&Options", optionItems}, {L"&Keyboard Layout", layoutItems}, {L"Help", helpItems},
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
    {ids::toolClear, L"Clear", L"Clear text/password", ToolButtonStyle::Plain, false},
};

constexpr HoverDelayItem hoverDelays[] = {
    {ids::hoverDelayHalfSecond, L"halfseconddely", L"Half Second Delay", 500},
    {ids::hoverDelayOneSecond, L"oneseconddelay", L"One Second Delay", 1000},
    {ids::hoverDelayOneAndAHalfSeconds, L"oneandhalfseconddelay", L"One and a Half Second Delay", 1500},
    {ids::hoverDelayTwoSeconds, L"twosecondsdelay", L"Two Second Delay", 2000},
};

template <auto member, auto value = true>
bool Is(const CommandSnapshot& snapshot) noexcept {
    return snapshot.*member == value;
}

using S = CommandSnapshot;

constexpr Command commands[] = {
    {ids::mnuFileKeepOnTop, ids::toolKeepOnTop, Is<&S::keepOnTop>},
    {ids::mnuFileExit},
    {ids::mnuModeStandard, ids::toolStandard, Is<&S::inputMode, InputMode::Standard>},
    {ids::mnuModeHover, ids::toolHover, Is<&S::inputMode, InputMode::Hover>},
    {ids::mnuModeHiddenMouseAndHover, ids::toolHideMouse, Is<&S::inputMode, InputMode::HiddenMouseAndHover>},
    {ids::mnuViewToolbar, 0, Is<&S::toolbarShown>},
    {ids::mnuViewProtectiveLayer, 0, Is<&S::layerMarked>},
    {ids::mnuViewPasswordMask, ids::toolToggleMask, Is<&S::textIsMasked>, UnderTransfer::Refused},
    {ids::mnuOptionsBeepOnHover, ids::toolBeep, Is<&S::beepOnHover>},
    {ids::mnuOptionsKeepPasswordAfterDragDrop, ids::toolKeepPassword, Is<&S::keepPassword>},
    {ids::mnuOptionsDragDrop, 0, Is<&S::dragDropMode, DragDropMode::DragDrop>},
    {ids::mnuOptionsInjectMode, 0, Is<&S::dragDropMode, DragDropMode::Inject>},
    {0, ids::toolInject, Is<&S::dragDropMode, DragDropMode::Inject>},
    {ids::mnuOptionsSaveSettingsInINI, 0, Is<&S::saveSettings>},
    {ids::mnuKeyboardLayoutDefault, 0, Is<&S::layout, LayoutMark::Default>, UnderTransfer::Refused},
    {ids::mnuKeyboardLayoutEnglish, 0, Is<&S::layout, LayoutMark::English>, UnderTransfer::Refused},
    {ids::mnuKeyboardLayoutLastSaved, 0, Is<&S::layout, LayoutMark::LastSaved>, UnderTransfer::Refused},
    {ids::mnuKeyboardLayoutImport, 0, nullptr, UnderTransfer::Refused},
    {ids::mnuKeyboardCreateNewLayoutFile, 0, nullptr, UnderTransfer::Refused},
    {ids::mnuHelpVisitHomepage},
    {ids::mnuHelpDonate},
    {ids::mnuHelpAbout},
    {0, ids::toolRefresh, nullptr, UnderTransfer::Refused},
    {0, ids::toolClear, nullptr, UnderTransfer::Refused},
};

/// Seconds with at least one decimal: "2.0 s", "1.25 s".
std::wstring SecondsText(int milliseconds) {
    std::wstring fraction = std::to_wstring(1000 + milliseconds % 1000).substr(1);
    while (fraction.size() > 1 && fraction.back() == L'0') {
        fraction.pop_back();
    }
    return std::to_wstring(milliseconds / 1000) + L"." + fraction + L" s";
}

std::wstring InputModeStatus(InputMode mode, int intervalMs) {
    switch (mode) {
    case InputMode::Hover: return L"Hover entry, " + SecondsText(intervalMs);
    case InputMode::HiddenMouseAndHover: return L"Hidden mouse, " + SecondsText(intervalMs);
    case InputMode::Standard: break;
    }
    return L"Standard entry";
}

const wchar_t* LayoutStatus(LayoutMark mark) noexcept {
    switch (mark) {
    case LayoutMark::Default: return L"Default layout";
    case LayoutMark::LastSaved: return L"Last imported layout";
    case LayoutMark::Imported: return L"Imported layout";
    // Captions that no command has set yet are the built-in ones.
    case LayoutMark::None:
    case LayoutMark::English: break;
    }
    return L"English layout";
}

} // namespace

std::span<const Menu> MenuBar() noexcept {
    return menuBar;
}

std::span<const ToolButton> ToolButtons() noexcept {
    return toolButtons;
}

bool IsToolButton(int id) noexcept {
    return std::any_of(std::begin(toolButtons), std::end(toolButtons),
                       [id](const ToolButton& button) { return button.id == id; });
}

std::span<const HoverDelayItem> HoverDelayMenu() noexcept {
    return hoverDelays;
}

const Command* CommandOf(int id) noexcept {
    const auto* const found = std::find_if(std::begin(commands), std::end(commands), [id](const Command& command) {
        return id != 0 && (command.menuId == id || command.toolId == id);
    });
    return found == std::end(commands) ? nullptr : found;
}

CommandState StateOfCommand(int id, const CommandSnapshot& snapshot) noexcept {
    const Command* const command = CommandOf(id);
    if (command == nullptr) {
        return {};
    }
    return {.checked = command->isChecked != nullptr && command->isChecked(snapshot),
            .enabled = !(snapshot.transferRunning && command->underTransfer == UnderTransfer::Refused)};
}

StatusTexts StatusBarTexts(const CommandSnapshot& snapshot, int intervalMs) {
    return {InputModeStatus(snapshot.inputMode, intervalMs),
            snapshot.dragDropMode == DragDropMode::Inject ? L"Injection" : L"Drag and drop",
            LayoutStatus(snapshot.layout)};
}

std::wstring BriefStatus(std::wstring text) {
    for (const std::wstring_view word : {L" entry", L" layout", L" and drop"}) {
        if (const std::size_t place = text.find(word); place != std::wstring::npos) {
            text.erase(place, word.size());
        }
    }
    return text;
}

} // namespace vextrel
