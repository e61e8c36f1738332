#pragma once

#include "app/ErrorReport.h"
#include "app/Keyboard.h"
#include "core/Pinned.h"
#include "ui/Operations.h"
#include "win32/KeyboardHook.h"
#include "win32/ProgramState.h"
#include "win32/SettingsStore.h"

#include <memory>

namespace vextrel {

/// The application's toolbar object: a stored flag. What is really shown the options know.
struct Toolbar {
    bool Visible = false;
};

/// The one application object: owns the toolbar object and the controller, in that order of creation.
class Application : private Pinned {
  public:
    Application(ProgramState& program, SettingsStore& store, Operations& operations, ErrorReport& errors);
    ~Application();

    [[nodiscard]] vextrel::Toolbar& Toolbar() noexcept { return *toolbar_; }
    [[nodiscard]] vextrel::Keyboard& Keyboard() noexcept { return *keyboard_; }

    // Plain stores, kept for the rest of the program; the options hold the truth.
    bool StayOnTop = false;
    bool KeepPasswordAfterDragDrop = false;
    bool MouseHidden = false;

    /// Unloads every loaded window, last to first.
    void CloseProgram() noexcept;
    /// Shows an unexpected error, modal to the owner.
    void LogError(std::wstring_view source, std::int32_t number, std::wstring_view description, HWND owner) noexcept;

  private:
    ErrorReport& errors_;
    std::unique_ptr<vextrel::Toolbar> toolbar_;
    std::unique_ptr<vextrel::Keyboard> keyboard_;
    KeyboardHook hook_;
};

} // namespace vextrel
