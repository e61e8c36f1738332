#include "core/LayoutFile.h"
#include "core/ids.h"
#include "driver/Machine.h"
#include "driver/Stage.h"
#include "main/KeyHook.h"

#include <gtest/gtest.h>

#include <map>

namespace vextrel::driver {
namespace {

constexpr int import = ids::mnuKeyboardLayoutImport;
constexpr int save = ids::mnuKeyboardCreateNewLayoutFile;

std::wstring Shown(const App& app) {
    std::wstring all;
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        const std::wstring caption = TextOf(app.Key(StandardButtonOfSlot(slot)));
        all += caption == L"&&" ? L"&" : caption;
    }
    return all;
}

/// The character keys say what a layout does, with Shift as well.
void ExpectShown(const App& app, const Layout& layout) {
    Pointer pointer;
    for (const auto caption : {&KeyCaption::lower, &KeyCaption::upper}) {
        std::wstring expected;
        for (std::size_t slot = 0; slot < characterKeyCount; ++slot)
            expected += layout.captions.At(slot).*caption;
        static_cast<void>(WaitFor([&] { return Shown(app) == expected; }));
        EXPECT_EQ(Shown(app), expected);
        pointer.Click(app.Key(keys::leftShift));
        Await("Shift changes the keys", [&] { return Shown(app) != expected; });
    }
}

/// What a file says, read over the English layout.
Layout LayoutOf(const std::filesystem::path& file) {
    Layout layout;
    const auto read = [&](std::wstring_view section, std::wstring_view key) {
        wchar_t value[256];
        GetPrivateProfileStringW(std::wstring(section).c_str(), std::wstring(key).c_str(), L"", value, 256,
                                 file.c_str());
        return std::wstring(value);
    };
    EXPECT_TRUE(ReadLayoutEntries(read, layout)) << file;
    return layout;
}

/// Chooses a command that asks for a file, and gives it one. @return the message box if the dialog objects, or null.
HWND GiveFile(const App& app, int command, const std::wstring& path) {
    app.Command(command);
    const HWND dialog = app.AwaitDialog();
    Await("the field for the name", [&] { return app.Focus() && TextOf(app.Focus()).ends_with(L"*.lng"); });
    Ask(app.Focus(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    HWND box = nullptr;
    Await("an answer to " + Narrow(path), [&] {
        box = app.Running().Window(dialogClass);
        return box ? GetWindow(box, GW_OWNER) == dialog : IsWindowEnabled(app.Main()) != FALSE;
    });
    return box;
}

TEST(Layouts, TheSystemsIsCapturedAndTypedIntoNoOtherProgram) {
    if (!HasAmericanKeyboard())
        GTEST_SKIP() << "the keyboard is not American";
    Stage stage("Keyboard Layout=Config\r\n[Row 4 Lower Case]\r\nKey 10=last\r\n");
    stage.pointer.Click(stage.target.Field(target::editField));
    {
        stage.app->Activate();
        const KeyHook interruption([&, keys = 20](DWORD /*key*/, bool up) mutable {
            if (up && --keys == 0)
                SetForegroundWindow(stage.target.Window());
            return false;
        });
        stage.app->Command(ids::mnuKeyboardLayoutDefault);
        const HWND message = stage.app->AwaitDialog();
        EXPECT_NE(TextOf(GetDlgItem(message, 0xFFFF)).find(L"another window came to the front"), std::wstring::npos);
        stage.app->Dismiss(message, IDOK);
        EXPECT_EQ(stage.sandbox.Setting(L"Keyboard Layout"), L"Config");
    }
    stage.app->Activate();
    Keys::Stroke(VK_CAPITAL);
    stage.app->Command(ids::mnuKeyboardLayoutDefault);
    Await("the record", [&] { return stage.sandbox.Setting(L"Keyboard Layout") == L"Default"; });
    Keys::Stroke(VK_CAPITAL);
    ExpectShown(*stage.app, {});
    EXPECT_EQ(stage.app->Password(), L"");
    EXPECT_EQ(stage.target.TypedCharacters(), L"");
    for (int key = VK_SHIFT; key < 256; ++key)
        EXPECT_GE(GetAsyncKeyState(key), 0) << key;
}

TEST(Abroad, EveryShippedLayoutOfTheCodePageIsShownAsItsFileSays) {
    const std::map<std::wstring, UINT> otherCodePages = {
        {L"Czech", 1250}, {L"Polish", 1250}, {L"Polish-typists", 1250}, {L"Russian", 1251}, {L"Greek", 1253}};
    const Sandbox sandbox;
    const App app(sandbox);
    int imported = 0;
    for (const auto& entry : std::filesystem::directory_iterator(OwnFolder() / L"..\\..\\..\\assets\\layouts")) {
        const auto other = otherCodePages.find(entry.path().stem().wstring());
        if (GetACP() != (other == otherCodePages.end() ? 1252 : other->second))
            continue;
        SCOPED_TRACE(entry.path().stem().string());
        const std::filesystem::path file = std::filesystem::canonical(entry.path());
        GiveFile(app, import, file);
        ExpectShown(app, LayoutOf(file));
        ++imported;
    }
    EXPECT_GT(imported, 0) << "code page " << GetACP();
}

TEST(Layouts, AFileIsImportedSavedAndCannotBe) {
    const Sandbox sandbox;
    const auto mine = sandbox.Folder() / L"elsewhere" / L"mine.lng";
    const auto saved = sandbox.Folder() / L"saved.lng";
    std::filesystem::create_directory(mine.parent_path());
    sandbox.Write("[Row 2 Lower Case]\r\nKey 1=\xE9\r\n[Row 4 Upper Case]\r\nKey 2=2nd\r\nKey 3=3rd\r\n"
                  "[Action Keyboard Button Text]\r\nBackspace=back\r\n",
                  L"elsewhere\\mine.lng");
    std::optional<App> app(std::in_place, sandbox);
    GiveFile(*app, import, mine);
    ExpectShown(*app, LayoutOf(mine));
    EXPECT_EQ(sandbox.Setting(L"Imported Layout Name"), L"mine");
    EXPECT_EQ(app->Close(), 0U);

    // It comes back without the file, and is saved into the program's own folder, not the one used last.
    std::filesystem::remove(mine);
    app.emplace(sandbox);
    const Layout imported = LayoutOf(sandbox.Folder() / Sandbox::settingsName);
    ExpectShown(*app, imported);
    EXPECT_EQ(TextOf(app->Key(keys::backspace)) + TextOf(app->Key(keys::enter)), L"backent");
    const auto awaitSaved = [&] {
        Await("the file is complete",
              [&] { return sandbox.Read(L"saved.lng").value_or("").find("Shift=") != std::string::npos; });
        EXPECT_EQ(LayoutOf(saved).captions.At(13), imported.captions.At(13));
    };
    GiveFile(*app, save, L"saved.lng");
    awaitSaved();

    const std::string old = "[Row 2 Lower Case]\r\nKey 1=old\r\n";
    sandbox.Write(old, L"saved.lng");
    for (const int answer : {IDNO, IDYES}) {
        const HWND box = GiveFile(*app, save, saved); // asks whether to write over it
        const HWND dialog = GetWindow(box, GW_OWNER);
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
        Await("the message box has gone", [&] { return !IsWindow(box); });
        if (answer == IDYES) {
            awaitSaved();
        } else {
            app->Dismiss(dialog, IDCANCEL);
            EXPECT_EQ(sandbox.Read(L"saved.lng"), old);
        }
    }
    Await("the dialog has gone", [&] { return IsWindowEnabled(app->Main()) != FALSE; });
    const HANDLE held = CreateFileW((sandbox.Folder() / Sandbox::settingsName).c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    GiveFile(*app, import, saved);
    app->AwaitStatus(L"Not written (error 32)");
    CloseHandle(held);

    // A close request ends the message box, the dialog beneath it, and the program.
    EXPECT_NE(GiveFile(*app, import, mine), nullptr);
    EXPECT_EQ(app->Close(), 0U);
}

} // namespace
} // namespace vextrel::driver
