#include "core/Commands.h"
#include "core/OptionValues.h"
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Machine.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>

#include <fstream>
#include <memory>

namespace vextrel::driver {
namespace {

constexpr const wchar_t* persistentKeys[] = {
    settings::saveSettings, settings::viewToolbar,        settings::keyboardLayout, settings::mouseMode,
    settings::dragDropMode, settings::viewPasswordMask,   settings::beepOnHover,    settings::keepPassword,
    settings::transparency, settings::hoverTimerInterval, settings::toolbarVisible,
};

/// Fills the settings file with a value that the program never writes, so that every write shows.
void MarkSettings(const Sandbox& sandbox) {
    std::string bytes = "[Settings]\r\n";
    for (const wchar_t* key : persistentKeys)
        bytes += Narrow(key) + "=?\r\n";
    sandbox.Write(bytes);
}

/// As "Key=value", one behind the other.
std::wstring WritesSinceMark(const Sandbox& sandbox) {
    std::wstring writes;
    for (const wchar_t* key : persistentKeys)
        if (const std::wstring value = sandbox.Setting(key); value != L"?")
            writes += (writes.empty() ? L"" : L"; ") + std::wstring(key) + L"=" + value;
    return writes;
}

/// The first command whose mark or button does not show the snapshot's state; 0 if all do. Of the menu, which is slow
/// to ask, only what differs from another snapshot, if one is given.
int WrongState(const App& app, const CommandSnapshot& expected, const CommandSnapshot* before) {
    for (const Menu& menu : MenuBar())
        for (const Command& item : menu.items)
            if (const CommandState state = StateOfCommand(item.menuId, expected);
                item.menuId != 0 && !(before && state == StateOfCommand(item.menuId, *before)) &&
                app.Checked(item.menuId) != state.checked)
                return item.menuId;
    for (const ToolButton& tool : ToolButtons())
        if (((app.ToolState(tool.id) & TBSTATE_CHECKED) != 0) != StateOfCommand(tool.id, expected).checked)
            return tool.id;
    return 0;
}

void AwaitState(const App& app, const CommandSnapshot& expected, const CommandSnapshot* before = nullptr) {
    int wrong = 0;
    EXPECT_TRUE(WaitFor([&] { return (wrong = WrongState(app, expected, before)) == 0; })) << "state of " << wrong;
}

void Choose(const App& app, int command, int answer) {
    if (answer == 0) {
        Ask(app.Main(), WM_COMMAND, static_cast<WPARAM>(command));
        return;
    }
    app.Command(command);
    const HWND dialog = app.AwaitDialog();
    Check(PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(answer), 0) != FALSE, "answering");
    Await("the dialog has gone", [&] { return !IsWindow(dialog) && IsWindowEnabled(app.Main()) != FALSE; });
}

/// Takes the browser's place for a while: leaves the address or page that it is to open in a file. Not on somebody's
/// machine, where it might not give it back.
class BrowserStandIn {
  public:
    explicit BrowserStandIn(const wchar_t* kind = L"https")
        : opener_(kind + std::wstring(L"\\shell\\open\\command")) {
        usual_.resize(MAX_PATH);
        auto bytes = static_cast<DWORD>(usual_.size() * sizeof(wchar_t));
        Check(RegGetValueW(HKEY_CLASSES_ROOT, opener_.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, usual_.data(),
                           &bytes) == 0,
              "reading the browser's place");
        SetOpener(L"cmd.exe /c echo %1>\"" + File().wstring() + L"\"");
    }
    ~BrowserStandIn() {
        SetOpener(usual_.c_str());
        std::filesystem::remove(File());
    }
    BrowserStandIn(const BrowserStandIn&) = delete;
    BrowserStandIn& operator=(const BrowserStandIn&) = delete;

    static bool HasOpened(std::string_view address) {
        std::string opened;
        std::ifstream(File()) >> opened;
        std::erase(opened, '"');
        return opened == address;
    }

