#include "core/KeyTable.h"
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Machine.h"
#include "driver/Remote.h"
#include "driver/Target.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

namespace vextrel::driver {
namespace {

constexpr const wchar_t* usLower = L"`1234567890-=qwertyuiop[]\\asdfghjkl;'zxcvbnm,./";
constexpr const wchar_t* usUpper = L"~!@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:\"ZXCVBNM<>?";

class LayoutApp : public App {
  public:
    explicit LayoutApp(const Sandbox& sandbox)
        : App(sandbox) {}

    [[nodiscard]] HWND Key(int key) const { return Control(ids::firstKey + key - 1); }
    [[nodiscard]] std::wstring KeyText(int row, int number) const {
        return TextOf(Key(StandardButtonOfSlot(SlotOf(row, number))));
    }
    /// The captions of all character keys in a row, as they are shown now.
    [[nodiscard]] std::wstring Shown() const {
        std::wstring text;
        for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
            const std::wstring caption = TextOf(Key(StandardButtonOfSlot(slot)));
            text += caption == L"&&" ? L"&" : caption;
        }
        return text;
    }
    void Shift(Pointer& pointer) const {
        const std::wstring before = Shown();
        pointer.Click(Key(keys::leftShift));
        Await("Shift changes the captions", [&] { return Shown() != before; });
    }
    /// In full: where room is short, a word is left out.
    [[nodiscard]] std::wstring LayoutPane() const {
        const RemoteMemory memory(Running(), 256 * sizeof(wchar_t));
        Ask(Control(ids::StatusBar1), SB_GETTEXTW, 2, reinterpret_cast<LPARAM>(memory.Address()));
        wchar_t text[256] = {};
        memory.Read(text, sizeof text);
        return std::wstring(text).find(L" layout") == std::wstring::npos ? text + std::wstring(L" layout") : text;
    }
    /// "Default", "English", "Last imported" as check marks: "--E" and the like.
    [[nodiscard]] std::wstring Marks() const {
        return std::wstring(Checked(ids::mnuKeyboardLayoutDefault) ? L"D" : L"-") +
               (Checked(ids::mnuKeyboardLayoutEnglish) ? L"E" : L"-") +
               (Checked(ids::mnuKeyboardLayoutLastSaved) ? L"L" : L"-");
    }
    /// Switches to the system's layout; throws what the program says if it could not.
    void Capture() const {
        Activate();
        Command(ids::mnuKeyboardLayoutDefault);
        Await("the system's layout", [&] {
            if (const HWND refusal = Running().Window(dialogClass))
                throw Failure(Narrow(Message(refusal)));
            return Marks() == L"D--";
        });
    }
    /// The text of a message box.
    [[nodiscard]] static std::wstring Message(HWND box) { return TextOf(GetDlgItem(box, 0xFFFF)); }
    /// Chooses a command that asks for a file and types a name, if there is one. @return the dialog.
    HWND NameFile(int command, const wchar_t* title, const std::wstring& path) const {
        Command(command);
        const HWND dialog = AwaitDialog(title);
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), Main());
        EXPECT_FALSE(IsWindowEnabled(Main()));
        HWND name = nullptr;
        Await("the field for the name", [&] {
            // The only text field; it may lie within a combo box.
            EnumChildWindows(
                dialog,
                [](HWND child, LPARAM found) -> BOOL {
                    wchar_t className[8] = {};
                    GetClassNameW(child, className, 8);
                    if (lstrcmpiW(className, L"Edit") != 0 || !IsWindowVisible(child))
                        return TRUE;
                    *reinterpret_cast<HWND*>(found) = child;
                    return FALSE;
                },
                reinterpret_cast<LPARAM>(&name));
            return name && TextOf(name).ends_with(L"*.lng");
        });
        if (!path.empty())
            Ask(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
        return dialog;
    }
    /// The same, and the dialog says or asks something. @return its message box.
    HWND NameFileInVain(int command, const std::wstring& path) const {
        const HWND dialog = NameFile(command, command == ids::mnuKeyboardLayoutImport ? L"Open" : L"Save As", path);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        HWND box = nullptr;
        Await("a message box over the dialog", [&] {
            box = Running().Window(dialogClass);
            return box && GetWindow(box, GW_OWNER) == dialog;
        });
        return box;
    }
    /// Chooses a command that asks for a file and answers; an empty path cancels.
    void AnswerFileDialog(Pointer& pointer, int command, const wchar_t* title, const std::wstring& path) const {
        const HWND dialog = NameFile(command, title, path);
        // With the real pointer: a dialog beneath the layer or the topmost window would not get the click.
        Answer(pointer, dialog, path.empty() ? IDCANCEL : IDOK);
        Await("the main window is enabled again", [&] { return IsWindowEnabled(Main()) != FALSE; });
    }
};

