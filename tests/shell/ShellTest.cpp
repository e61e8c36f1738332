// Parts of the shell that no command of the window reaches, called directly.

#include "app/Keyboard.h"
#include "core/Error.h"
#include "core/SendKeysParser.h"
#include "driver/Input.h"
#include "driver/Machine.h"
#include "driver/Sandbox.h"
#include "driver/Target.h"
#include "transfer/SendKeysPlayer.h"
#include "transfer/TextDataObject.h"
#include "ui/AboutDialog.h"
#include "ui/DragHint.h"
#include "ui/ErrorDialog.h"
#include "ui/InputBox.h"
#include "win32/Com.h"
#include "win32/FileDialog.h"
#include "win32/FreedMemory.h"
#include "win32/SettingsStore.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <thread>
#include <vector>

namespace vextrel {
namespace {

using driver::Narrow;

constexpr const wchar_t* keyNames[] = {
    L"BACKSPACE",  L"BS",   L"BKSP", L"BREAK", L"CAPSLOCK", L"DELETE", L"DEL",     L"DOWN", L"END",  L"ENTER", L"~",
    L"ESC",        L"HELP", L"HOME", L"INS",   L"INSERT",   L"LEFT",   L"NUMLOCK", L"PGDN", L"PGUP", L"PRTSC", L"RIGHT",
    L"SCROLLLOCK", L"TAB",  L"UP",   L"F1",    L"F2",       L"F3",     L"F4",      L"F5",   L"F6",   L"F7",    L"F8",
    L"F9",         L"F10",  L"F11",  L"F12",   L"F13",      L"F14",    L"F15",     L"F16",
};

std::wstring Stroke(unsigned key, wchar_t direction) {
    wchar_t text[8];
    std::swprintf(text, std::size(text), L"%lc%02X ", static_cast<wint_t>(direction), key);
    return text;
}
std::wstring Tap(unsigned key) {
    return Stroke(key, L'+') + Stroke(key, L'-');
}

TEST(SendKeys, EveryStrokeArrivesInASecondProgram) {
    if (!driver::HasAmericanKeyboard())
        GTEST_SKIP() << "the keyboard is not American";
    const driver::Target second;
    driver::Pointer pointer;
    pointer.Click(second.Field(target::editField));
    driver::Await("the target is in front", [&] { return GetForegroundWindow() == second.Window(); });
    SendKeysPlayer keys;
    std::wstring expected;
    const auto record = [&] { return second.Text(target::keyRecord); };
    // Wine 10 lets go of all keys once more when the display tells the target, somewhat late, that it is in front.
    driver::Await("keys come as they are sent", [&] {
        expected = record() + Tap(VK_F16);
        keys.SendKeys(L"{F16}");
        return driver::WaitFor([&] { return record() == expected; }, driver::Milliseconds(500));
    });
    const auto arrives = [&](const std::wstring& command, const std::wstring& strokes) {
        expected += strokes;
        std::wstring error;
        try {
            keys.SendKeys(command);
        } catch (const Error& raised) {
            EXPECT_EQ(raised.Source(), L"Vextrel.cSendKeys");
            error = raised.Description();
        }
        static_cast<void>(driver::WaitFor([&] { return record() == expected; }, driver::Milliseconds(3000)));
        EXPECT_EQ(record(), expected) << Narrow(command);
        expected = record();
        return error;
    };
    for (const wchar_t* name : keyNames) {
        if (!driver::UnderWine() && name == std::wstring_view(L"PRTSC"))
            continue; // Windows would come with a program of its own
        const auto code = NamedKeyCode(name);
        ASSERT_TRUE(code) << Narrow(name);
        const bool toggles = *code == VK_CAPITAL || *code == VK_NUMLOCK || *code == VK_SCROLL;
        EXPECT_EQ(arrives(std::wstring(L"{") + name + (toggles ? L" 2}" : L"}"),
                          toggles ? Tap(*code) + Tap(*code) : Tap(*code)),
                  L"");
    }
    const struct {
        const wchar_t* command;
        std::wstring strokes;
        const wchar_t* error;
    } rows[] = {
        {L"aB1", Tap('A') + Tap('B') + Tap('1'), L""},
        {L"+(ab)c", Stroke(16, L'+') + Tap('A') + Tap('B') + Stroke(16, L'-') + Tap('C'), L""},
        {L"~%{F6 2}", Stroke(17, L'+') + Stroke(18, L'+') + Tap(117) + Tap(117) + Stroke(18, L'-') + Stroke(17, L'-'),
         L""},
        {L"a)", Tap('A'), L"Invalid sendkeys command: unmatched ) at position 2"},
        {L"a{", Tap('A'), L"Invalid sendkeys command; opening { without content or closing } at position 2"},
        {L"{ENTER", L"", L"Invalid sendkeys command; opening { without closing } at position 1"},
        {L"{ENTER x}", L"", L"Invalid sendkeys command; key repetitions 'x' is invalid near position 1"},
        {L"+(a", Stroke(16, L'+') + Tap('A') + Stroke(16, L'-'),
         L"Invalid sendkeys command: more open brackets than close brackets."},
        {L"+(a\u4E2Db)", Stroke(16, L'+') + Tap('A') + Stroke(16, L'-'), L"Key \u4E2D could not be interpreted."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(arrives(row.command, row.strokes), row.error);
    for (const int modifier : {VK_SHIFT, VK_CONTROL, VK_MENU})
        EXPECT_GE(GetAsyncKeyState(modifier), 0);
}

TEST(FileDialogs, TellFilesFromFolders) {
    const driver::Sandbox sandbox;
    FileDialog dialogs;
    EXPECT_EQ(dialogs.Filter(), std::wstring(L"All Files (*.*)\0*.*\0\0", 21));
    EXPECT_TRUE(dialogs.DirExists(sandbox.Folder()));
    EXPECT_FALSE(dialogs.DirExists(sandbox.Program()));
    EXPECT_TRUE(dialogs.FileExists(sandbox.Program()));
    EXPECT_FALSE(dialogs.FileExists(sandbox.Folder()));
    EXPECT_FALSE(dialogs.FileExists(sandbox.Folder() / L"none"));
}

TEST(FileDialogs, LeaveTheCurrentFolderAndTellACancel) {
    const driver::Sandbox sandbox;
    std::filesystem::current_path(sandbox.Folder().parent_path());
    const auto before = std::filesystem::current_path();
    FileDialog dialogs;
    dialogs.CancelError = true;
    dialogs.InitDir = sandbox.Folder();
    dialogs.FileName = sandbox.Program();
    dialogs.Directory = L"kept";
    const auto answered = [&](bool (FileDialog::*show)(), WPARAM button) {
        const std::jthread user([button] {
            HWND dialog = nullptr;
            driver::Await("the dialog", [&] {
                DWORD owner = 0;
                while ((dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr)) != nullptr &&
                       (GetWindowThreadProcessId(dialog, &owner) == 0 || owner != GetCurrentProcessId())) {
                }
                return dialog != nullptr && IsWindowVisible(dialog);
            });
            driver::Ask(dialog, WM_NULL); // it has been filled
            PostMessageW(dialog, WM_COMMAND, button, 0);
        });
        return (dialogs.*show)();
    };
    for (const auto show : {&FileDialog::ShowOpen, &FileDialog::ShowSave, &FileDialog::ChooseDirectory}) {
        for (const bool tell : {false, true}) {
            dialogs.CancelError = tell;
            EXPECT_EQ(answered(show, IDCANCEL), tell);
            EXPECT_EQ(dialogs.FileName, sandbox.Program());
            EXPECT_EQ(dialogs.FileTitle, L"");
            EXPECT_EQ(dialogs.Directory, L"kept");
        }
    }
    EXPECT_FALSE(answered(&FileDialog::ShowOpen, IDOK));
    EXPECT_EQ(dialogs.FileName, sandbox.Program());
    EXPECT_EQ(dialogs.FileTitle, L"vextrel.exe");
    dialogs.FileName = L"vextrel.exe";
    dialogs.MaxFileSize = 20;
    EXPECT_TRUE(answered(&FileDialog::ShowOpen, IDOK)) << "too small for the path";
    EXPECT_EQ(dialogs.FileName, L"vextrel.exe");
    EXPECT_FALSE(answered(&FileDialog::ChooseDirectory, IDOK));
    EXPECT_TRUE(dialogs.DirExists(dialogs.Directory)) << Narrow(dialogs.Directory);
    EXPECT_EQ(std::filesystem::current_path(), before);
    std::filesystem::current_path(driver::OwnFolder());
}

/// Windows' message font, enlarged while this lives.
class TextSize {
  public:
    explicit TextSize(int percent) {
        usual_.cbSize = sizeof usual_;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof usual_, &usual_, 0);
        NONCLIENTMETRICSW metrics = usual_;
        metrics.lfMessageFont.lfHeight = -12 * percent / 100;
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    }
    ~TextSize() { SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof usual_, &usual_, 0); }
    TextSize(const TextSize&) = delete;
    TextSize& operator=(const TextSize&) = delete;

