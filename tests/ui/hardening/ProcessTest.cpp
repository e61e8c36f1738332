// What other programs can do to the running program, and what a folder full of planted libraries does.
#include "core/ids.h"
#include "driver/App.h"
#include "faults/FaultOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <iostream>

namespace vextrel::driver {
namespace {

bool MayOpen(const Process& process, DWORD rights) {
    const HANDLE opened = OpenProcess(rights, FALSE, process.Id());
    if (opened)
        CloseHandle(opened);
    return opened != nullptr;
}

/// Whether the process has an access list of its own that says what its owner may do.
bool HasListForOwner(const Process& process) {
    alignas(SECURITY_DESCRIPTOR) std::array<std::byte, 1024> memory{};
    DWORD size = 0;
    Check(GetKernelObjectSecurity(process.Handle(), DACL_SECURITY_INFORMATION, memory.data(), memory.size(), &size) !=
              FALSE,
          "GetKernelObjectSecurity");
    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    PACL list = nullptr;
    Check(GetSecurityDescriptorDacl(memory.data(), &present, &list, &defaulted) != FALSE, "GetSecurityDescriptorDacl");
    SID ownerRights{SID_REVISION, 1, SECURITY_CREATOR_SID_AUTHORITY, {SECURITY_CREATOR_OWNER_RIGHTS_RID}};
    for (DWORD i = 0; present && list && i < list->AceCount; ++i) {
        void* entry = nullptr;
        if (GetAce(list, i, &entry) && EqualSid(&static_cast<ACCESS_ALLOWED_ACE*>(entry)->SidStart, &ownerRights))
            return true;
    }
    return false;
}

std::wstring ProtectionsShown(const App& app) {
    app.Command(ids::mnuHelpAbout);
    const HWND about = app.Running().AwaitWindow(formClass, L"About Vextrel");
    std::wstring lines = TextOf(GetDlgItem(about, ids::aboutProtections));
    PostMessageW(about, WM_COMMAND, IDOK, 0);
    Await("the dialog has gone", [&] { return !IsWindow(about); });
    return lines;
}

TEST(OtherPrograms, MaySeeAndEndTheProgramButNotReachIntoItUnlessTheUserAllowsIt) {
    const struct {
        const char* name;
        DWORD rights;
        bool allowed;
    } rows[] = {
        {"query", PROCESS_QUERY_LIMITED_INFORMATION, true},
        {"wait", SYNCHRONIZE, true},
        {"end", PROCESS_TERMINATE, true},
        {"read memory", PROCESS_VM_READ, false},
        {"write memory", PROCESS_VM_WRITE, false},
        {"change memory", PROCESS_VM_OPERATION, false},
        {"start a thread", PROCESS_CREATE_THREAD, false},
        {"take handles", PROCESS_DUP_HANDLE, false},
        {"suspend", PROCESS_SUSPEND_RESUME, false},
    };
    for (const bool hardened : {true, false}) {
        const Sandbox sandbox;
        if (!hardened)
            sandbox.SetSetting(L"Harden Process", L"False");
        const App app(sandbox);
        for (const auto& row : rows)
            EXPECT_EQ(MayOpen(app.Running(), row.rights), row.allowed || !hardened)
                << row.name << (hardened ? ", hardened" : ", not hardened");
        // Whether an owner is really kept from changing the list Wine cannot show: it knows no entry for owners.
        EXPECT_EQ(HasListForOwner(app.Running()), hardened) << "no access list with an entry for the owner";
        const std::wstring shown = ProtectionsShown(app);
        EXPECT_EQ(shown.find(L"Other programs cannot read") != std::wstring::npos, hardened) << Narrow(shown);
        EXPECT_EQ(shown.find(L"switched off in the settings file") == std::wstring::npos, hardened) << Narrow(shown);
        EXPECT_LT(shown.find(L"Password masked"), shown.find(L"Not in force")) << Narrow(shown);
        EXPECT_GT(shown.find(L"Other programs may read and order"), shown.find(L"Not in force")) << Narrow(shown);
        // Said of capture is what the system answers, whatever it is.
        EXPECT_NE(shown.find(L"screen capture"), std::wstring::npos);
        std::cout << "[ measured ] " << Narrow(shown) << '\n';
        EXPECT_EQ(app.Close(), 0U);
        EXPECT_EQ(sandbox.Setting(L"Harden Process"), hardened ? L"" : L"False");
        EXPECT_EQ(sandbox.Setting(L"Allow Screen Capture"), L"");
    }
}

/// An environment variable with a value of its own for the programs that are started meanwhile.
class EnvironmentScope {
  public:
    EnvironmentScope(const wchar_t* name, const wchar_t* value)
        : name_(name)
        , before_(32767, L'\0') {
        before_.resize(GetEnvironmentVariableW(name, before_.data(), static_cast<DWORD>(before_.size())));
        SetEnvironmentVariableW(name, value);
    }
    ~EnvironmentScope() { SetEnvironmentVariableW(name_, before_.empty() ? nullptr : before_.c_str()); }
    EnvironmentScope(const EnvironmentScope&) = delete;
    EnvironmentScope& operator=(const EnvironmentScope&) = delete;