bool CapsLockIsOn() {
    BYTE keys[256] = {};
    GetKeyState(VK_CAPITAL); // has this thread's copy brought up to date
    GetKeyboardState(keys);
    return (keys[VK_CAPITAL] & 1) != 0;
}

TEST(Layouts, TheSystemsLayoutOfAUSKeyboardIsTheBuiltInOne) {
    if (!HasAmericanKeyboard())
        GTEST_SKIP() << "the keyboard is not American";
    const Sandbox sandbox;
    // Captions that neither layout has, so that each change shows.
    sandbox.Write("[Settings]\r\nKeyboard Layout=Config\r\n[Row 1 Lower Case]\r\nKey 1=other\r\n"
                  "[Row 4 Upper Case]\r\nKey 10=OTHER\r\n");
    const LayoutApp app(sandbox);
    Pointer pointer;
    ASSERT_EQ(app.KeyText(1, 1), L"other");
    EXPECT_EQ(app.Marks(), L"--L");
    const HWND setup = GetDlgItem(app.Layer(), ids::txtSetup);
    ASSERT_NE(setup, nullptr);
    // Releases of another key in between, as of a user who still types.
    const std::jthread typing([setup](const std::stop_token& stop) {
        for (; !stop.stop_requested(); Sleep(1))
            PostMessageW(setup, WM_KEYUP, VK_F24, 0);
    });
    for (const bool capsLock : {false, true}) {
        SCOPED_TRACE(capsLock ? "Caps Lock" : "no Caps Lock");
        if (capsLock)
            Keys::Stroke(VK_CAPITAL);
        app.Command(ids::mnuKeyboardLayoutLastSaved);
        Await("the record", [&] { return app.Marks() == L"--L" && sandbox.Setting(L"Keyboard Layout") == L"Config"; });
        app.Capture();
        Await("the record", [&] { return sandbox.Setting(L"Keyboard Layout") == L"Default"; });
        EXPECT_EQ(CapsLockIsOn(), capsLock);
        if (capsLock)
            Keys::Stroke(VK_CAPITAL);
        EXPECT_EQ(app.LayoutPane(), L"Default layout");
        Await("lower case", [&] { return app.Shown() == usLower || app.Shown() == usUpper; });
        EXPECT_EQ(app.Shown(), usLower);
        app.Shift(pointer);
        EXPECT_EQ(app.Shown(), usUpper);
        app.Shift(pointer);
    }
    app.Activate();
    Keys::Down(VK_SHIFT);
    app.Command(ids::mnuKeyboardLayoutDefault);
    EXPECT_NE(LayoutApp::Message(app.AwaitDialog()).find(L"a Shift, Ctrl, Alt or Windows key"), std::wstring::npos);
    Keys::Up(VK_SHIFT);
    EXPECT_EQ(app.Text(ids::txtPassword), L"");
    EXPECT_EQ(TextOf(setup), L"");
}

TEST(Abroad, AGermanKeyboardIsCapturedWithoutItsDeadKeys) {
    wchar_t keyboard[8] = {};
    GetEnvironmentVariableW(L"VEXTREL_KEYBOARD", keyboard, 8);
    if (keyboard != std::wstring(L"de"))
        GTEST_SKIP() << "the keyboard is another";
    const Sandbox sandbox;
    const LayoutApp app(sandbox);
    Pointer pointer;
    app.Capture();
    // By American key codes. Five of the keys have none that Wine knows; it gives them, in their order, the codes that
    // are left: 186 is the key of the sharp s, 187 that of the acute, 189, 219 and 222 those of the umlauts.
    EXPECT_EQ(app.Shown(), L"1234567890\u00FCqwertyuiop\u00F6+#asdfghjkl\u00DF\u00E4zxcvbnm,.-");
    EXPECT_EQ(app.KeyText(1, 1) + app.KeyText(1, 13), L"") << "circumflex and acute";
    app.Shift(pointer);
    EXPECT_EQ(app.Shown(), L"\u00B0!\"\u00A7$%&/()=\u00DCQWERTYUIOP\u00D6*'ASDFGHJKL?\u00C4ZXCVBNM;:_");
    EXPECT_EQ(app.KeyText(1, 13), L"") << "grave";
}