  private:
    NONCLIENTMETRICSW usual_{};
};

/// Finds every control inside the form, and every label and button with room for its text.
void ExpectWhole(HWND form) {
    RECT client{};
    GetClientRect(form, &client);
    for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const std::wstring text = WindowText(child);
        RECT place = driver::BoundsOf(child);
        MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_TRUE(place.right <= client.right && place.bottom <= client.bottom) << Narrow(text);
        wchar_t className[20]{};
        GetClassNameW(child, className, 20);
        if (wcscmp(className, WC_STATICW) != 0 && wcscmp(className, WC_BUTTONW) != 0)
            continue;
        RECT wanted{0, 0, place.right - place.left, 0};
        WithFont(reinterpret_cast<HFONT>(driver::Ask(child, WM_GETFONT)),
                 [&](HDC screen) { DrawTextW(screen, text.c_str(), -1, &wanted, DT_CALCRECT | DT_WORDBREAK); });
        EXPECT_LE(wanted.right, place.right - place.left) << Narrow(text);
        EXPECT_LE(wanted.bottom, place.bottom - place.top) << Narrow(text);
    }
}

TEST(OwnWindows, ShowWholeTextsWhateverTheirSizeAndTheDpi) {
    if (!driver::UnderWine())
        GTEST_SKIP() << "it would change the fonts of this session";
    const auto checkOnScreens = [](HWND form, int percent) {
        ExpectWhole(form);
        const auto font =
            reinterpret_cast<HFONT>(driver::Ask(GetWindow(GetWindow(form, GW_CHILD), GW_HWNDLAST), WM_GETFONT));
        EXPECT_EQ(CharacterHeightOf(font), 12 * percent / 100);
        const LONG width = driver::BoundsOf(form).right - driver::BoundsOf(form).left;
        const RECT suggested{30, 40, 50, 60};
        SendMessageW(form, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&suggested));
        ExpectWhole(form);
        EXPECT_GT(driver::BoundsOf(form).right - driver::BoundsOf(form).left, width);
    };
    for (const int percent : {100, 125, 225}) {
        SCOPED_TRACE(percent);
        const TextSize textSize(percent);
        for (const DragDropMode mode : {DragDropMode::DragDrop, DragDropMode::Inject}) {
            DragHint hint;
            hint.ShowFor(mode, nullptr);
            checkOnScreens(hint.Handle(), percent);
        }
        Operations operations;
        AboutDialog about(operations, {});
        ErrorDialog error(L"Form_Load\r\n13: Type mismatch");
        InputBox question(L"Value", L"Give a new protective layer transparency value (0-255).", L"5");
        for (Dialog* dialog :
             {static_cast<Dialog*>(&about), static_cast<Dialog*>(&error), static_cast<Dialog*>(&question)}) {
            const std::jthread user([&] {
                driver::Await("the dialog", [&] { return dialog->IsVisible(); });
                checkOnScreens(dialog->Handle(), percent);
                PostMessageW(dialog->Handle(), WM_CLOSE, 0, 0);
            });
            dialog->RunModal(operations, nullptr);
        }
    }
}