  private:
    void SetOpener(const std::wstring& command) const {
        RegSetKeyValueW(HKEY_CLASSES_ROOT, opener_.c_str(), nullptr, REG_SZ, command.c_str(),
                        static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t)));
    }
    static std::filesystem::path File() { return std::filesystem::temp_directory_path() / L"vextrel-opened.txt"; }

    std::wstring opener_;
    std::wstring usual_;
};

constexpr std::string_view homepage = "https://vextrel.example/vextrel-v3/";
constexpr std::string_view donations = "https://vextrel.example/donate/";

int AlphaOf(HWND window) {
    BYTE alpha = 0;
    DWORD flags = 0;
    return GetLayeredWindowAttributes(window, nullptr, &alpha, &flags) ? alpha : -1;
}

bool IsTopmost(const App& app) {
    return (GetWindowLongPtrW(app.Main(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

struct Step {
    int command;
    const wchar_t* writes;
    void (*change)(CommandSnapshot&) = nullptr; ///< what becomes different
    bool (*effect)(const App&) = nullptr;
    int answer = 0; ///< the button of the question that comes up; 0: none comes
};

TEST(Commands, ActMarkAndWriteExactlyTheirKeys) {
    using namespace ids;
    using S = CommandSnapshot;
    constexpr auto standard = [](S& s) { s.inputMode = InputMode::Standard; };
    constexpr auto hover = [](S& s) { s.inputMode = InputMode::Hover; };
    constexpr auto hidden = [](S& s) { s.inputMode = InputMode::HiddenMouseAndHover; };
    constexpr auto inject = [](S& s) { s.dragDropMode = DragDropMode::Inject; };
    constexpr auto dragDrop = [](S& s) { s.dragDropMode = DragDropMode::DragDrop; };
    constexpr auto beep = [](S& s) { s.beepOnHover = !s.beepOnHover; };
    constexpr auto keep = [](S& s) { s.keepPassword = !s.keepPassword; };
    constexpr auto mask = [](S& s) { s.textIsMasked = !s.textIsMasked; };
    constexpr auto top = [](S& s) { s.keepOnTop = !s.keepOnTop; };
    constexpr auto toolbar = [](S& s) { s.toolbarShown = !s.toolbarShown; };
    constexpr auto save = [](S& s) { s.saveSettings = !s.saveSettings; };
    constexpr auto lastSaved = [](S& s) { s.layout = LayoutMark::LastSaved; };
    constexpr auto english = [](S& s) { s.layout = LayoutMark::English; };
    constexpr auto systems = [](S& s) { s.layout = LayoutMark::Default; };
    constexpr auto labelShown = [](const App& app) { return app.Visible(lblHoverDelay) && app.Visible(sldHoverDelay); };
    constexpr auto labelHidden = [](const App& app) {
        return !app.Visible(lblHoverDelay) && !app.Visible(sldHoverDelay);
    };
    constexpr auto barShown = [](const App& app) { return app.Visible(tbToolbar); };
    constexpr auto barHidden = [](const App& app) { return !app.Visible(tbToolbar); };
    constexpr auto inClear = [](const App& app) { return app.Visible(txtText) && !app.Visible(txtPassword); };
    constexpr auto masked = [](const App& app) { return !app.Visible(txtText) && app.Visible(txtPassword); };
    constexpr auto inOrder = [](const App& app) { return app.Text(firstKey + 16) == L"q"; };
    constexpr auto notTopmost = [](const App& app) { return !IsTopmost(app); };
    constexpr auto sliderAtEnd = [](const App& app) { return Ask(app.Control(sldHoverDelay), TBM_GETPOS) == 2000; };
    constexpr auto oneAsterisk = [](const App& app) { return app.Text(txtPassword) == L"*"; };
    constexpr auto empty = [](const App& app) { return app.Text(txtPassword).empty(); };
    constexpr auto homepageOpens = [](const App&) { return BrowserStandIn::HasOpened(homepage); };
    constexpr auto donationsOpen = [](const App&) { return BrowserStandIn::HasOpened(donations); };

    const std::vector<Step> steps{
        {mnuModeStandard, L"", nullptr, labelHidden},
        {mnuModeHover, L"MouseMode=Hover Entry Mode", hover, labelShown},
        {mnuModeHover, L""},
        {toolHover, L""},
        {toolHideMouse, L"", nullptr, labelShown, IDCANCEL},
        {mnuModeHiddenMouseAndHover, L"MouseMode=Hover Entry and Hide Mouse", hidden, labelShown, IDOK},
        {mnuModeHiddenMouseAndHover, L""},
        {toolStandard, L"MouseMode=Standard Mode", standard, labelHidden},
        {hoverDelayHalfSecond, L"MouseMode=Hover Entry Mode; Hover Timer Interval=500", hover, labelShown},
        {hoverDelayOneSecond, L"Hover Timer Interval=1000"},
        {hoverDelayOneAndAHalfSeconds, L"Hover Timer Interval=1500"},
        {hoverDelayTwoSeconds, L"Hover Timer Interval=2000", nullptr, sliderAtEnd},
        {mnuModeStandard, L"MouseMode=Standard Mode", standard, labelHidden},
        {toolHover, L"MouseMode=Hover Entry Mode", hover},
        {toolHideMouse, L"MouseMode=Hover Entry and Hide Mouse", hidden, nullptr, IDOK},
        {mnuModeStandard, L"MouseMode=Standard Mode", standard},

        {toolInject, L"Drag Drop Mode=Inject", inject},
        {mnuOptionsDragDrop, L"Drag Drop Mode=Drag Drop", dragDrop},
        {mnuOptionsInjectMode, L"Drag Drop Mode=Inject", inject},
        {toolInject, L"Drag Drop Mode=Drag Drop", dragDrop},
        {mnuViewPasswordMask, L"View Password Mask=False", mask, inClear},
        {toolToggleMask, L"View Password Mask=True", mask, masked},
        {mnuOptionsBeepOnHover, L"Beep on Hover=True", beep},
        {toolBeep, L"Beep on Hover=False", beep},
        {mnuOptionsKeepPasswordAfterDragDrop, L"Keep Password after Drag Drop=True", keep},
        {toolKeepPassword, L"Keep Password after Drag Drop=False", keep},
        {mnuFileKeepOnTop, L"", top, notTopmost},
        {toolKeepOnTop, L"", top, IsTopmost},
        {mnuViewToolbar, L"View Toolbar=False", toolbar, barHidden},
        {mnuViewToolbar, L"View Toolbar=True", toolbar, barShown},
        {toolScrambleOnScreen, L"", nullptr, inOrder},
        {toolScrambleAll, L"", nullptr, inOrder},
        {toolDvorak, L"", nullptr, inOrder},
        {toolUnscramble, L"", nullptr, inOrder},
        {toolObsfucate, L"", nullptr, oneAsterisk},
        {toolRefresh, L"", nullptr, oneAsterisk},
        {toolClear, L"", nullptr, empty},
        {mnuKeyboardLayoutLastSaved, L"Keyboard Layout=Config", lastSaved},
        {mnuKeyboardLayoutEnglish, L"Keyboard Layout=English", english},
        {mnuKeyboardLayoutDefault, L"Keyboard Layout=Default", systems, inOrder},
        {mnuKeyboardLayoutImport, L"", nullptr, nullptr, IDCANCEL},
        {mnuKeyboardCreateNewLayoutFile, L"", nullptr, nullptr, IDCANCEL},
        {mnuHelpVisitHomepage, L"", nullptr, homepageOpens},
        {mnuHelpDonate, L"", nullptr, donationsOpen},

        {mnuOptionsSaveSettingsInINI, L"", save, nullptr, IDNO},
        {toolBeep, L"", beep},
        {toolInject, L"", inject},
        {hoverDelayOneSecond, L"", hover},
        {mnuOptionsSaveSettingsInINI, L"Save Settings in INI=True", save},
        {toolInject, L"Drag Drop Mode=Drag Drop", dragDrop},
        {mnuOptionsSaveSettingsInINI, L"Save Settings in INI=False", save, nullptr, IDYES},
        {mnuViewPasswordMask, L"", mask},
    };

    const auto browser = UnderWine() ? std::make_unique<BrowserStandIn>() : nullptr;
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    pointer.MoveTo({0, 0}); // hover entry must not find it over a key
    CommandSnapshot state;
    state.layout = LayoutMark::English;
    AwaitState(app, state);
    Ask(app.Control(ids::txtPassword), WM_CHAR, 'a');

    for (std::size_t number = 0; number < steps.size(); ++number) {
        const Step& step = steps[number];
        SCOPED_TRACE(testing::Message() << "step " << number << ", command " << step.command);
        MarkSettings(sandbox);
        const bool opensBrowser = step.command == mnuHelpVisitHomepage || step.command == mnuHelpDonate;
        if ((opensBrowser && !browser) || (step.command == mnuKeyboardLayoutDefault && !HasAmericanKeyboard()))
            continue;
        if (step.command == mnuKeyboardLayoutDefault)
            app.Activate(); // the capture types into it
        Choose(app, step.command, step.answer);
        const CommandSnapshot before = state;
        if (step.change)
            step.change(state);
        AwaitState(app, state, &before);
        if (step.command == mnuViewPasswordMask) // written once all is painted
            static_cast<void>(WaitFor([&] { return WritesSinceMark(sandbox) == step.writes; }));
        EXPECT_EQ(WritesSinceMark(sandbox), step.writes);
        EXPECT_TRUE(!step.effect || WaitFor([&] { return step.effect(app); }));
    }
    AwaitState(app, state);
    Ask(app.Main(), WM_COMMAND, ids::mnuFileExit);
    EXPECT_EQ(app.Running().ExitCode(), 0U);
    EXPECT_EQ(WritesSinceMark(sandbox), L"") << "with saving off, nor at the end";
}

TEST(Commands, WhatTheySetIsThereAfterARestart) {
    const Sandbox sandbox;
    CommandSnapshot state;
    RECT firstPlace{};
    {
        const App app(sandbox);
        firstPlace = BoundsOf(app.Main());
        for (const int command :
             {ids::hoverDelayOneAndAHalfSeconds, ids::toolInject, ids::toolToggleMask, ids::toolBeep,
              ids::toolKeepPassword, ids::mnuViewToolbar, ids::mnuKeyboardLayoutLastSaved})
            Choose(app, command, 0);
        Choose(app, ids::mnuModeHiddenMouseAndHover, IDOK);
        Ask(app.Control(ids::sldTransparency), WM_KEYDOWN, VK_HOME);
        EXPECT_EQ(app.Close(), 0U);
    }
    const std::optional<std::string> saved = sandbox.Read();
    const App app(sandbox);
    state = {.inputMode = InputMode::HiddenMouseAndHover,
             .dragDropMode = DragDropMode::Inject,
             .textIsMasked = false,
             .beepOnHover = true,
             .keepPassword = true,
             .toolbarShown = false,
             .layout = LayoutMark::LastSaved};
    AwaitState(app, state);
    EXPECT_EQ(Ask(app.Control(ids::sldHoverDelay), TBM_GETPOS), 1500);
    EXPECT_EQ(Ask(app.Control(ids::sldTransparency), TBM_GETPOS), 20);
    EXPECT_EQ(sandbox.Read(), saved) << "a start writes back what it read";
    const RECT place = BoundsOf(app.Main());
    EXPECT_FALSE(EqualRect(&place, &firstPlace)) << "each start has a place of its own";
}

TEST(Commands, OnlyTheStartWritesWhileSavingIsOff) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> rows[] = {
        // key, before the start, after it
        {L"Save Settings in INI", L"False", L"False"},
        {L"Keyboard Layout", L"english", L"english"},
        {L"MouseMode", L"hover entry mode", L"hover entry mode"},
        {L"Drag Drop Mode", L"Inject", L"Inject"},
        {L"View Password Mask", L"False", L"False"},
        {L"Beep on Hover", L"true", L"true"},
        {L"Keep Password after Drag Drop", L"True", L"True"},
        {L"Transparency", L"200.5", L"200"},
        {L"Hover Timer Interval", L"0", L"2000"},
        {L"Toolbar Visible", L"False", L"False"},
    };
    const Sandbox sandbox;
    for (const auto& [key, before, after] : rows)
        sandbox.SetSetting(key, before);
    const App app(sandbox);
    AwaitState(app, {.dragDropMode = DragDropMode::Inject,
                     .textIsMasked = false,
                     .keepPassword = true,
                     .saveSettings = false,
                     .layout = LayoutMark::English});
    EXPECT_FALSE(app.Visible(ids::tbToolbar)) << "read last, and no mark of the menu";
    EXPECT_EQ(AlphaOf(app.Main()), 200);
    for (const int command :
         {ids::toolHover, ids::hoverDelayHalfSecond, ids::mnuViewToolbar, ids::toolInject, ids::toolToggleMask,
          ids::toolBeep, ids::toolKeepPassword, ids::mnuKeyboardLayoutLastSaved})
        Choose(app, command, 0);
    Ask(app.Control(ids::sldHoverDelay), WM_KEYDOWN, VK_HOME);
    Ask(app.Control(ids::sldTransparency), WM_KEYDOWN, VK_HOME);
    EXPECT_EQ(app.Close(), 0U);
    for (const auto& [key, before, after] : rows)
        EXPECT_EQ(sandbox.Setting(key), after) << Narrow(key);
    EXPECT_EQ(sandbox.Setting(settings::viewToolbar), L"");
}

TEST(Commands, SlidersSetAndDoNotWriteBackWhatTheyWereTold) {
    const Sandbox sandbox;
    sandbox.Write("[Settings]\r\nHover Timer Interval=137\r\nTransparency=131\r\nMouseMode=Hover Entry Mode\r\n");
    const App app(sandbox);
    const HWND hover = app.Control(ids::sldHoverDelay);
    const HWND opacity = app.Control(ids::sldTransparency);
    const auto alpha = [&] { return AlphaOf(app.Main()); };
    EXPECT_EQ(Ask(hover, TBM_GETPOS), 500) << "the nearer end";
    EXPECT_EQ(Ask(opacity, TBM_GETPOS), 51) << "the nearest position";
    EXPECT_EQ(alpha(), 131);
    EXPECT_EQ(sandbox.Setting(settings::hoverTimerInterval), L"137");
    EXPECT_EQ(sandbox.Setting(settings::transparency), L"131");

    const struct {
        HWND slider;
        WPARAM key;
        int position;
        const wchar_t* written;
    } strokes[] = {
        // Let go of where it stands, it tells what it was told.
        {hover, 0, 500, L"137"},         {opacity, 0, 51, L"131"},       {hover, VK_RIGHT, 600, L"600"},
        {hover, VK_NEXT, 1100, L"1100"}, {hover, VK_END, 2000, L"2000"}, {hover, VK_HOME, 500, L"500"},
        {opacity, VK_LEFT, 50, L"128"},  {opacity, VK_END, 100, L"255"}, {opacity, VK_PRIOR, 90, L"230"},
        {opacity, VK_HOME, 20, L"51"},
    };
    for (const auto& [slider, key, position, written] : strokes) {
        SCOPED_TRACE(testing::Message() << position << " by key " << key);
        Ask(slider, key != 0 ? WM_KEYDOWN : WM_KEYUP, key != 0 ? key : VK_HOME);
        EXPECT_EQ(Ask(slider, TBM_GETPOS), position);
        EXPECT_EQ(sandbox.Setting(slider == hover ? settings::hoverTimerInterval : settings::transparency), written);
        EXPECT_TRUE(slider == hover || std::to_wstring(alpha()) == written) << alpha();
    }

    Pointer pointer;
    const auto tip = [&] { return app.Running().Window(L"tooltips_class32"); };
    for (const auto& [slider, value] : {std::pair{opacity, L"100%"}, {hover, L"2.0 s"}}) {
        const RECT bounds = BoundsOf(slider);
        pointer.Pull({bounds.left + (bounds.bottom - bounds.top) / 2 - 2, (bounds.top + bounds.bottom) / 2},
                     {bounds.right + 40, (bounds.top + bounds.bottom) / 2});
        EXPECT_TRUE(WaitFor([&, wanted = value] { return tip() && TextOf(tip()) == wanted; }));
        EXPECT_LE(tip() ? BoundsOf(tip()).bottom : 0, bounds.bottom) << "over no key";
        pointer.Release();
        EXPECT_TRUE(WaitFor([&] { return tip() == nullptr; }));
    }
    EXPECT_TRUE(WaitFor([&] { return sandbox.Setting(settings::hoverTimerInterval) == L"2000"; }))
        << sandbox.Setting(settings::hoverTimerInterval).c_str();

    const auto focused = [&] {
        GUITHREADINFO information{};
        information.cbSize = sizeof information;
        GetGUIThreadInfo(GetWindowThreadProcessId(app.Main(), nullptr), &information);
        return information.hwndFocus;
    };
    EXPECT_TRUE(WaitFor([&] { return focused() == hover; }));
    Ask(app.Main(), WM_COMMAND, ids::mnuModeStandard);
    EXPECT_EQ(focused(), app.PasswordBox()) << "the focus goes with the slider";
}

TEST(Commands, ProtectiveLayerFollowsItsTable) {
    const Sandbox sandbox;
    const App app(sandbox);
    const auto alpha = [&] { return AlphaOf(app.Layer()); };
    constexpr const wchar_t* cancel = nullptr;
    const struct {
        int whileAsked; ///< -1: nothing is asked
        const wchar_t* answer;
        int afterwards;
    } rows[] = {
        {100, cancel, 0}, {-1, cancel, 5},    {100, L"99999999999", 0},
        {-1, cancel, 5},  {100, L"150", 150}, {-1, cancel, 5},
        {150, L"x", 150}, {-1, cancel, 5},    {150, L"300", 150},
        {-1, cancel, 5},  {5, L"7", 7},       {-1, cancel, 5},
        {7, L"5", 5},     {-1, cancel, 5},
    };
    SetWindowPos(app.Main(), nullptr, 0, 0, 900, 450, SWP_NOZORDER | SWP_NOACTIVATE); // room for the notice
    for (std::size_t number = 0; number < std::size(rows); ++number) {
        const auto& [whileAsked, answer, afterwards] = rows[number];
        SCOPED_TRACE(testing::Message() << "row " << number);
        app.Command(ids::mnuViewProtectiveLayer);
        if (whileAsked >= 0) {
            const HWND question = app.Running().AwaitWindow(formClass, L"Transparency Value");
            EXPECT_EQ(alpha(), whileAsked);
            EXPECT_EQ(TextOf(GetDlgItem(question, ids::inputBoxText)), L"100");
            EXPECT_EQ(Ask(GetDlgItem(question, ids::inputBoxText), EM_GETFIRSTVISIBLELINE), 0) << "can be seen, too";
            if (answer)
                Ask(GetDlgItem(question, ids::inputBoxText), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(answer));
            PostMessageW(question, WM_COMMAND, answer ? IDOK : IDCANCEL, 0);
            Await("the question has gone", [&] { return !IsWindow(question); });
        }
        EXPECT_TRUE(WaitFor([&] { return alpha() == afterwards; })) << alpha();
        EXPECT_TRUE(WaitFor([&] { return app.Checked(ids::mnuViewProtectiveLayer) == (whileAsked >= 0); }));
        EXPECT_EQ(app.Text(ids::StatusBar1) == L"The layer keeps its value until the next start",
                  number + 1 == std::size(rows));
    }
}

TEST(Commands, TwoProgramsOverOneSettingsFileLoseNoKey) {
    const Sandbox sandbox;
    for (int key = 0; key < 100; ++key)
        sandbox.SetSetting(L"Key " + std::to_wstring(key), L"kept", L"Row 1 Lower Case");
    const App first(sandbox);
    const App second(sandbox);
    const std::pair<const App&, int> turns[] = {{first, ids::mnuOptionsBeepOnHover},
                                                {second, ids::mnuOptionsKeepPasswordAfterDragDrop}};
    for (int times = 0; times < 301; ++times) {
        for (const auto& [app, command] : turns)
            app.Command(command);
    }
    EXPECT_EQ(first.Close(), 0U);
    EXPECT_EQ(second.Close(), 0U);
    for (int key = 0; key < 100; ++key)
        ASSERT_EQ(sandbox.Setting(L"Key " + std::to_wstring(key), L"Row 1 Lower Case"), L"kept") << key;
    EXPECT_EQ(sandbox.Setting(L"Beep on Hover"), L"True");
    EXPECT_EQ(sandbox.Setting(L"Keep Password after Drag Drop"), L"True");
}

TEST(Commands, AboutTellsVersionAndProtectionsAndEndsWithTheMainWindow) {
    const auto browser = UnderWine() ? std::make_unique<BrowserStandIn>() : nullptr;
    const Sandbox sandbox;
    const App app(sandbox);
    app.Command(ids::mnuHelpAbout);
    const HWND about = app.Running().AwaitWindow(formClass, L"About Vextrel");
    EXPECT_NE(TextOf(GetDlgItem(about, ids::aboutProtections)).find(L"Password masked"), std::wstring::npos);
    bool versionShown = false;
    for (HWND child = GetWindow(about, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        versionShown = versionShown || TextOf(child).starts_with(L"Version ");
    EXPECT_TRUE(versionShown);
    EXPECT_FALSE(IsWindowEnabled(app.Main()));
    Pointer pointer;
    for (const auto& [link, address] : {std::pair{ids::aboutHomepage, homepage}, {ids::aboutDonate, donations}}) {
        const RECT place = BoundsOf(GetDlgItem(about, link));
        if (!browser)
            break;
        pointer.Click({place.left + 9, place.top + 7});
        EXPECT_TRUE(WaitFor([&, wanted = address] { return BrowserStandIn::HasOpened(wanted); })) << address;
    }
    EXPECT_EQ(app.Close(), 0U);
}

TEST(Commands, TheManualOpensFromTheProgramsFolderOrIsSaidToBeMissing) {
    RegSetKeyValueW(HKEY_CLASSES_ROOT, L".html", nullptr, REG_SZ, L"htmlfile", sizeof L"htmlfile"); // Wine has none
    const BrowserStandIn browser(L"htmlfile");
    const Sandbox sandbox;
    const auto manual = sandbox.Folder() / L"docs" / L"manual.html";
    const App app(sandbox);
    app.Command(ids::mnuHelpAbout);
    const HWND about = app.Running().AwaitWindow(formClass, L"About Vextrel");
    BringToFront(about);
    Pointer pointer;
    const auto clickLink = [&] {
        const RECT place = BoundsOf(GetDlgItem(about, ids::aboutManual));
        pointer.Click({place.left + 9, place.top + 7});
    };
    clickLink();
    const HWND message = app.AwaitDialog();
    EXPECT_TRUE(TextOf(GetDlgItem(message, 0xFFFF)).ends_with(manual.wstring()));
    EXPECT_FALSE(IsWindowEnabled(about));
    App::Answer(pointer, message, IDOK);
    std::filesystem::create_directory(manual.parent_path());
    sandbox.Write("<html>", L"docs\\manual.html");
    clickLink();
    EXPECT_TRUE(WaitFor([&] { return BrowserStandIn::HasOpened(manual.string()); }));
    EXPECT_EQ(app.Close(), 0U);
}

TEST(Commands, ACloseRequestEndsAnOpenMenuFirst) {
    enum { OfTheMenuBar, OfTheBox, OfADialogsField };
    for (const int menu : {OfTheMenuBar, OfTheBox, OfADialogsField}) {
        SCOPED_TRACE(menu);
        const Sandbox sandbox;
        const App app(sandbox);
        app.Activate();
        HWND box = app.PasswordBox();
        if (menu == OfADialogsField) {
            app.Command(ids::mnuViewProtectiveLayer);
            Await("the question", [&] {
                box = GetDlgItem(app.Running().Window(formClass, L"Transparency Value"), ids::inputBoxText);
                return box != nullptr;
            });
        }
        if (menu == OfTheMenuBar)
            Keys::Stroke('F', {VK_MENU});
        else
            PostMessageW(box, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(box), MAKELPARAM(300, 300));
        Await("the menu is open", [&] { return app.Running().Window(L"#32768") != nullptr; });
        EXPECT_EQ(app.Close(), 0U);
    }
}

} // namespace
} // namespace vextrel::driver
