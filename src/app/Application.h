#pragma once

#include "app/ErrorReport.h"
#include "app/Keyboard.h"
#include "ui/Operations.h"
#include "win32/KeyboardHook.h"
#include "win32/ProgramState.h"
#include "win32/SettingsStore.h"

#include <memory>

namespace vextrel {

/// The application's toolbar object: a stored flag. What is really shown the options know.
class Toolbar {
  public:
    [[nodiscard]] bool Visible() const noexcept { return visible_; }
    void SetVisible(bool visible) noexcept { visible_ = visible; }

  private:
    bool visible_ = false;
};

/// The one application object: owns the toolbar object and the controller, in that order of creation.
class Application {
  public:
    Application(ProgramState& program, SettingsStore& store, Operations& operations, ErrorReport& errors);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    [[nodiscard]] vextrel::Toolbar& Toolbar() noexcept { return *toolbar_; }
    [[nodiscard]] vextrel::Keyboard& Keyboard() noexcept { return *keyboard_; }

    // Plain stores, kept for the rest of the program; the controller holds the truth.
    [[nodiscard]] bool StayOnTop() const noexcept { return stayOnTop_; }
    void SetStayOnTop(bool value) noexcept { stayOnTop_ = value; }
    [[nodiscard]] bool KeepPasswordAfterDragDrop() const noexcept { return keepPasswordAfterDragDrop_; }
    void SetKeepPasswordAfterDragDrop(bool value) noexcept { keepPasswordAfterDragDrop_ = value; }
    [[nodiscard]] bool MouseHidden() const noexcept { return mouseHidden_; }
    void SetMouseHidden(bool value) noexcept { mouseHidden_ = value; }

    /// Unloads every loaded window, last to first, and ends the loop of events.
    void CloseProgram() noexcept;
    /// Shows an unexpected error, modal to the owner.
    void LogError(std::wstring_view source, std::int32_t number, std::wstring_view description, HWND owner) noexcept;

  private:
    ErrorReport& errors_;
    std::unique_ptr<vextrel::Toolbar> toolbar_;
    std::unique_ptr<vextrel::Keyboard> keyboard_;
    KeyboardHook hook_;
    bool stayOnTop_ = false;
    bool keepPasswordAfterDragDrop_ = false;
    bool mouseHidden_ = false;
};

} // namespace vextrel
