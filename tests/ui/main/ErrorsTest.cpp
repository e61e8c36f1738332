#include "core/ids.h"
#include "faults/FaultyApp.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

/// Waits for the report of an error and closes it; returns its text.
std::wstring Acknowledge(const Process& program) {
    HWND report = nullptr;
    Await("an error", [&] {
        for (const HWND window : program.Windows(formClass))
            report = GetDlgItem(window, ids::txtError) ? window : report;
        return report != nullptr;
    });
    std::wstring text = TextOf(GetDlgItem(report, ids::txtError));
    for (const HWND window : program.Windows(formClass))
        EXPECT_EQ(IsWindowEnabled(window) != FALSE, window == report);
    PostMessageW(report, WM_COMMAND, ids::cmdClose, 0);
    Await("the report has gone", [&] { return !IsWindow(report); });
    return text;
}

TEST(Errors, AreShownOneAtATimeAndThePasswordStays) {
    const Sandbox sandbox({}, L"vextrel_faults.exe");
    SetEnvironmentVariableW(faults::faultAtStart, WC_LINK); // the dialog has one
    const FaultyApp app(sandbox);
    SetEnvironmentVariableW(faults::faultAtStart, nullptr);
    app.Command(ids::mnuHelpAbout);
    EXPECT_EQ(Acknowledge(app.Running()), L"mnuHelpAbout_Click\r\n8: Not enough memory.");
    const std::pair<Fault, const wchar_t*> kinds[] = {{Fault::OurError, L"13: Type mismatch"},
                                                      {Fault::SystemError, L"5: Access denied."},
                                                      {Fault::OutOfMemory, L"7: Out of memory"},
                                                      {Fault::StandardError, L"5: broken"},
                                                      {Fault::Unknown, L"5: Invalid procedure call or argument"}};
    for (const auto& [kind, text] : kinds) {
        app.Order(L"mnuHelpAbout_Click", 1, kind);
        app.Command(ids::mnuHelpAbout);
        EXPECT_EQ(Acknowledge(app.Running()), std::wstring(L"mnuHelpAbout_Click\r\n") + text);
    }

    // A failing timer has one dialog, however often it fails while that is open. Another handler's error waits.
    app.Order(L"tmrForegroundCheck_Timer", 1000);
    Await("the timer goes on failing", [&] { return app.TimesLeft() <= 990; });
    app.Order(L"mnuFileKeepOnTop_Click");
    app.Command(ids::mnuFileKeepOnTop);
    Await("the second one fails, too", [&] { return app.TimesLeft() == 0; });
    EXPECT_EQ(Acknowledge(app.Running()), L"tmrForegroundCheck_Timer\r\n13: Type mismatch");
    EXPECT_EQ(Acknowledge(app.Running()), L"mnuFileKeepOnTop_Click\r\n13: Type mismatch");

    Pointer pointer;
    app.ClickPassword(pointer, L"ab");
    app.Order(L"ButtonClick ");
    pointer.Click(app.FindKey(L"q"));
    EXPECT_EQ(Acknowledge(app.Running()), L"ButtonClick \r\n13: Type mismatch");
    EXPECT_EQ(app.Password(), L"ab");
    app.Order(L"Form_Unload");
    PostMessageW(app.Main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(Acknowledge(app.Running()), L"Form_Unload\r\n13: Type mismatch");
    EXPECT_EQ(app.Running().ExitCode(), 0U);
}

TEST(Errors, AtTheStartAreReportedAndEndTheProgram) {
    const Sandbox sandbox({}, L"vextrel_faults.exe");
    // At once, and when the main window exists already.
    for (const auto& [fault, error] :
         {std::pair{L"Sub Main", L"13: Type mismatch"}, {STATUSCLASSNAMEW, L"8: Not enough memory."}}) {
        SetEnvironmentVariableW(faults::faultAtStart, fault);
        const Process program(sandbox.Program());
        SetEnvironmentVariableW(faults::faultAtStart, nullptr);
        EXPECT_EQ(Acknowledge(program), L"Sub Main\r\n" + std::wstring(error));
        EXPECT_EQ(program.ExitCode(), 1U);
    }
}

} // namespace
} // namespace vextrel::driver
