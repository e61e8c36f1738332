// What the commands do to the window and the settings file, and where the window stands.

#include "core/Commands.h"
#include "driver/Machine.h"
#include "driver/Remote.h"
#include "driver/Stage.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <fstream>

namespace vextrel::driver {
namespace {

using namespace ids;

struct Window : testing::Test, Stage {
    Window()
        : Stage({}, {}) {}
    void Do(int command) const { Ask(app->Main(), WM_COMMAND, static_cast<WPARAM>(command)); }
    /// Of a command its state, of a button whether it is pressed, of a control whether it shows.
    [[nodiscard]] bool IsOn(int id) const {
        if (id < mnuFileKeepOnTop)
            return app->Visible(id);
        return id < toolStandard ? app->Checked(id) : (app->ToolState(id) & TBSTATE_CHECKED) != 0;
    }
};

TEST_F(Window, CommandsActMarkAndWriteExactlyTheirKeys) {
    const struct {
        int command;
        const char* writes;
        int on = 0, off = 0; ///< a mark, pressed button or control that then shows, and one that does not
        int answer = 0;      ///< to the question that comes up
    } rows[] = {
        {mnuModeHover, "MouseMode=Hover Entry Mode", toolHover, mnuModeStandard},
        {toolHideMouse, "", toolHover, toolHideMouse, IDCANCEL},
        {mnuModeHiddenMouseAndHover, "MouseMode=Hover Entry and Hide Mouse", toolHideMouse, toolHover, IDOK},
        {mnuModeStandard, "MouseMode=Standard Mode", toolStandard, lblHoverDelay},
        {hoverDelayHalfSecond, "MouseMode=Hover Entry Mode\r\nHover Timer Interval=500", sldHoverDelay},
        {hoverDelayTwoSeconds, "Hover Timer Interval=2000", toolHover},
        {toolInject, "Drag Drop Mode=Inject", mnuOptionsInjectMode, mnuOptionsDragDrop},
        {mnuOptionsDragDrop, "Drag Drop Mode=Drag Drop", mnuOptionsDragDrop, toolInject},
        {mnuViewPasswordMask, "View Password Mask=False", txtText, toolToggleMask},
        {toolToggleMask, "View Password Mask=True", mnuViewPasswordMask, txtText},
        {mnuOptionsBeepOnHover, "Beep on Hover=True", toolBeep},
        {mnuOptionsKeepPasswordAfterDragDrop, "Keep Password after Drag Drop=True", toolKeepPassword},
        {mnuFileKeepOnTop, "", 0, toolKeepOnTop},
        {mnuViewToolbar, "View Toolbar=False", 0, tbToolbar},
        {mnuKeyboardLayoutLastSaved, "Keyboard Layout=Config"},
        {mnuKeyboardLayoutEnglish, "Keyboard Layout=English"},
        {mnuOptionsSaveSettingsInINI, "", 0, 0, IDNO},
        {toolBeep, "", 0, mnuOptionsBeepOnHover},
        {mnuOptionsSaveSettingsInINI, "Save Settings in INI=True"},
        {mnuOptionsSaveSettingsInINI, "Save Settings in INI=False", 0, 0, IDYES},
        {toolInject, "", mnuOptionsInjectMode},
    };
    pointer.MoveTo({0, 0}); // hover entry must not find it over a key
    Keys::Stroke('A');
    for (const int onlyThere : {toolScrambleOnScreen, toolScrambleAll, toolDvorak, toolUnscramble, toolObsfucate})
        Do(onlyThere);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "row " << &row - rows << ", command " << row.command);
        sandbox.Write("");
        app->Command(row.command);
        if (row.answer != 0)
            app->Dismiss(app->AwaitDialog(), row.answer);
        Ask(app->Main(), WM_NULL);
        const std::string writes = *row.writes ? std::string("[Settings]\r\n") + row.writes + "\r\n" : "";
        EXPECT_TRUE(WaitFor([&] { return sandbox.Read().value_or("") == writes; })) << sandbox.Read().value_or("");
        EXPECT_TRUE(WaitFor([&] { return row.on == 0 || IsOn(row.on); })) << row.on;
        EXPECT_TRUE(WaitFor([&] { return row.off == 0 || !IsOn(row.off); })) << row.off;
    }
    EXPECT_EQ(app->Text(firstKey + 16), L"q");
    EXPECT_EQ(app->Password(), L"a");
    Do(toolClear);
    EXPECT_EQ(app->Password(), L"");
    const RECT place = BoundsOf(app->Main());
    Do(toolRefresh);
    EXPECT_FALSE(BoundsOf(app->Main()) == place);
    Do(mnuFileExit);
    EXPECT_EQ(app->Running().ExitCode(), 0U);
    EXPECT_EQ(sandbox.Read(), std::nullopt) << "with saving off, nor at the end";
}

