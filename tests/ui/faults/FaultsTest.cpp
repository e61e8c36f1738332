// What goes wrong around the program while it runs: what the user sees of it, and what is kept.
#include "core/ids.h"
#include "driver/Screen.h"
#include "driver/Target.h"
#include "faults/FaultyApp.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>

namespace vextrel::driver {
namespace {

/// Whether the program shows nothing but its two windows: no error, no question.
bool IsUndisturbed(const App& app) {
    return app.Running().Windows(formClass).size() == 2 && app.Running().Windows(dialogClass).empty() &&
           IsWindowEnabled(app.Main());
}

bool CanWrite(const std::filesystem::path& file) {
    return static_cast<bool>(std::ofstream(file, std::ios::app));
}

TEST(Faults, OfTheSettingsFileKeepTheOptionForTheRunAndShowNothing) {
    const std::string before = "[Settings]\r\nTransparency=252\r\n";
    const std::string written = "Beep on Hover=True\r\n";
    const std::string other = "[Settings]\r\nMouseMode=hover\r\n";
    enum What { ReadOnly, Locked, Deleted, Replaced, FolderGone };
    const struct {
        const char* name;
        What what;
        std::string after;
    } rows[] = {
        {"read-only", ReadOnly, before},
        {"locked by another program", Locked, before},
        {"deleted", Deleted, "[Settings]\r\n" + written},
        {"replaced by another", Replaced, other + written},
        {"program folder gone", FolderGone, before},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Sandbox sandbox;
        const App app(sandbox);
        Await("the first value is written", [&] { return sandbox.Read() == before; });
        const auto file = sandbox.Folder() / Sandbox::settingsName;
        const auto folder = sandbox.Folder().parent_path();
        const auto away = folder.wstring() + L"-away";
        std::error_code refused;
        HANDLE lock = INVALID_HANDLE_VALUE;
        switch (row.what) {
        case ReadOnly:
            SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
            // Wine leaves it to the system beneath, which lets its administrator write all the same.
            refused = CanWrite(file) ? std::make_error_code(std::errc::permission_denied) : refused;
            break;
        case Locked:
            Await("the program has closed the file", [&] {
                lock = CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
                return lock != INVALID_HANDLE_VALUE;
            });
            break;
        case Deleted: std::filesystem::remove(file); break;
        case Replaced:
            std::filesystem::remove(file);
            sandbox.Write(other);
            break;
        case FolderGone: std::filesystem::rename(folder, away, refused); break;
        }
        app.Command(ids::mnuOptionsBeepOnHover);
        Await("the option holds", [&] { return app.Checked(ids::mnuOptionsBeepOnHover); });
        EXPECT_TRUE(IsUndisturbed(app));
        EXPECT_EQ(app.Close(), 0U);
        if (lock != INVALID_HANDLE_VALUE)
            CloseHandle(lock);
        SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (row.what == FolderGone && !refused) {
            EXPECT_FALSE(std::filesystem::exists(folder)) << "made anew";
            std::filesystem::rename(away, folder);
        }
        if (refused)
            std::cout << "[ measured ] " << row.name << ": not shown, the system does not let it happen\n";
        else
            EXPECT_EQ(sandbox.Read(), row.after);
    }
}

TEST(Faults, OfADropTargetKeepThePassword) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    app.ClickPassword(pointer, L"ab");
    for (const bool hangs : {false, true}) {
        SCOPED_TRACE(hangs ? "hangs, then ends" : "ends");
        const Target target;
        target.KeepClearOf(BoundsOf(app.Main()));
        app.Activate();
        target.PullHere(pointer, CentreOf(app.PasswordBox()));
        if (hangs) {
            SuspendThread(target.Running().MainThread());
            pointer.Release();
        }
        TerminateProcess(target.Running().Handle(), 0);
        if (!hangs)
            pointer.Release();
        Await("the drag is over",
              [&] { return IsUndisturbed(app) && (app.MenuState(ids::mnuViewPasswordMask) & MF_GRAYED) == 0; });
        EXPECT_EQ(app.Text(ids::txtPassword), L"**");
    }
    EXPECT_EQ(app.Close(), 0U);
}

void SetGraphics(const FaultyApp& app, Fault how) {
    app.Order(L"tmrCheckActiveWindow_Timer", 1, how);
    Await("the program has done it", [&] { return app.TimesLeft() == 0; });
    // Fonts and pictures are made anew.
    Ask(app.Main(), WM_THEMECHANGED);
}

/// What the user sees of a window.
std::string PictureOf(const Sandbox& sandbox, HWND window) {
    TakeScreenshot(sandbox.Folder() / L"picture.png", BoundsOf(window));
    return sandbox.Read(L"picture.png").value();
}

TEST(Faults, WithoutRoomForGraphicsEverythingStillWorksAndIsSeen) {
    const Sandbox sandbox({}, L"vextrel_faults.exe");
    const FaultyApp app(sandbox);
    const Target target;
    target.KeepClearOf(BoundsOf(app.Main()));
    app.Activate();
    Pointer pointer;
    const HWND key = app.FindKey(L"q");
    const std::string usual = PictureOf(sandbox, key);
    SetGraphics(app, Fault::RefuseGraphics);
    const std::string without = PictureOf(sandbox, key);
    EXPECT_TRUE(without != usual) << "the font should be another";
    // The key shows what it has become: it is still painted.
    pointer.Click(app.Control(ids::firstKey + 41));
    Await("Shift changes the caption", [&] { return TextOf(key) == L"Q"; });
    EXPECT_TRUE(PictureOf(sandbox, key) != without);

    // Now the system itself has no room either, and may draw nothing at all.
    SetGraphics(app, Fault::NoGraphics);
    pointer.Click(key);
    Await("the key is entered", [&] { return app.Text(ids::txtPassword) == L"*" && TextOf(key) == L"q"; });
    app.ClickPassword(pointer, L"a");
    EXPECT_EQ(app.Text(ids::txtPassword), L"**");
    app.Command(ids::mnuHelpAbout);
    const HWND about = app.Running().AwaitWindow(formClass, L"About Vextrel");
    PostMessageW(about, WM_COMMAND, IDOK, 0);
    Await("the dialog has gone", [&] { return IsUndisturbed(app); });
    app.Activate();
    pointer.Drag(CentreOf(app.PasswordBox()), CentreOf(target.Field(target::dropField)));
    Await("the drop arrives", [&] { return target.Drops() == 1; });
    EXPECT_EQ(target.Text(), L"Qa");
    Await("nothing is reported", [&] { return IsUndisturbed(app); });

    SetGraphics(app, Fault::GraphicsAgain);
    pointer.MoveTo({0, 0});
    EXPECT_TRUE(PictureOf(sandbox, key) == usual);
    EXPECT_EQ(app.Close(), 0U);
}

} // namespace
} // namespace vextrel::driver
