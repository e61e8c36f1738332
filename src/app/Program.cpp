#include "app/Program.h"

#include "app/ErrorReport.h"
#include "app/Keyboard.h"
#include "win32/FreedMemory.h"
#include "win32/Gate.h"
#include "win32/KeyboardHook.h"
#include "win32/ScreenCapture.h"

#include <ole2.h>

namespace vextrel {

namespace {

/// Drag-and-drop, the folder browser and the naming of controls need OLE on this thread.
class OleScope : private Pinned {
  public:
    OleScope() noexcept { ::OleInitialize(nullptr); }
    ~OleScope() { ::OleUninitialize(); }
};

void RegisterControls() noexcept {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_LINK_CLASS};
    ::InitCommonControlsEx(&classes);
}

Hardening HardenUnlessSwitchedOff(const SettingsStore& store) noexcept {
    try {
        if (!IsOnUnlessFalse(store.ReadSetting(settings::hardenProcess))) {
            return {.switchedOff = true};
        }
    } catch (...) {
        // A file that cannot be read switches nothing off.
    }
    return HardenProcess();
}

/// Until the main window has gone.
int ServeEvents(Keyboard& keyboard, SettingsStore& store, ErrorReport& errors) {
    MSG message{};
    while (keyboard.Form().IsLoaded() && ::GetMessageW(&message, nullptr, 0, 0) > 0) {
        // Of this the boxes tell nothing: Shift goes down with Alt, or comes up when the focus has left them.
        const UINT kind = message.message;
        const bool isManualKey = kind == WM_KEYDOWN && message.wParam == VK_F1 &&
                                 (HIWORD(message.lParam) & KF_REPEAT) == 0 &&
                                 Gate::LetsThrough(GatedWindow::Form, kind, VK_F1);
        if ((kind == WM_KEYUP || kind == WM_SYSKEYUP || kind == WM_SYSKEYDOWN) &&
            (message.wParam == VK_SHIFT || message.wParam == VK_CAPITAL)) {
            GuardEvent(keyboard.Form().Handle(), L"Form_KeyUp", [&] { keyboard.FollowPhysicalModifiers(); });
        }
        Serve(message, keyboard.Form().Handle());
        // Wherever the focus is. Held down, it opens one manual.
        if (isManualKey) {
            GuardEvent(keyboard.Form().Handle(), L"Form_KeyDown", [&] { keyboard.ShowManual(); });
        }
        errors.ShowWaiting();
        if (store.HasWaiting() && (HIWORD(::GetQueueStatus(QS_PAINT)) & QS_PAINT) == 0) {
            store.WriteWaiting();
        }
    }
    return message.message == WM_QUIT ? static_cast<int>(message.wParam) : 0;
}

} // namespace

int Main(bool hooksDisabled) {
    Operations operations;
    ErrorReport errors(operations);
    int exitCode = 1;
    GuardEvent(nullptr, L"Sub Main", [&] {
        ProgramState program;
        program.folder = FindProgramFolder();
        program.HooksDisabled = hooksDisabled;
        SettingsStore store(program);
        program.SettingsFilePath = store.GetSettingsPath(false);
        // Before anything else is loaded or shown.
        program.hardening = HardenUnlessSwitchedOff(store);
        program.answersOthers = ParseBoolean(store.ReadSetting(settings::answerOtherPrograms)).value_or(false);
        program.smallestKeyPx = ParseAmount(store.ReadSetting(settings::smallestKey));
        program.clearAfterMinutes = ParseAmount(store.ReadSetting(settings::clearAfterMinutes));
        const Gate gate(program.answersOthers, !hooksDisabled);
        const OleScope ole;
        RegisterControls();
        std::optional<CaptureExclusion> captureExclusion;
        if (!ParseBoolean(store.ReadSetting(settings::allowScreenCapture)).value_or(false)) {
            captureExclusion.emplace(!hooksDisabled);
        }
        KeyboardHook hook; // goes after the controller
        Keyboard keyboard(program, store, operations);
        if (!hooksDisabled) {
            hook.Install(!program.hardening.switchedOff);
        }
        program.printScreenBlocked = hook.IsInstalled();
        keyboard.FollowWindow();
        store.SetWriteGate([&] { return keyboard.Options().Snapshot().saveSettings; });
        GiveBackUnusedStack();
        exitCode = ServeEvents(keyboard, store, errors);
    });
    return exitCode;
}

} // namespace vextrel