TEST_F(Window, SettingsAreThereAfterARestartAndWhatWasReadIsNotWrittenBackAnew) {
    const auto written = [&] { return sandbox.Setting(settings::hoverTimerInterval); };
    const auto setAllAndClose = [&] {
        for (const int command : {toolInject, toolToggleMask, toolBeep, toolKeepPassword, mnuViewToolbar})
            Do(command);
        Ask(app->Control(sldHoverDelay), WM_KEYDOWN, VK_RIGHT);
        Ask(app->Control(sldTransparency), WM_KEYDOWN, VK_LEFT);
        EXPECT_EQ(app->Close(), 0U);
    };
    EXPECT_EQ(app->Close(), 0U);
    sandbox.Write("[Settings]\r\nHover Timer Interval=137\r\n");
    Start();
    Ask(app->Control(sldHoverDelay), WM_KEYUP, VK_HOME); // tells the nearest of its steps
    EXPECT_EQ(written(), L"137");
    Do(mnuKeyboardLayoutLastSaved);
    app->Command(toolHideMouse);
    app->Dismiss(app->AwaitDialog(), IDOK);
    setAllAndClose();
    EXPECT_EQ(written(), L"600");
    sandbox.SetSetting(settings::saveSettings, L"False");
    const auto saved = sandbox.Read();
    Start();
    for (const int on : {toolHideMouse, toolInject, txtText, toolBeep, toolKeepPassword})
        EXPECT_TRUE(WaitFor([&] { return IsOn(on); })) << on;
    EXPECT_FALSE(IsOn(tbToolbar));
    EXPECT_EQ(Ask(app->Control(sldTransparency), TBM_GETPOS), 98);
    setAllAndClose();
    EXPECT_EQ(sandbox.Read(), saved);
}

TEST_F(Window, SharesItsSettingsFileWithASecondProgramWithoutALoss) {
    const std::string captions = "[Row 1 Lower Case]\r\nKey 1=" + std::string(2000, 'x') + "\r\n";
    sandbox.Write("[Settings]\r\n" + captions);
    Do(mnuFileKeepOnTop); // else it would come to lie over the second, which waits for its keys to be free
    const App second(sandbox);
    for (int times = 0; times < 301; ++times) {
        app->Command(mnuOptionsBeepOnHover);
        second.Command(mnuOptionsKeepPasswordAfterDragDrop);
    }
    EXPECT_EQ(app->Close(), 0U);
    EXPECT_EQ(second.Close(), 0U);
    EXPECT_NE(sandbox.Read()->find(captions), std::string::npos);
    EXPECT_EQ(sandbox.Setting(settings::beepOnHover) + sandbox.Setting(settings::keepPassword), L"TrueTrue");
}

TEST_F(Window, OpensPagesAndTheManual) {
    if (!UnderWine())
        GTEST_SKIP() << "it would take the browser's place, on somebody's machine";
    const auto opened = sandbox.Folder() / L"opened.txt";
    const std::wstring browser = L"cmd.exe /c echo %1>\"" + opened.wstring() + L"\"";
    RegSetValueW(HKEY_CLASSES_ROOT, L"https\\shell\\open\\command", REG_SZ, browser.c_str(), 0);
    RegSetValueW(HKEY_CLASSES_ROOT, L".html", REG_SZ, L"https", 0);
    std::filesystem::create_directory(sandbox.Folder() / L"docs");
    sandbox.Write("<html>", L"docs\\manual.html");
    app->Command(mnuHelpAbout);
    const HWND about = app->AwaitForm(L"About Vextrel");
    EXPECT_NE(TextOf(GetDlgItem(about, aboutProtections)).find(L"Password masked"), std::wstring::npos);
    const std::pair<int, const char*> rows[] = {{mnuHelpVisitHomepage, "https://vextrel.example/vextrel-v3/"},
                                                {aboutManual, "\\docs\\manual.html"}};
    for (const auto& [id, page] : rows) {
        if (const HWND link = GetDlgItem(about, id))
            pointer.Click(POINT{BoundsOf(link).left + 9, BoundsOf(link).top + 7});
        else
            app->Command(id);
        std::string line;
        EXPECT_TRUE(WaitFor([&] { return std::ifstream(opened) >> line && line.find(page) != line.npos; })) << line;
        std::filesystem::remove(opened);
    }
    EXPECT_EQ(app->Close(), 0U) << "with the dialog open";
}

