// Parts of the shell that no command of the window reaches, called directly.

#include "base/Error.h"
#include "driver/Input.h"
#include "driver/Sandbox.h"
#include "driver/Target.h"
#include "settings/mINIManagement.h"
#include "transfer/SendKeysParser.h"
#include "transfer/TextDataObject.h"
#include "transfer/cSendKeys.h"
#include "ui/cOpenSave.h"
#include "win32/ComPtr.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

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
    const driver::Target second;
    driver::Pointer pointer;
    pointer.Click(second.Field(target::editField));
    driver::Await("the target is in front", [&] { return GetForegroundWindow() == second.Window(); });
    cSendKeys keys;
    std::wstring expected;
    const auto arrives = [&](const std::wstring& command, const std::wstring& strokes) {
        expected += strokes;
        std::wstring error;
        try {
            keys.SendKeys(command);
        } catch (const Error& raised) {
            EXPECT_EQ(raised.Source(), L"Vextrel.cSendKeys");
            error = raised.Description();
        }
        const auto record = [&] { return second.Text(target::keyRecord); };
        static_cast<void>(driver::WaitFor([&] { return record() == expected; }, driver::Milliseconds(3000)));
        EXPECT_EQ(record(), expected) << Narrow(command);
        expected = record();
        return error;
    };
    for (const wchar_t* name : keyNames) {
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
    cOpenSave dialogs;
    EXPECT_EQ(dialogs.Filter(), std::wstring(L"All Files (*.*)\0*.*\0\0", 21));
    EXPECT_TRUE(dialogs.DirExists(sandbox.Folder()));
    EXPECT_FALSE(dialogs.DirExists(sandbox.Program()));
    EXPECT_TRUE(dialogs.FileExists(sandbox.Program()));
    EXPECT_FALSE(dialogs.FileExists(sandbox.Folder()));
    EXPECT_FALSE(dialogs.FileExists(sandbox.Folder() / L"none"));
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
    data->Open();
    EXPECT_EQ(text(), L"a\u20AC\u4E2D");
    data->Discard();
    EXPECT_EQ(text(), L"");
    FORMATETC picture = found[0];
    picture.cfFormat = CF_BITMAP;
    EXPECT_EQ(data->QueryGetData(&picture), DV_E_FORMATETC);
    EXPECT_EQ(data->GetData(&picture, &medium), DV_E_FORMATETC);
}

} // namespace
} // namespace vextrel
