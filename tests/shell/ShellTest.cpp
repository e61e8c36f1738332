// Parts of the shell that no command of the window reaches, called directly.

#include "driver/Machine.h"
#include "driver/Sandbox.h"
#include "driver/Target.h"
#include "transfer/SendKeysPlayer.h"
#include "ui/AboutDialog.h"
#include "ui/DragHint.h"
#include "ui/ErrorDialog.h"
#include "ui/InputBox.h"
#include "win32/FileDialog.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

#include <thread>

namespace vextrel {
namespace {

TEST(SendKeys, StrokesArriveInASecondProgram) {
    if (!driver::HasAmericanKeyboard())
        GTEST_SKIP() << "the keyboard is not American";
    const driver::Target second;
    driver::Pointer pointer;
    pointer.Click(second.Field(target::editField));
    driver::Await("the target is in front", [&] { return GetForegroundWindow() == second.Window(); });
    SendKeysPlayer keys;
    std::wstring record;
    const auto arrives = [&] { return second.Text(target::keyRecord) == record; };
    // Wine 10 lets go of all keys once more when the display tells the target, somewhat late, that it is in front.
    driver::Await("keys come as they are sent", [&] {
        record = second.Text(target::keyRecord) + L"+7F -7F ";
        keys.SendKeys(L"{F16}");
        return driver::WaitFor(arrives, driver::Milliseconds(500));
    });
    record += L"+41 -41 +31 -31 +2E -2E +2E -2E +10 +42 -42 +43 -43 -10 +44 -44 +11 +12 +75 -75 -12 -11 ";
    keys.SendKeys(L"a1{DEL 2}+(bc)d~%{F6}");
    EXPECT_TRUE(driver::WaitFor(arrives)) << second.Text(target::keyRecord);
}

TEST(FileDialogs, LeaveTheCurrentFolderAndTellACancel) {
    const driver::Sandbox sandbox;
    std::filesystem::current_path(sandbox.Folder().parent_path());
    FileDialog dialogs;
    dialogs.CancelError = true;
    dialogs.InitDir = sandbox.Folder();
    dialogs.FileName = sandbox.Program();
    for (const WPARAM button : {WPARAM{IDCANCEL}, WPARAM{IDOK}}) {
        for (const auto show : {&FileDialog::ShowOpen, &FileDialog::ChooseDirectory}) {
            const std::jthread user([button] {
                driver::Await("the dialog", [] { return IsWindowVisible(FindWindowW(L"#32770", nullptr)) != FALSE; });
                const HWND dialog = FindWindowW(L"#32770", nullptr);
                driver::Ask(dialog, WM_NULL); // it has been filled
                PostMessageW(dialog, WM_COMMAND, button, 0);
            });
            EXPECT_EQ((dialogs.*show)(), button == IDCANCEL);
        }
        EXPECT_EQ(dialogs.FileName, sandbox.Program());
        EXPECT_EQ(dialogs.FileTitle, button == IDCANCEL ? L"" : L"vextrel.exe");
        EXPECT_EQ(dialogs.DirExists(dialogs.Directory), button == IDOK);
    }
    EXPECT_EQ(std::filesystem::current_path(), sandbox.Folder().parent_path());
    std::filesystem::current_path(driver::OwnFolder());
}

/// Finds every control inside the form, and every label and button with room for its text.
void ExpectWhole(HWND form) {
    RECT client{};
    GetClientRect(form, &client);
    for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const std::wstring text = WindowText(child);
        RECT place = driver::BoundsOf(child);
        MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_TRUE(place.right <= client.right && place.bottom <= client.bottom) << text;
        RECT wanted{0, 0, driver::Width(place), 0};
        wchar_t name[20]{};
        GetClassNameW(child, name, 20);
        if (name == std::wstring_view(WC_STATICW) || name == std::wstring_view(WC_BUTTONW))
            WithFont(reinterpret_cast<HFONT>(driver::Ask(child, WM_GETFONT)),
                     [&](HDC screen) { DrawTextW(screen, text.c_str(), -1, &wanted, DT_CALCRECT | DT_WORDBREAK); });
        EXPECT_TRUE(wanted.right <= driver::Width(place) && wanted.bottom <= driver::Height(place)) << text;
    }
}

void ExpectWholeOnTwoScreens(HWND form) {
    ExpectWhole(form);
    const LONG width = driver::Width(driver::BoundsOf(form));
    const RECT suggested{30, 40, 50, 60};
    SendMessageW(form, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&suggested));
    ExpectWhole(form);
    EXPECT_GT(driver::Width(driver::BoundsOf(form)), width);
}

TEST(OwnWindows, ShowWholeTextsWhateverTheirSizeAndTheDpi) {
    if (!driver::UnderWine())
        GTEST_SKIP() << "it would change the fonts of this session";
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    for (const int percent : {100, 125, 225, 100}) { // the usual size remains
        SCOPED_TRACE(percent);
        metrics.lfMessageFont.lfHeight = -12 * percent / 100;
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        DragHint hint;
        hint.ShowFor(DragDropMode::Inject, nullptr);
        ExpectWholeOnTwoScreens(hint.Handle());
        Operations operations;
        AboutDialog about(operations, {});
        ErrorDialog error(L"Form_Load\r\n13: Type mismatch");
        InputBox question(L"Value", L"Give a new protective layer transparency value (0-255).", L"5");
        for (Dialog* dialog : std::initializer_list<Dialog*>{&about, &error, &question}) {
            const std::jthread user([&] {
                driver::Await("the dialog", [&] { return dialog->IsVisible(); });
                driver::BringToFront(dialog->Handle()); // a window manager may size it until then
                ExpectWholeOnTwoScreens(dialog->Handle());
                PostMessageW(dialog->Handle(), WM_CLOSE, 0, 0);
            });
            dialog->RunModal(operations, nullptr);
        }
    }
}

} // namespace
} // namespace vextrel