  private:
    const wchar_t* name_;
    std::wstring before_;
};

/// Every visible window of the program with how far it is kept out of captures.
std::vector<std::pair<std::wstring, DWORD>> ExclusionOfWindows(const App& app) {
    std::vector<std::pair<std::wstring, DWORD>> found;
    EnumThreadWindows(
        GetWindowThreadProcessId(app.Main(), nullptr),
        [](HWND window, LPARAM all) -> BOOL {
            wchar_t name[64] = {};
            GetClassNameW(window, name, static_cast<int>(std::size(name)));
            const auto affinity = reinterpret_cast<UINT_PTR>(GetPropW(window, faults::affinityProperty));
            if (IsWindowVisible(window))
                reinterpret_cast<decltype(found)*>(all)->emplace_back(name, static_cast<DWORD>(affinity));
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

TEST(ScreenCapture, IsDeniedOfEveryWindowBeforeItIsSeenUnlessTheUserAllowsIt) {
    constexpr DWORD excluded = 0x11;
    const struct {
        const char* name;
        const wchar_t* system;
        bool allowed;
        DWORD affinity;
        const wchar_t* said;
    } rows[] = {
        {"usual", nullptr, false, excluded, L"Windows hidden from screen capture"},
        {"a system that knows the older way only", faults::olderCapture, false, WDA_MONITOR,
         L"Windows black in screen captures"},
        {"allowed", nullptr, true, WDA_NONE, L"Windows visible to screen capture"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const EnvironmentScope system(faults::faultAtStart, row.system);
        const Sandbox sandbox({}, L"vextrel_faults.exe");
        if (row.allowed)
            sandbox.SetSetting(L"Allow Screen Capture", L"True");
        const App app(sandbox);
        Pointer pointer;
        EXPECT_NE(ProtectionsShown(app).find(row.said), std::wstring::npos);
        const auto expect = [&](const wchar_t* windowClass, const std::function<void()>& show) {
            show();
            std::vector<std::pair<std::wstring, DWORD>> windows;
            Await("a window of class " + Narrow(windowClass), [&] {
                windows = ExclusionOfWindows(app);
                return std::any_of(windows.begin(), windows.end(),
                                   [&](const auto& window) { return window.first == windowClass; });
            });
            for (const auto& [name, affinity] : windows)
                EXPECT_EQ(affinity, row.affinity) << Narrow(name);
        };
        const auto escape = [&] {
            Keys::Stroke(VK_ESCAPE);
            Await("it has gone", [&] { return ExclusionOfWindows(app).size() == 2; });
        };
        expect(formClass, [&] { app.Command(ids::mnuHelpAbout); });
        Await("About is in front", [&] { return GetForegroundWindow() != app.Main(); });
        escape();
        expect(L"tooltips_class32", [&] { pointer.MoveTo(app.ToolPlace(ids::toolClear), 5, Milliseconds(20)); });
        pointer.MoveTo({0, 0});
        Await("the tool tip has gone", [&] { return ExclusionOfWindows(app).size() == 2; });
        const RECT slider = BoundsOf(app.Control(ids::sldTransparency));
        const LONG middle = (slider.top + slider.bottom) / 2;
        expect(L"tooltips_class32", [&] { pointer.Pull({slider.right - 9, middle}, {slider.left, middle}); });
        pointer.Release();
        Await("that of the slider, too", [&] { return ExclusionOfWindows(app).size() == 2; });
        app.Activate();
        const POINT box = CentreOf(app.PasswordBox());
        expect(L"#32768", [&] { PostMessageW(app.PasswordBox(), WM_CONTEXTMENU, 0, MAKELPARAM(box.x, box.y)); });
        escape();
        for (const int command : {ids::mnuModeHiddenMouseAndHover, ids::mnuKeyboardLayoutImport}) {
            expect(dialogClass, [&] { app.Command(command); });
            PostMessageW(app.AwaitDialog(), WM_COMMAND, IDCANCEL, 0);
            Await("it has gone", [&] { return ExclusionOfWindows(app).size() == 2; });
        }
        app.ClickPassword(pointer, L"a");
        pointer.Pull(box, {5, 5});
        Await("the hint is there", [&] { return ExclusionOfWindows(app).size() == 3; });
        expect(formClass, [] {});
        pointer.Release();
        Await("the drag is over", [&] { return ExclusionOfWindows(app).size() == 2; });
        EXPECT_EQ(app.Close(), 0U);
        EXPECT_EQ(sandbox.Setting(L"Allow Screen Capture"), row.allowed ? L"True" : L"");
    }
}

/// The names of the DLLs that a program file imports, read from its headers.
std::vector<std::wstring> ImportsOf(const std::filesystem::path& program) {
    const HMODULE image = LoadLibraryExW(program.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    Check(image != nullptr, "reading the program's headers");
    const auto* base = reinterpret_cast<const char*>(image);
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    std::vector<std::wstring> names;
    for (const auto* entry = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
         entry->Name != 0; ++entry) {
        const char* name = base + entry->Name;
        names.emplace_back(name, name + std::strlen(name));
    }
    FreeLibrary(image);
    return names;
}

TEST(PlantedLibraries, BesideTheProgramAreNotLoaded) {
    const Sandbox sandbox;
    std::vector<std::wstring> names = ImportsOf(sandbox.Program());
    ASSERT_GE(names.size(), 5U);
    // What is loaded by name while it runs: by us, or by libraries of the system on their own account.
    for (const wchar_t* name : {L"winmm.dll", L"comdlg32.dll", L"shell32.dll", L"oleacc.dll", L"uxtheme.dll",
                                L"dwmapi.dll", L"version.dll", L"oleaut32.dll", L"usp10.dll", L"propsys.dll"})
        names.emplace_back(name);
    for (const std::wstring& name : names)
        Check(CopyFileW((OwnFolder() / L"vextrel_planted.dll").c_str(), (sandbox.Folder() / name).c_str(), TRUE) !=
                  FALSE,
              "planting " + Narrow(name));
    {
        // Wine takes its own library of a known name wherever the program looks, unless told otherwise. Told so for two
        // that the program loads by name; the others it cannot show.
        const EnvironmentScope planted(L"WINEDLLOVERRIDES", L"winmm,comdlg32=n,b");
        sandbox.Write("RIFF", L"beep.wav");
        const App app(sandbox);
        static_cast<void>(ProtectionsShown(app));
        app.Command(ids::mnuKeyboardLayoutImport);
        const HWND dialog = app.AwaitDialog();
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        Await("the dialog has gone", [&] { return !IsWindow(dialog); });
        app.Command(ids::mnuOptionsBeepOnHover);
        app.Command(ids::mnuModeHover);
        Pointer pointer;
        pointer.MoveTo(CentreOf(app.FindKey(L"k")));
        Await("the pointer's rest enters the key", [&] { return !app.Text(ids::txtPassword).empty(); });
        EXPECT_EQ(app.Close(), 0U);
    }
    for (const std::wstring& name : names)
        EXPECT_FALSE(std::filesystem::exists(sandbox.Folder() / (name + L".loaded"))) << Narrow(name);
    // The trap itself works.
    const auto trap = sandbox.Folder() / L"trap.dll";
    CopyFileW((OwnFolder() / L"vextrel_planted.dll").c_str(), trap.c_str(), TRUE);
    const HMODULE loaded = LoadLibraryW(trap.c_str());
    EXPECT_TRUE(std::filesystem::exists(trap.wstring() + L".loaded"));
    FreeLibrary(loaded);
}

} // namespace
} // namespace vextrel::driver