/// What a layout file says, by its own rule: each value in its place, but for the last upper-case row, whose second key
/// is the third, and whose third is the fifth of the row above. No file sets the second one.
struct Captions {
    explicit Captions(const std::filesystem::path& file) {
        std::wstring all;
        std::ifstream stream(file, std::ios::binary);
        for (std::string line; std::getline(stream, line);) {
            const auto value = line.starts_with("Key ") ? line.substr(line.find('=') + 1, 1) : std::string();
            wchar_t wide = 0;
            if (!value.empty() && MultiByteToWideChar(CP_ACP, 0, value.data(), 1, &wide, 1) == 1)
                all += wide;
        }
        EXPECT_EQ(all.size(), 2 * characterKeyCount);
        lower = all.substr(0, characterKeyCount);
        upper = all.substr(characterKeyCount);
        const auto upperAt = [this](int row, int key) -> wchar_t& { return upper.at(SlotOf(row, key)); };
        upperAt(3, 5) = upperAt(4, 3);
        upperAt(4, 3) = upperAt(4, 2);
        upperAt(4, 2) = L'X';
    }
    std::wstring lower;
    std::wstring upper;
};

TEST(Abroad, EveryShippedLayoutOfTheCodePageIsShownAsItsFileSays) {
    if (!SpeaksEnglish())
        GTEST_SKIP() << "Windows' own words are not English";
    if (GetACP() < 1250 || GetACP() > 1253)
        GTEST_SKIP() << "no layout ships for code page " << GetACP();
    const std::map<std::wstring, UINT> otherCodePages = {
        {L"Czech", 1250}, {L"Polish", 1250}, {L"Polish-typists", 1250}, {L"Russian", 1251}, {L"Greek", 1253}};
    const Sandbox sandbox;
    const LayoutApp app(sandbox);
    Pointer pointer;
    app.Activate();
    int imported = 0;
    for (const auto& entry : std::filesystem::directory_iterator(OwnFolder() / L"..\\..\\..\\assets\\layouts")) {
        const auto other = otherCodePages.find(entry.path().stem().wstring());
        if (GetACP() != (other == otherCodePages.end() ? 1252 : other->second))
            continue;
        SCOPED_TRACE(entry.path().stem().string());
        const Captions wanted(entry.path());
        app.AnswerFileDialog(pointer, ids::mnuKeyboardLayoutImport, L"Open", std::filesystem::canonical(entry.path()));
        static_cast<void>(WaitFor([&] { return app.Shown() == wanted.lower; }));
        EXPECT_EQ(app.Shown(), wanted.lower);
        app.Shift(pointer);
        EXPECT_EQ(app.Shown(), wanted.upper);
        app.Shift(pointer);
        ++imported;
    }
    EXPECT_GT(imported, 0) << "code page " << GetACP();
}

/// Brings another window to the front as soon as some keys have been pressed and released.
class Interruption {
  public:
    Interruption(HWND other, int keys)
        : watch_([other, keys](const std::stop_token& stop) {
            other_ = other;
            keysLeft_ = keys;
            const HHOOK hook = SetWindowsHookExW(WH_KEYBOARD_LL, &See, GetModuleHandleW(nullptr), 0);
            isSet_ = true;
            for (MSG message; !stop.stop_requested();) {
                MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
                while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                    DispatchMessageW(&message);
            }
            UnhookWindowsHookEx(hook);
            isSet_ = false;
        }) {
        Await("the hook is set", [] { return isSet_.load(); });
    }

