// Parts of the shell that no command of the window reaches, called directly.

#include "driver/Machine.h"
#include "driver/Sandbox.h"
#include "driver/Target.h"
#include "transfer/SendKeysPlayer.h"
#include "ui/AboutDialog.h"
#include "ui/ErrorDialog.h"
#include "ui/InputBox.h"
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
    const std::wstring strokes =
        L"+41 -41 +31 -31 +2E -2E +2E -2E +10 +42 -42 +43 -43 -10 +44 -44 +11 +12 +75 -75 -12 -11 ";
    SendKeysPlayer().SendKeys(L"a1{DEL 2}+(bc)d~%{F6}");
    // Wine 10 lets go of all keys before them, when the display tells the target that it is in front.
    EXPECT_TRUE(driver::WaitFor([&] { return second.Text(target::keyRecord).ends_with(strokes); }))
        << second.Text(target::keyRecord);
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

TEST(OwnWindows, ShowWholeTextsWhateverTheirSizeAndTheDpi) {
    if (!driver::UnderWine())
        GTEST_SKIP() << "it would change the fonts of this session";
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    for (const int percent : {125, 225, 100}) { // the usual size remains
        metrics.lfMessageFont.lfHeight = -12 * percent / 100;
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        Operations operations;
        AboutDialog about(operations, {});
        ErrorDialog error(L"Form_Load\r\n13: Type mismatch");
        InputBox question(L"Value", L"Give a new protective layer transparency value (0-255).", L"5");
        for (Dialog* dialog : std::initializer_list<Dialog*>{&about, &error, &question}) {
            const std::jthread user([&] {
                driver::Await("the dialog", [&] { return dialog->IsVisible(); });
                driver::BringToFront(dialog->Handle()); // a window manager may size it until then
                ExpectWhole(dialog->Handle());
                const LONG width = driver::Width(driver::BoundsOf(dialog->Handle()));
                const RECT suggested{30, 40, 50, 60};
                driver::Ask(dialog->Handle(), WM_DPICHANGED, MAKEWPARAM(192, 192),
                            reinterpret_cast<LPARAM>(&suggested));
                ExpectWhole(dialog->Handle());
                EXPECT_GT(driver::Width(driver::BoundsOf(dialog->Handle())), width);
                PostMessageW(dialog->Handle(), WM_CLOSE, 0, 0);
            });
            dialog->RunModal(operations, nullptr);
        }
    }
}

} // namespace
} // namespace vextrel
