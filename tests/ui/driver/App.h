#pragma once

#include "core/ids.h"
#include "driver/Input.h"
#include "driver/Process.h"
#include "driver/Sandbox.h"

#include <optional>
#include <string>

namespace vextrel::driver {

/// The real program, running in a sandbox. The constructor returns when its main window is in the foreground and the
/// layer takes the clicks on the keys.
class App {
  public:
    explicit App(const Sandbox& sandbox);
    /// The program of another folder, with the settings that it finds there.
    explicit App(const std::filesystem::path& program);

    [[nodiscard]] const Process& Running() const { return process_; }
    [[nodiscard]] HWND Main() const { return main_; }
    /// The protective layer over the keys; null while it is not shown.
    [[nodiscard]] HWND Layer() const;
    /// Its opacity; -1 when it has none.
    [[nodiscard]] int LayerAlpha() const;
    void AwaitLayerAlpha(int alpha) const;
    /// Whether it covers the keys to the pixel.
    [[nodiscard]] bool LayerLiesOnTheKeys() const;

    /// A control of the main window by its id; throws if there is none.
    [[nodiscard]] HWND Control(int id) const;
    [[nodiscard]] std::wstring Text(int id) const;
    [[nodiscard]] bool Visible(int id) const;
    /// A key by its number, 1 to 65, shown or not; whether it looks pushed.
    [[nodiscard]] HWND Key(int number) const;
    [[nodiscard]] bool IsPushed(int number) const;
    /// The visible key with this caption, or null.
    [[nodiscard]] HWND FindKey(const std::wstring& caption) const;
    /// Which control has the focus.
    [[nodiscard]] HWND Focus() const { return Gui().hwndFocus; }
    [[nodiscard]] GUITHREADINFO Gui() const;

    /// The box that shows the password now, masked or plain, and its text.
    [[nodiscard]] HWND PasswordBox() const;
    [[nodiscard]] std::wstring Shown() const { return TextOf(PasswordBox()); }
    void AwaitShown(const std::wstring& text) const;
    void AwaitLength(std::size_t length) const;
    /// Masked or in clear.
    [[nodiscard]] bool IsMasked() const { return Visible(ids::txtPassword); }
    void Mask(bool masked) const;
    /// Empties the password and shows one of the views.
    void Restart(bool masked) const;
    /// What the program holds, whichever box shows it; the view stays.
    [[nodiscard]] std::wstring Password() const;
    /// Caret and selection of an edit control: first and last position.
    struct Selection {
        int start;
        int end;
        bool operator==(const Selection&) const = default;
    };
    [[nodiscard]] static Selection SelectionOf(HWND edit);
    [[nodiscard]] Selection Selected() const { return SelectionOf(PasswordBox()); }
    void Select(int start, int end) const;

    /// Waits until the first pane of the status bar starts so; where room is short, its end is missing.
    void AwaitStatus(const std::wstring& start) const;

    /// Chooses a menu item or toolbar button by its command, without opening the menu; does not wait for the effect.
    void Command(int id) const;
    /// Brings an option that has a check mark to a state.
    void Switch(int id, bool on) const;
    /// State of a menu item of the main window: MF_CHECKED, MF_GRAYED and the like; throws if there is no such item.
    [[nodiscard]] UINT MenuState(int id) const;
    [[nodiscard]] bool Checked(int id) const { return (MenuState(id) & MF_CHECKED) != 0; }
    /// State of a toolbar button: TBSTATE_CHECKED, TBSTATE_ENABLED and the like; and its middle on the screen.
    [[nodiscard]] int ToolState(int id) const;
    [[nodiscard]] POINT ToolPlace(int id) const;
    /// An open menu of the program, or null; waits for one.
    [[nodiscard]] HWND OpenMenu() const { return process_.Window(L"#32768"); }
    HWND AwaitMenu() const;
    /// Opens a menu of the menu bar by Alt and its letter and strokes keys there.
    void ChooseByKeys(char menu, std::initializer_list<WORD> keys) const;

    /// Makes it the window that the keyboard writes to.
    void Activate() const { BringToFront(main_); }
    void MoveTo(POINT topLeft) const;
    void Resize(int width, int height) const;

    /// Clicks keys with the real pointer, upper-case letters and signs by way of the Shift key, and waits after each
    /// until the password box has one character more.
    void ClickPassword(Pointer& pointer, const std::wstring& password) const;

    /// A dialog of the system's kind, or a form of the program's; throws if none appears.
    [[nodiscard]] HWND AwaitDialog(const std::optional<std::wstring>& title = {}) const;
    [[nodiscard]] HWND AwaitForm(const std::wstring& title) const { return process_.AwaitWindow(formClass, title); }
    /// Clicks a dialog's button with the real pointer, or orders it by message, and waits until the dialog has gone.
    static void Answer(Pointer& pointer, HWND dialog, int buttonId);
    void Dismiss(HWND dialog, int buttonId) const;

    /// The hint that a drag shows, or null; waits until a drag has been wound up and the next may begin.
    [[nodiscard]] HWND Hint() const;
    void AwaitEndOfDrag() const;

    /// Asks the main window to close, as its close button does; returns the program's exit code.
    DWORD Close() const;

    static constexpr const wchar_t* formClass = L"VextrelForm";

  private:
    Process process_;
    HWND main_;
};

inline constexpr const wchar_t* formClass = App::formClass;
inline constexpr const wchar_t* dialogClass = L"#32770";

} // namespace vextrel::driver