  private:
    static LRESULT CALLBACK See(int code, WPARAM wParam, LPARAM lParam) noexcept {
        if (wParam == WM_KEYUP && --keysLeft_ == 0)
            SetForegroundWindow(other_);
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    static inline HWND other_ = nullptr;
    static inline int keysLeft_ = 0;
    static inline std::atomic<bool> isSet_{false};
    std::jthread watch_;
};

TEST(Layouts, ACaptureTypesIntoNoOtherProgram) {
    if (!HasAmericanKeyboard())
        GTEST_SKIP() << "the keyboard is not American";
    const Sandbox sandbox;
    sandbox.Write("[Settings]\r\nKeyboard Layout=Config\r\n[Row 1 Lower Case]\r\nKey 1=first\r\n"
                  "[Row 4 Lower Case]\r\nKey 10=last\r\n");
    const Target target;
    const LayoutApp app(sandbox);
    target.KeepClearOf(BoundsOf(app.Main()));
    Pointer pointer;
    const std::wstring before = app.Shown();
    ASSERT_TRUE(before.starts_with(L"first1") && before.ends_with(L".last")) << Narrow(before);
    // The window manager may bring the program back just before it captures; then nothing is refused.
    int refusedAtOnce = 0;
    for (const int keysPressed : {0, 20, 0, 21, 0}) {
        pointer.Click(target.Field(target::editField));
        BringToFront(target.Window());
        if (keysPressed > 0)
            app.Activate();
        const Interruption interruption(target.Window(), keysPressed);
        app.Command(ids::mnuKeyboardLayoutDefault);
        Await("the capture has ended",
              [&] { return app.Running().Window(dialogClass) || app.Checked(ids::mnuKeyboardLayoutDefault); });
        const HWND dialog = app.Running().Window(dialogClass);
        EXPECT_TRUE(dialog || keysPressed == 0);
        if (dialog) {
            EXPECT_NE(LayoutApp::Message(dialog).find(L"another window came to the front"), std::wstring::npos);
            EXPECT_EQ(app.Marks(), L"--L");
            EXPECT_EQ(sandbox.Setting(L"Keyboard Layout"), L"Config");
            Ask(dialog, WM_COMMAND, IDOK);
            Await("the message has gone", [&] { return !app.Running().Window(dialogClass); });
            // What was captured until then stays.
            EXPECT_EQ(app.Shown(), keysPressed > 0 ? L"`" + before.substr(5) : before);
            refusedAtOnce += keysPressed > 0 ? 0 : 1;
        }
        app.Command(ids::mnuKeyboardLayoutLastSaved);
        Await("the old captions", [&] { return app.Marks() == L"--L" && app.Shown() == before; });
    }
    EXPECT_GT(refusedAtOnce, 0);
    EXPECT_EQ(target.TypedCharacters(), L"");
    EXPECT_EQ(target.Text(target::keyRecord).find(L'+'), std::wstring::npos) << Narrow(target.Text(target::keyRecord));
    for (int key = VK_SHIFT; key < 256; ++key)
        EXPECT_GE(GetAsyncKeyState(key), 0) << key;
}

TEST(Layouts, TheStoredChoiceOfTheSystemsLayoutIsCapturedAtTheStart) {
    if (!HasAmericanKeyboard())
        GTEST_SKIP() << "the keyboard is not American";
    const Target target;
    for (const bool interrupted : {false, true}) {
        const Sandbox sandbox;
        sandbox.Write("[Settings]\r\nKeyboard Layout=Default\r\n");
        const Interruption interruption(target.Window(), interrupted ? 20 : 0);
        const LayoutApp app(sandbox);
        const std::wstring notice = L"System's layout not read";
        Await("the capture has ended",
              [&] { return app.Text(ids::StatusBar1) == notice || app.LayoutPane() == L"Default layout"; });
        EXPECT_EQ(app.Text(ids::StatusBar1) == notice, interrupted);
        EXPECT_EQ(app.Marks(), interrupted ? L"---" : L"D--");
        EXPECT_EQ(app.Running().Window(dialogClass), nullptr);
        EXPECT_EQ(app.Shown(), usLower);
        EXPECT_EQ(sandbox.Setting(L"Keyboard Layout"), L"Default");
    }
}

TEST(Layouts, AnImportedFileComesBackWithoutTheFile) {
    if (!SpeaksEnglish())
        GTEST_SKIP() << "Windows' own words are not English";
    const Sandbox sandbox;
    const auto elsewhere = sandbox.Folder() / L"elsewhere";
    std::filesystem::create_directory(elsewhere);
    sandbox.Write(
        "[Row 2 Lower Case]\r\nKey 1=\xE9\r\nkey 1=second\r\n[ROW 1 LOWER CASE]\r\nkey 2=" + std::string(300, 'x') +
            "\r\n[Row 3 Upper Case]\r\nKey 5=covered\r\nKey 12=none\r\n"
            "[Row 4 Upper Case]\r\nKey 2=2nd\r\nKey 3=3rd\r\nKey 11=none\r\n"
            "[Action Keyboard Button Text]\r\nBackspace=back\r\n",
        L"elsewhere\\mine.lng");
    Pointer pointer;
    const auto upper = [&](const LayoutApp& app) {
        app.Shift(pointer);
        const std::wstring captions = app.KeyText(3, 5) + L" " + app.KeyText(4, 2) + L" " + app.KeyText(4, 3);
        app.Shift(pointer);
        return captions;
    };
    {
        const LayoutApp app(sandbox);
        app.Command(ids::mnuKeyboardLayoutLastSaved);
        Await("the record", [&] { return sandbox.Setting(L"Keyboard Layout") == L"Config"; });
        EXPECT_EQ(app.Marks(), L"--L");
        EXPECT_EQ(app.LayoutPane(), L"No layout imported yet");
        app.Command(ids::mnuKeyboardLayoutEnglish);
        app.AnswerFileDialog(pointer, ids::mnuKeyboardLayoutImport, L"Open", L"");
        EXPECT_EQ(app.Marks(), L"-E-");
        EXPECT_EQ(app.Shown(), usLower);
        app.AnswerFileDialog(pointer, ids::mnuKeyboardLayoutImport, L"Open", elsewhere / L"mine.lng");
        Await("the captions", [&] { return app.KeyText(2, 1) == L"\u00E9"; });
        EXPECT_EQ(app.KeyText(1, 2), std::wstring(254, L'x'));
        EXPECT_EQ(upper(app), L"3rd X 2nd");
        EXPECT_EQ(TextOf(app.Key(keys::backspace)), L"back");
        EXPECT_EQ(TextOf(app.Key(keys::enter)), L"ent");
        EXPECT_EQ(app.Marks(), L"---");
        EXPECT_EQ(app.LayoutPane(), L"mine layout");
        EXPECT_EQ(sandbox.Setting(L"Keyboard Layout"), L"Config");
        EXPECT_EQ(sandbox.Setting(L"Imported Layout Name"), L"mine");
        EXPECT_EQ(app.Close(), 0U);
    }
    std::filesystem::remove(elsewhere / L"mine.lng");
    const LayoutApp app(sandbox);
    EXPECT_EQ(app.KeyText(2, 1), L"\u00E9");
    EXPECT_EQ(TextOf(app.Key(keys::backspace)), L"back");
    EXPECT_EQ(upper(app), L"2nd X X") << "what was written is read with the file's own mapping of the fourth row";
    EXPECT_EQ(app.Marks(), L"--L");
    EXPECT_TRUE(app.LayoutPane().starts_with(L"mine")) << "as stored";

    // Without a folder, into the one that the dialog starts in: the program's own, not the one used last.
    app.AnswerFileDialog(pointer, ids::mnuKeyboardCreateNewLayoutFile, L"Save As", L"saved.lng");
    Await("the file is complete", [&] {
        const auto bytes = sandbox.Read(L"saved.lng");
        return bytes && bytes->find("Key 1=\xE9") != std::string::npos && bytes->find("Shift=") != std::string::npos;
    });
    app.Command(ids::mnuOptionsSaveSettingsInINI);
    Await("saving is off", [&] { return !app.Checked(ids::mnuOptionsSaveSettingsInINI); });
    app.AnswerFileDialog(pointer, ids::mnuKeyboardCreateNewLayoutFile, L"Save As", sandbox.Folder() / L"never.lng");
    Await("the notice", [&] { return app.Text(ids::StatusBar1) == L"Not written: saving is off"; });
    app.Command(ids::mnuKeyboardLayoutEnglish);
    Await("English", [&] { return app.Checked(ids::mnuKeyboardLayoutEnglish); });
    EXPECT_FALSE(sandbox.Read(L"never.lng").has_value());
    EXPECT_EQ(sandbox.Setting(L"Keyboard Layout"), L"Config");

    // Hardly any of them is a layout: the captions stay, the actions get their own names, and the choice is recorded.
    app.Command(ids::mnuOptionsSaveSettingsInINI);
    const std::wstring wide = L"\uFEFF[Row 1 Lower Case]\r\nKey 1=\u00E9\r\n";
    const struct {
        const wchar_t* name;
        std::string bytes;
        const wchar_t* firstKey = L"`";
    } odd[] = {
        {L"binary.lng", std::string("\0\x01[Row 1\xFF=\r\n\0", 14)},
        {L"large.lng", std::string(50'000'000, '[')},
        {L"wide.lng", {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof wide[0]}, L"\u00E9"},
    };
    for (const auto& file : odd) {
        SCOPED_TRACE(Narrow(file.name));
        sandbox.Write(file.bytes, file.name);
        app.Command(ids::mnuKeyboardLayoutEnglish);
        Await("English is recorded", [&] { return sandbox.Setting(L"Keyboard Layout") == L"English"; });
        app.AnswerFileDialog(pointer, ids::mnuKeyboardLayoutImport, L"Open", sandbox.Folder() / file.name);
        Await("Config is recorded", [&] { return sandbox.Setting(L"Keyboard Layout") == L"Config"; });
        EXPECT_EQ(app.Shown(), file.firstKey + std::wstring(usLower + 1));
        EXPECT_EQ(TextOf(app.Key(keys::backspace)), L"bksp");
        EXPECT_EQ(app.Marks(), L"---");
        EXPECT_EQ(sandbox.Setting(L"Imported Layout Name").empty(), file.firstKey[0] == L'`') << "its captions";
    }
}

TEST(Layouts, AFileThatIsNotThereOrCannotBeWrittenIsSaid) {
    if (!SpeaksEnglish())
        GTEST_SKIP() << "Windows' own words are not English";
    const std::string layout = "[Row 2 Lower Case]\r\nKey 1=mine\r\n";
    const Sandbox sandbox;
    sandbox.Write("[Settings]\r\nKeyboard Layout=English\r\n" + layout);
    sandbox.Write(layout, L"there.lng");
    const LayoutApp app(sandbox);
    const auto answer = [&](HWND box, WPARAM button) {
        const HWND dialog = GetWindow(box, GW_OWNER);
        PostMessageW(box, WM_COMMAND, button, 0);
        Await("the message box has gone", [&] { return !IsWindow(box); });
        if (button != IDYES)
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        Await("the dialog has gone", [&] { return !IsWindow(dialog) && IsWindowEnabled(app.Main()); });
    };
    constexpr int open = ids::mnuKeyboardLayoutImport;
    constexpr int save = ids::mnuKeyboardCreateNewLayoutFile;
    for (const auto& [command, name] : {std::pair{open, L"missing.lng"},
                                        {open, L"nowhere\\there.lng"},
                                        {save, L"nowhere\\new.lng"},
                                        {save, L"there.lng"}}) {
        SCOPED_TRACE(Narrow(name));
        const bool asks = command == save && name == std::wstring(L"there.lng");
        answer(app.NameFileInVain(command, sandbox.Folder() / name), asks ? IDNO : IDOK);
        EXPECT_EQ(sandbox.Setting(L"Key 1", L"Row 2 Lower Case"), L"mine");
        EXPECT_EQ(sandbox.Setting(L"Keyboard Layout"), L"English");
        EXPECT_EQ(sandbox.Read(L"there.lng"), layout);
    }
    const std::filesystem::path there = sandbox.Folder() / L"there.lng";
    const HANDLE held = CreateFileW(there.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    answer(app.NameFileInVain(save, there), IDYES);
    Await("the notice", [&] { return app.Text(ids::StatusBar1) == L"Not written (error 32)"; });
    CloseHandle(held);
    answer(app.NameFileInVain(save, there), IDYES);
    Await("the file", [&] { return sandbox.Read(L"there.lng")->find("Shift=") != std::string::npos; });
    EXPECT_NE(app.Text(ids::StatusBar1).substr(0, 3), L"Not");
    const std::filesystem::path settings = sandbox.Folder() / Sandbox::settingsName;
    const HANDLE heldToo = CreateFileW(settings.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    Pointer pointer;
    app.AnswerFileDialog(pointer, open, L"Open", there);
    Await("the notice", [&] { return app.Text(ids::StatusBar1) == L"Not written (error 32)"; });
    CloseHandle(heldToo);

    // A close request ends the message box, the dialog beneath it, and the program.
    app.NameFileInVain(open, sandbox.Folder() / L"missing.lng");
    EXPECT_EQ(app.Close(), 0U);
}

} // namespace
} // namespace vextrel::driver