TEST_F(Window, HasTheLayerOnItsKeysWhateverHappensToIt) {
    const auto moveTo = [&](LONG x, LONG y) {
        app->MoveTo({x, y});
        Ask(app->Main(), WM_DISPLAYCHANGE, 32, MAKELPARAM(1024, 768));
        // At once: a window manager may bring it back, too.
        EXPECT_TRUE(MonitorFromWindow(app->Main(), MONITOR_DEFAULTTONULL) && BoundsOf(app->Main()).top >= 0) << x;
    };
    const auto hide = [&](int how) {
        ShowWindow(app->Main(), how);
        Await("no window, no layer", [&] { return app->Layer() == nullptr; });
    };
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"a move", [&] { moveTo(61, 0); }},
        {"the toolbar hidden", [&] { Do(mnuViewToolbar); }},
        {"no room to grow", [&] { app->Resize(701, 9999); }},
        {"minimised", [&] { hide(SW_MINIMIZE), ShowWindow(app->Main(), SW_RESTORE); }},
        {"hidden", [&] { hide(SW_HIDE), ShowWindow(app->Main(), SW_SHOW); }},
        {"the layer hidden by another program", [&] { ShowWindow(app->Layer(), SW_HIDE); }},
        {"the layer moved by another program", [&] { MoveWindow(app->Layer(), 0, 0, 9, 9, FALSE); }},
        {"off the screen", [&] { moveTo(9000, 9000); }},
        {"too high to be taken hold of", [&] { moveTo(300, -100); }},
        {"the smallest size", [&] { app->Resize(10, 10); }},
    };
    for (const auto& [name, act] : changes) {
        act();
        EXPECT_TRUE(WaitFor([&] { return app->LayerLiesOnTheKeys(); })) << name;
    }
    EXPECT_GE(Width(BoundsOf(app->Key(1))), 16) << "in the smallest window";
    const RECT suggested{90, 80, 90 + 960, 80 + 600};
    const RemoteMemory memory(app->Running(), sizeof suggested);
    memory.Write(&suggested, sizeof suggested);
    Ask(app->Main(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(memory.Address()));
    EXPECT_TRUE(WaitFor([&] { return BoundsOf(app->Main()) == suggested && app->LayerLiesOnTheKeys(); }));
    EXPECT_EQ(HIWORD(Ask(app->Control(tbToolbar), TB_GETBUTTONSIZE)), 33) << "pictures";
}

TEST_F(Window, ComesToTheTopOncePerChangeOfTheForeground) {
    const HWND other = target.Window();
    const auto isUppermost = [&] {
        HWND window = GetTopWindow(nullptr);
        while (window && window != app->Main() && window != other)
            window = GetWindow(window, GW_HWNDNEXT);
        return window == app->Main();
    };
    const auto tick = [&] { Ask(app->Main(), WM_TIMER, 1); }; // of the watch, without the wait for it
    const auto staysBelow = [&] {
        SetWindowPos(other, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        tick();
        return !isUppermost();
    };
    EXPECT_TRUE(staysBelow()) << "the foreground has not changed";
    BringToFront(other);
    EXPECT_TRUE(WaitFor(isUppermost));
    EXPECT_TRUE(staysBelow()) << "nor has it since";
    Do(mnuFileKeepOnTop);
    app->Activate();
    tick();
    BringToFront(other);
    EXPECT_TRUE(staysBelow()) << "switched off";
}

} // namespace
} // namespace vextrel::driver