TEST(Layouts, UnknownLayoutsAndFilesWithoutOneLoadNothing) {
    const driver::Sandbox sandbox;
    const std::string settings = "[Settings]\r\nKeyboard Layout=Config\r\n[Row 2 Lower Case]\r\nKey 1=mine\r\n";
    sandbox.Write(settings);
    ProgramState program;
    program.folder = sandbox.Folder();
    SettingsStore store(program);
    store.SetWriteGate([] { return true; });
    Operations operations;
    Keyboard keyboard(program, store, operations);
    const auto caption = [&] { return keyboard.Form().Key(keys::tab + 1).Caption(); };
    const auto written = sandbox.Read();
    for (const std::int32_t layout : {3, 1033, -1, 2147483647}) {
        keyboard.Layouts().SwitchKeyboardLang(layout, false);
        EXPECT_EQ(caption(), L"mine") << layout;
        EXPECT_EQ(sandbox.Read(), written) << layout;
    }
    for (const std::filesystem::path& file :
         {std::filesystem::path(), sandbox.Folder(), sandbox.Folder() / L"none.lng"}) {
        keyboard.Layouts().ReadLayout(file);
        keyboard.Layouts().SwitchKeyboardLang(3, false); // shows what was read
        EXPECT_EQ(caption(), L"mine") << file;
    }
    // Unrecorded, as the start applies it.
    keyboard.Layouts().SwitchKeyboardLang(409, true);
    EXPECT_EQ(caption(), L"q");
    EXPECT_EQ(sandbox.Read(), written);
}

TEST(Characters, OfTheCodePageAndTheirKeys) {
    const std::wstring loneSurrogate(1, wchar_t{0xD83D});
    EXPECT_EQ(Widen(vextrel::Narrow(L"a\u20AC" + loneSurrogate)), L"a\u20AC?");
    EXPECT_EQ(AnsiCharacter(loneSurrogate + L"a").UnitCount(), 1U);
    EXPECT_EQ(SendKeysPlayer::KeyCode(L"ab"), 'A');
    EXPECT_EQ(SendKeysPlayer::KeyCode(L""), std::nullopt);
    EXPECT_EQ(SendKeysPlayer::KeyCode(loneSurrogate), std::nullopt);
}

