#pragma once

#include "driver/Input.h"
#include "driver/Process.h"
#include "driver/Sandbox.h"

#include <optional>
#include <string>

namespace vextrel::driver {

/// The real program, running in a sandbox. The constructor returns when its main window is visible and
/// in the foreground.
class App {
  public:
    explicit App(const Sandbox& sandbox);
    /// The program of another folder, with the settings that it finds there.
    explicit App(const std::filesystem::path& program);

    [[nodiscard]] const Process& Running() const { return process_; }
    [[nodiscard]] HWND Main() const { return main_; }
    /// The protective layer over the keys; null while it is not shown.
    [[nodiscard]] HWND Layer() const;

    /// A control of the main window by its id; throws if there is none.
    [[nodiscard]] HWND Control(int id) const;
    [[nodiscard]] std::wstring Text(int id) const;
    [[nodiscard]] bool Visible(int id) const;
    /// The visible key with this caption, or null.
    [[nodiscard]] HWND FindKey(const std::wstring& caption) const;
    /// The box that shows the password now, masked or plain.
    [[nodiscard]] HWND PasswordBox() const;
    /// Caret and selection of an edit control: first and last position.
    struct Selection {
        int start;
        int end;
        bool operator==(const Selection&) const = default;
    };
    [[nodiscard]] static Selection SelectionOf(HWND edit);

    /// Chooses a menu item or toolbar button by its command, without opening the menu; does not wait for the effect.
    void Command(int id) const;

    /// State of a menu item of the main window: MF_CHECKED, MF_GRAYED and the like; throws if there is no such item.
    [[nodiscard]] UINT MenuState(int id) const;
    [[nodiscard]] bool Checked(int id) const { return (MenuState(id) & MF_CHECKED) != 0; }
    /// State of a toolbar button: TBSTATE_CHECKED, TBSTATE_ENABLED and the like; and its middle on the screen.
    [[nodiscard]] int ToolState(int id) const;
    [[nodiscard]] POINT ToolPlace(int id) const;

    /// Makes it the window that the keyboard writes to.
    void Activate() const;
    void MoveTo(POINT topLeft) const;

    /// Clicks keys with the real pointer, upper-case letters and signs by way of the Shift key, and waits after each
    /// until the password box has one character more.
    void ClickPassword(Pointer& pointer, const std::wstring& password) const;

    /// A dialog or message box of the program; throws if none appears.
    [[nodiscard]] HWND AwaitDialog(const std::optional<std::wstring>& title = {}) const;
    /// Clicks a dialog's button with the real pointer and waits until the dialog has gone.
    static void Answer(Pointer& pointer, HWND dialog, int buttonId);

    /// Asks the main window to close, as its close button does; returns the program's exit code.
    DWORD Close() const;

  private:
    Process process_;
    HWND main_;
};

inline constexpr const wchar_t* formClass = L"VextrelForm";
inline constexpr const wchar_t* dialogClass = L"#32770";

} // namespace vextrel::driver
