#include "core/ids.h"
#include "driver/Target.h"
#include "faults/FaultyApp.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>

namespace vextrel::driver {
namespace {

/// The build whose event handlers fail when they are told to.
class Errors : public testing::Test {
  protected:
    Errors() {
        Await("the layer is shown", [&] { return app_.Layer() != nullptr; });
    }

    std::vector<HWND> Dialogs() const {
        std::vector<HWND> dialogs;
        for (const HWND window : app_.Running().Windows(formClass))
            if (GetDlgItem(window, ids::txtError))
                dialogs.push_back(window);
        return dialogs;
    }

    /// Waits for the report and closes it; returns its text.
    std::wstring Acknowledge() const {
        Await("an error of " + app_.Ordered(), [&] { return !Dialogs().empty(); });
        const HWND dialog = Dialogs().front();
        std::wstring text = TextOf(GetDlgItem(dialog, ids::txtError));
        EXPECT_EQ(Dialogs().size(), 1U);
        EXPECT_FALSE(IsWindowEnabled(app_.Main()));
        EXPECT_FALSE(app_.Layer() && IsWindowEnabled(app_.Layer()));
        Ask(dialog, WM_COMMAND, ids::cmdClose);
        Await("the dialog has gone", [&] { return !IsWindow(dialog); });
        return text;
    }