TEST(SettingsFile, CutsLongValuesAndLivesInAnyFolder) {
    const driver::Sandbox sandbox(L"\u4E2D\u6587 \u0416");
    ProgramState program;
    program.folder = sandbox.Folder();
    SettingsStore store(program);
    program.SettingsFilePath = store.GetSettingsPath(true);
    bool mayWrite = true;
    store.SetWriteGate([&] { return mayWrite; });
    store.WriteINIValue(L"", L"S", L"K", std::wstring(300, L'x'));
    EXPECT_EQ(store.ReadINIValue(program.SettingsFilePath, L"s", L"k"), std::wstring(254, L'x'));
    EXPECT_EQ(sandbox.Setting(L"K", L"S"), std::wstring(300, L'x'));
    EXPECT_EQ(store.ReadINIValue(L"", L"S", L"K"), L"");
    mayWrite = false;
    store.WriteINIValue(program.SettingsFilePath, L"S", L"K", L"y");
    EXPECT_EQ(sandbox.Setting(L"K", L"S"), std::wstring(300, L'x'));
    mayWrite = true;
    sandbox.Write("\xFF\xFE"); // of UTF-16
    store.WriteINIValue(program.SettingsFilePath, L"S", L"K", L"a\u4E2D");
    EXPECT_EQ(sandbox.Setting(L"K", L"S"), L"a?") << "the code page decides in every file";
}

TEST(DataObject, OffersTextAloneAndGivesItAfterTheDropOnly) {
    const ComPtr<TextDataObject> data(new TextDataObject);
    data->SetText(L"a\u20AC\u4E2D");
    ComPtr<IEnumFORMATETC> listed;
    ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, listed.Out()), S_OK);
    FORMATETC found[3] = {};
    ULONG count = 0;
    EXPECT_EQ(listed->Next(3, found, &count), S_FALSE);
    ASSERT_EQ(count, 2U);
    for (ULONG i = 0; i < count; ++i)
        EXPECT_EQ(data->QueryGetData(&found[i]), S_OK);
    STGMEDIUM medium{};
    const auto text = [&] {
        EXPECT_EQ(data->GetData(&found[0], &medium), S_OK);
        const std::wstring given = static_cast<const wchar_t*>(GlobalLock(medium.hGlobal));
        ReleaseStgMedium(&medium);
        return given;
    };
    EXPECT_EQ(text(), L"") << "before the drop";
    data->Open(GetCurrentProcessId());
    EXPECT_EQ(text(), L"a\u20AC\u4E2D");
    data->Discard();
    EXPECT_EQ(text(), L"");
    FORMATETC picture = found[0];
    picture.cfFormat = CF_BITMAP;
    EXPECT_EQ(data->QueryGetData(&picture), DV_E_FORMATETC);
    EXPECT_EQ(data->GetData(&picture, &medium), DV_E_FORMATETC);
}

/// How often a text stands in this process's memory. Asked for by its first unit and its length, every next unit being
/// one more, so that looking for it leaves no copy of it.
int CountInMemory(wchar_t first, std::size_t length) {
    int found = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) == sizeof region;
         at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State != MEM_COMMIT || region.Type != MEM_PRIVATE || region.Protect != PAGE_READWRITE)
            continue;
        const auto* units = static_cast<const wchar_t*>(region.BaseAddress);
        std::size_t run = 0;
        for (std::size_t i = 0; i < region.RegionSize / sizeof(wchar_t); ++i) {
            run = units[i] == static_cast<wchar_t>(first + run) ? run + 1 : units[i] == first ? 1 : 0;
            if (run == length) {
                ++found;
                run = 0;
            }
        }
    }
    return found;
}

TEST(FreedMemory, HoldsNothingOnceOverwritten) {
    constexpr wchar_t first = 0xE5A0;
    constexpr std::size_t length = 8;
    std::vector<wchar_t*> blocks;
    for (std::size_t units = length; units <= 4096; units += units < 256 ? 8 : 488)
        for (int copy = 0; copy < 8; ++copy) {
            auto* block = static_cast<wchar_t*>(HeapAlloc(GetProcessHeap(), 0, units * sizeof(wchar_t)));
            for (std::size_t i = 0; i < units; ++i)
                block[i] = static_cast<wchar_t>(first + i % length);
            blocks.push_back(block);
        }
    for (wchar_t* block : blocks)
        HeapFree(GetProcessHeap(), 0, block);
    EXPECT_GT(CountInMemory(first, length), static_cast<int>(blocks.size())) << "the search finds too little";
    OverwriteFreedMemory();
    EXPECT_EQ(CountInMemory(first, length), 0);
}

} // namespace
} // namespace vextrel
