#include "app/Program.h"

#include "core/OptionValues.h"
#include "win32/EventGuard.h"
#include "win32/Hardening.h"
#include "win32/MoveHook.h"
#include "win32/ScreenCapture.h"

#include <ole2.h>

#include <optional>

namespace vextrel::Program {

namespace {

Application* theApplication = nullptr;

/// What exists from here on: writes ask the save switch, moves and sizes of the main window count.
class RunningScope {
  public:
    RunningScope(Application& application, SettingsStore& store) noexcept
        : store_(store) {
        theApplication = &application;
        MoveHook::SetActingWindow(application.Keyboard().Form().Handle());
        store_.SetWriteGate([&application] { return application.Keyboard().Options().SaveSettingsInINI(); });
    }
    ~RunningScope() {
        MoveHook::SetActingWindow(nullptr);
        theApplication = nullptr;
    }
    RunningScope(const RunningScope&) = delete;
    RunningScope& operator=(const RunningScope&) = delete;

  private:
    SettingsStore& store_;
};

/// Drag-and-drop, the folder browser and the naming of controls need OLE on this thread.
class OleScope {
  public:
    OleScope() noexcept { ::OleInitialize(nullptr); }
    ~OleScope() { ::OleUninitialize(); }
    OleScope(const OleScope&) = delete;
    OleScope& operator=(const OleScope&) = delete;
};

void RegisterControls() noexcept {
    INITCOMMONCONTROLSEX classes{};
    classes.dwSize = sizeof classes;
    classes.dwICC = ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_LINK_CLASS;
    ::InitCommonControlsEx(&classes);
}

std::wstring SettingAtStart(std::wstring_view key) {
    ProgramState program;
    program.folder = FindProgramFolder();
    const SettingsStore store(program);
    return store.ReadINIValue(store.GetSettingsPath(false), settings::section, key);
}

Hardening HardenUnlessSwitchedOff() noexcept {
    try {
        if (!IsOnUnlessFalse(SettingAtStart(settings::hardenProcess))) {
            return {.switchedOff = true};
        }
    } catch (...) {
        // A file that cannot be read switches nothing off.
    }
    return HardenProcess();
}

/// Shift that was held when the focus left a password box comes up elsewhere; the keys follow it all the same.
void FollowReleasedModifier(MainWindow& form, const MSG& message) noexcept {
    const bool released = message.message == WM_KEYUP || message.message == WM_SYSKEYUP;
    if (released && (message.wParam == VK_SHIFT || message.wParam == VK_CAPITAL)) {
        GuardEvent(form.Handle(), L"Form_KeyUp", [&] { form.Controller().KeyUp(static_cast<UINT>(message.wParam)); });
    }
}

int ServeEvents(MainWindow& form) {
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        FollowReleasedModifier(form, message);
        if (!::IsDialogMessageW(form.Handle(), &message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

} // namespace

Application* gApplication() noexcept {
    return theApplication;
}

int Main(HINSTANCE instance) {
    const Hardening hardening = HardenUnlessSwitchedOff();
    Operations operations;
    ErrorReport errors(operations);
    const ErrorSinkScope sink(errors);
    int exitCode = 1;
    GuardEvent(nullptr, L"Sub Main", [&] {
        const OleScope ole;
        RegisterControls();
        ProgramState program;
        program.instance = instance;
        program.folder = FindProgramFolder();
        program.DefaultCoverTransparency = 5;
        SettingsStore store(program);
        std::optional<CaptureExclusion> captureExclusion;
        if (!ParseBoolean(SettingAtStart(settings::allowScreenCapture)).value_or(false)) {
            captureExclusion.emplace();
        }
        Application application(program, store, operations, errors);
        const RunningScope running(application, store);
        application.Keyboard().SetHardening(hardening);
        exitCode = ServeEvents(application.Keyboard().Form());
    });
    return exitCode;
}

} // namespace vextrel::Program