    Sandbox sandbox_{{}, L"vextrel_faults.exe"};
    FaultyApp app_{sandbox_};
};

TEST_F(Errors, AreShownOneAtATimeAndTheProgramGoesOn) {
    const std::pair<Fault, const wchar_t*> kinds[] = {
        {Fault::OurError, L"13: Type mismatch"},
        {Fault::SystemError, L"5: Access denied."},
        {Fault::OutOfMemory, L"7: Out of memory"},
        {Fault::StandardError, L"5: broken"},
        {Fault::Unknown, L"5: Invalid procedure call or argument"},
    };
    for (const auto& [kind, text] : kinds) {
        app_.Order(L"mnuHelpAbout_Click", 1, kind);
        app_.Command(ids::mnuHelpAbout);
        EXPECT_EQ(Acknowledge(), std::wstring(L"mnuHelpAbout_Click\r\n") + text);
    }

    // A failing timer has one dialog, however often it fails while that is open.
    app_.Order(L"tmrForegroundCheck_Timer", 1000);
    Await("the timer goes on failing", [&] { return app_.TimesLeft() <= 990; });
    EXPECT_EQ(Dialogs().size(), 1U);
    // Another handler's error waits until the first dialog is closed.
    app_.Order(L"mnuFileKeepOnTop_Click");
    app_.Command(ids::mnuFileKeepOnTop);
    Await("the second one fails, too", [&] { return app_.TimesLeft() == 0; });
    EXPECT_EQ(Acknowledge(), L"tmrForegroundCheck_Timer\r\n13: Type mismatch");
    EXPECT_EQ(Acknowledge(), L"mnuFileKeepOnTop_Click\r\n13: Type mismatch");

    // A close request ends the dialog and then the program.
    app_.Order(L"mnuHelpAbout_Click");
    app_.Command(ids::mnuHelpAbout);
    Await("an error dialog", [&] { return !Dialogs().empty(); });
    EXPECT_EQ(app_.Close(), 0U);
}

TEST_F(Errors, OfNoHandlerEndTheProgram) {
    const HWND main = app_.Main();
    const HWND layer = app_.Layer();
    const HWND key = app_.FindKey(L"q");
    const auto slider = [&](int id) { return reinterpret_cast<LPARAM>(app_.Control(id)); };
    const struct {
        const wchar_t* handler;
        HWND window;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    } messages[] = {
        {L"Form_Activate", main, WM_ACTIVATE, WA_ACTIVE, 0},
        {L"Form_GotFocus", main, WM_SETFOCUS, 0, 0},
        {L"Form_MouseMove", main, WM_MOUSEMOVE, 0, 0},
        {L"Form_QueryUnload", main, WM_CLOSE, 0, 0},
        {L"DpiChanged", main, WM_DPICHANGED, 0, 0},
        {L"DisplayChange", main, WM_DISPLAYCHANGE, 0, 0},
        {L"SessionChange", main, WM_WTSSESSION_CHANGE, 0, 0},
        {L"Resize", main, WM_SIZE, SIZE_RESTORED, 0},
        {L"FormMove", main, WM_MOVE, 0, 0},
        {L"tmrCheckActiveWindow_Timer", main, WM_TIMER, 1, 0},
        {L"Hover Delay Slider Change Error", main, WM_HSCROLL, TB_THUMBTRACK, slider(ids::sldHoverDelay)},
        {L"Transparency Slider Change Error", main, WM_HSCROLL, TB_THUMBTRACK, slider(ids::sldTransparency)},
        {L"VextrelForm", main, WM_NULL, 0, 0},
        {L"ButtonClick ", key, BM_CLICK, 0, 0},
        {L"Command_MouseMove", key, WM_MOUSEMOVE, 0, 0},
        {L"KeyButton", key, WM_MOUSEMOVE, 0, 0},
        {L"txtPassword", app_.Control(ids::txtPassword), WM_MOUSEMOVE, 0, 0},
        {L"txtText", app_.Control(ids::txtText), WM_MOUSEMOVE, 0, 0},
        {L"Form_KeyDown", main, WM_KEYDOWN, VK_F1, 1},
        {L"Form_KeyUp", app_.Control(ids::sldHoverDelay), WM_KEYUP, VK_SHIFT, 0},
        {L"tbToolbar_MouseMove", app_.Control(ids::tbToolbar), WM_MOUSEMOVE, 0, 0},
        {L"Form_MouseMove", layer, WM_MOUSEMOVE, 0, 0},
        {L"Form_MouseActivate", layer, WM_MOUSEACTIVATE, 0, 0},
        {L"Form_MouseDown", layer, WM_LBUTTONDOWN, 0, 0},
        {L"Form_MouseUp", layer, WM_LBUTTONUP, 0, 0},
        {L"ButtonClick ", layer, WM_LBUTTONUP, 0, MAKELPARAM(5, 5)},
        {L"Form_DblClick", layer, WM_LBUTTONDBLCLK, 0, 0},
        {L"Timer1_Timer", layer, WM_TIMER, 1, 0},
        {L"tmrForegroundCheck_Timer", layer, WM_TIMER, 2, 0},
    };
    for (const auto& row : messages) {
        SCOPED_TRACE(Narrow(row.handler));
        app_.Order(row.handler);
        PostMessageW(row.window, row.message, row.wParam, row.lParam);
        EXPECT_EQ(Acknowledge(), row.handler + std::wstring(L"\r\n13: Type mismatch"));
    }

    const std::pair<int, const wchar_t*> commands[] = {
        {ids::mnuFileKeepOnTop, L"mnuFileKeepOnTop_Click"},
        {ids::mnuFileExit, L"mnuFileExit_Click"},
        {ids::mnuModeStandard, L"mnuModeStandard_Click"},
        {ids::mnuModeHover, L"mnuModeHover_Click"},
        {ids::mnuModeHiddenMouseAndHover, L"mnuModeHiddenMouseAndHover_Click"},
        {ids::mnuViewToolbar, L"mnuViewToolbar_Click"},
        {ids::mnuViewProtectiveLayer, L"mnuViewProtectiveLayer_Click"},
        {ids::mnuViewPasswordMask, L"mnuViewPasswordMask_Click"},
        {ids::mnuOptionsBeepOnHover, L"mnuOptionsBeepOnHover_Click"},
        {ids::mnuOptionsKeepPasswordAfterDragDrop, L"mnuOptionsKeepPasswordAfterDragDrop_Click"},
        {ids::mnuOptionsDragDrop, L"mnuOptionsDragDrop_Click"},
        {ids::mnuOptionsInjectMode, L"mnuOptionsInjectMode_Click"},
        {ids::mnuOptionsSaveSettingsInINI, L"mnuOptionsSaveSettingsInINI_Click"},
        {ids::mnuKeyboardLayoutDefault, L"mnuKeyboardLayoutDefault_Click"},
        {ids::mnuKeyboardLayoutEnglish, L"mnuKeyboardLayoutEnglish_Click"},
        {ids::mnuKeyboardLayoutLastSaved, L"mnuKeyboardLayoutLastSaved_Click"},
        {ids::mnuKeyboardLayoutImport, L"mnuKeyboardLayoutImport_Click"},
        {ids::mnuKeyboardCreateNewLayoutFile, L"mnuKeyboardCreateNewLayoutFile_Click"},
        {ids::mnuHelpVisitHomepage, L"mnuHelpVisitHomepage_Click"},
        {ids::mnuHelpDonate, L"mnuHelpDonate_Click"},
        {ids::mnuHelpAbout, L"mnuHelpAbout_Click"},
        {ids::toolClear, L"tbToolbar_ButtonClick"},
        {ids::hoverDelayOneSecond, L"tbToolbar_ButtonMenuClick"},
    };
    for (const auto& [id, handler] : commands) {
        app_.Order(handler);
        app_.Command(id);
        EXPECT_EQ(Acknowledge(), handler + std::wstring(L"\r\n13: Type mismatch"));
    }
    Ask(key, WM_LBUTTONDOWN);
    app_.Order(L"ButtonMouseUp ");
    PostMessageW(key, WM_LBUTTONUP, 0, 0);
    EXPECT_EQ(Acknowledge(), L"ButtonMouseUp \r\n13: Type mismatch");
    app_.Command(ids::toolClear);
    Await("the box is empty", [&] { return app_.Text(ids::txtPassword).empty(); });
    Pointer pointer;
    app_.ClickPassword(pointer, L"ok");
    app_.Order(L"Form_Unload");
    PostMessageW(main, WM_CLOSE, 0, 0);
    EXPECT_EQ(Acknowledge(), L"Form_Unload\r\n13: Type mismatch");
    EXPECT_EQ(app_.Running().ExitCode(), 0U);
}

TEST_F(Errors, OfADragLeaveThePasswordWhole) {
    const Target target;
    target.KeepClearOf(BoundsOf(app_.Main()));
    app_.Activate();
    Pointer pointer;
    app_.ClickPassword(pointer, L"ab");
    int drops = 0;
    const std::pair<const wchar_t*, bool> handlers[] = {{L"txtPassword_OLEStartDrag", false},
                                                        {L"Transfer", true},
                                                        {L"Timer1_Timer", true},
                                                        {L"txtPassword_OLECompleteDrag", true},
                                                        {L"txtText_OLEStartDrag", false},
                                                        {L"txtText_OLECompleteDrag", true}};
    for (const auto& [handler, drags] : handlers) {
        SCOPED_TRACE(Narrow(handler));
        const bool plain = std::wcsncmp(handler, L"txtText", 7) == 0;
        if (plain != app_.Visible(ids::txtText)) {
            app_.Command(ids::mnuViewPasswordMask);
            Await("the other box is shown", [&] { return app_.Visible(ids::txtText); });
        }
        app_.Order(handler);
        const POINT field = CentreOf(target.Field(target::dropField));
        pointer.Pull(CentreOf(app_.PasswordBox()), field);
        if (drags)
            Await("the hint is there", [&] {
                const auto windows = app_.Running().Windows(formClass, L"");
                return std::any_of(windows.begin(), windows.end(),
                                   [](HWND window) { return GetDlgItem(window, ids::dragNoteHeader) != nullptr; });
            });
        pointer.MoveTo({field.x + 1, field.y}, 1, Milliseconds(40));
        pointer.Release();
        drops += drags;
        Await("the drop arrives", [&] { return target.Drops() == drops; });
        EXPECT_EQ(Acknowledge(), handler + std::wstring(L"\r\n13: Type mismatch"));
        if (drags && std::wcsstr(handler, L"CompleteDrag") == nullptr) {
            Await("the password has been handed over", [&] { return app_.Text(ids::txtPassword).empty(); });
            app_.Activate();
            app_.ClickPassword(pointer, L"ab");
        }
        EXPECT_EQ(TextOf(app_.PasswordBox()), plain ? L"ab" : L"**");
    }
    EXPECT_EQ(app_.Close(), 0U);
}

TEST(StartOfTheProgram, ThatFailsIsReported) {
    const Sandbox sandbox({}, L"vextrel_faults.exe");
    // At once, and when the main window exists already.
    for (const auto& [fault, error] :
         {std::pair{L"Sub Main", L"13: Type mismatch"}, {STATUSCLASSNAMEW, L"8: Not enough memory."}}) {
        SetEnvironmentVariableW(faults::faultAtStart, fault);
        const Process program(sandbox.Program());
        SetEnvironmentVariableW(faults::faultAtStart, nullptr);
        HWND dialog = nullptr;
        Await("the error", [&, isError = [](HWND window) { return GetDlgItem(window, ids::cmdClose) != nullptr; }] {
            const auto windows = program.Windows(formClass, L"Vextrel");
            const auto found = std::find_if(windows.begin(), windows.end(), isError);
            dialog = found != windows.end() ? *found : nullptr;
            return dialog != nullptr;
        });
        EXPECT_EQ(TextOf(GetDlgItem(dialog, ids::txtError)), L"Sub Main\r\n" + std::wstring(error));
        PostMessageW(dialog, WM_COMMAND, ids::cmdClose, 0);
        EXPECT_EQ(program.ExitCode(), 1U);
    }
}

TEST(StartOfADialog, ThatFailsIsReportedAndTheProgramGoesOn) {
    const Sandbox sandbox({}, L"vextrel_faults.exe");
    SetEnvironmentVariableW(faults::faultAtStart, WC_LINK);
    const App app(sandbox);
    SetEnvironmentVariableW(faults::faultAtStart, nullptr);
    app.Command(ids::mnuHelpAbout);
    Await("the error", [&] {
        for (const HWND window : app.Running().Windows(formClass, L"Vextrel"))
            if (GetDlgItem(window, ids::cmdClose))
                return PostMessageW(window, WM_COMMAND, ids::cmdClose, 0) != FALSE;
        return false;
    });
    Await("the main window again", [&] { return IsWindowEnabled(app.Main()) && IsWindowEnabled(app.Layer()); });
    EXPECT_EQ(app.Close(), 0U);
}

} // namespace
} // namespace vextrel::driver
