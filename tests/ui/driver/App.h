#pragma once

#include "core/Commands.h"
#include "core/KeyTable.h"
#include "core/ids.h"
#include "driver/Input.h"
#include "driver/Remote.h"
#include "driver/Sandbox.h"

#include <commctrl.h>

namespace vextrel::driver {

inline constexpr const wchar_t* formClass = L"VextrelForm";
inline constexpr const wchar_t* dialogClass = L"#32770";

/// The real program, running in a sandbox. The constructor returns when its main window is in the foreground and the
/// layer takes the clicks on the keys.
class App {
  public:
    explicit App(const Sandbox& sandbox)
        : App(sandbox.Program()) {}
    /// The program of another folder, with the settings that it finds there.
    explicit App(const std::filesystem::path& program)
        : process_(program)
        , main_(process_.AwaitWindow(formClass, L"Vextrel")) {
        SettleInForeground(main_);
        const auto isReady = [this] { return LayerAlpha() > 0 && WindowFromPoint(CentreOf(Key(1))) == Layer(); };
        Await("the layer takes the clicks on the keys", isReady);
    }

    [[nodiscard]] const Process& Running() const { return process_; }
    [[nodiscard]] HWND Main() const { return main_; }
    /// The protective layer over the keys; null while it is not shown.
    [[nodiscard]] HWND Layer() const { return NamelessWith(ids::txtSetup); }
    /// -1 when it has none.
    [[nodiscard]] int LayerAlpha() const {
        BYTE alpha = 0;
        return GetLayeredWindowAttributes(Layer(), nullptr, &alpha, nullptr) != FALSE ? alpha : -1;
    }
    void AwaitLayerAlpha(int alpha) const {
        Await("the layer's opacity is " + std::to_string(alpha), [&] { return LayerAlpha() == alpha; });
    }
    /// To the pixel: from the first key to Enter's right edge and the space bar's lower one.
    [[nodiscard]] bool LayerLiesOnTheKeys() const {
        const RECT first = BoundsOf(Key(1));
        const RECT keys{first.left, first.top, BoundsOf(Key(keys::enter)).right, BoundsOf(Key(keys::space)).bottom};
        const HWND layer = Layer();
        return layer && BoundsOf(layer) == keys;
    }

    /// A control of the main window by its id; throws if there is none.
    [[nodiscard]] HWND Control(int id) const {
        const HWND control = GetDlgItem(main_, id);
        Check(control != nullptr, "finding the main window's control " + std::to_string(id));
        return control;
    }
    [[nodiscard]] std::wstring Text(int id) const { return TextOf(Control(id)); }
    [[nodiscard]] bool Visible(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
    /// A key by its number, 1 to 65, shown or not.
    [[nodiscard]] HWND Key(int number) const { return Control(ids::firstKey + number - 1); }
    [[nodiscard]] bool IsPushed(int number) const { return (Ask(Key(number), BM_GETSTATE) & BST_PUSHED) != 0; }
    /// The visible key with this caption, or null.
    [[nodiscard]] HWND FindKey(const std::wstring& caption) const {
        for (int id = ids::firstKey; id <= ids::lastKey; ++id)
            if (Visible(id) && Text(id) == caption)
                return Control(id);
        return nullptr;
    }
    [[nodiscard]] HWND Focus() const { return Gui().hwndFocus; }
    [[nodiscard]] GUITHREADINFO Gui() const { return GuiOf(main_); }

    /// The box that shows the password now, masked or plain, and its text.
    [[nodiscard]] HWND PasswordBox() const { return Control(IsMasked() ? ids::txtPassword : ids::txtText); }
    [[nodiscard]] std::wstring Shown() const { return TextOf(PasswordBox()); }
    void AwaitShown(const std::wstring& text) const {
        if (!WaitFor([&] { return Shown() == text; }))
            throw Failure("the box shows " + Narrow(Shown()) + ", not " + Narrow(text));
    }
    void AwaitLength(std::size_t length) const {
        Await("the box holds " + std::to_string(length), [&] { return Shown().size() == length; });
    }
    [[nodiscard]] bool IsMasked() const { return Visible(ids::txtPassword); }
    void Mask(bool masked) const {
        if (IsMasked() != masked)
            Command(ids::mnuViewPasswordMask);
        Await("the other box is shown", [&] { return IsMasked() == masked; });
    }
    /// Empties the password and shows one of the views.
    void Restart(bool masked) const {
        Command(ids::toolClear);
        AwaitLength(0);
        Mask(masked);
    }
    /// What the program holds, whichever box shows it; the view stays.
    [[nodiscard]] std::wstring Password() const {
        const bool masked = IsMasked();
        Mask(true);
        Mask(false);
        std::wstring password = Shown();
        Mask(masked);
        return password;
    }
    struct Selection {
        int start, end;
        bool operator==(const Selection&) const = default;
    };
    [[nodiscard]] Selection Selected() const {
        const auto packed = static_cast<DWORD>(Ask(PasswordBox(), EM_GETSEL));
        return {LOWORD(packed), HIWORD(packed)};
    }
    void Select(int start, int end) const { Ask(PasswordBox(), EM_SETSEL, static_cast<WPARAM>(start), end); }

    /// Waits until the first pane of the status bar starts so; where room is short, its end is missing.
    void AwaitStatus(const std::wstring& start) const {
        Await("the status bar says " + Narrow(start), [&] { return Text(ids::StatusBar1).starts_with(start); });
    }

    /// Chooses a menu item or toolbar button by its command, without opening the menu; does not wait for the effect.
    void Command(int id) const { PostMessageW(main_, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    /// Brings an option that has a check mark to a state.
    void Switch(int id, bool on) const {
        if (Checked(id) != on)
            Command(id);
        Await("the option has changed", [&] { return Checked(id) == on; });
    }
    /// Whether a command shows as being in force. Under Wine only the program itself can ask for its menus' marks, so
    /// the command's toolbar button tells.
    [[nodiscard]] bool Checked(int id) const {
        if (id == ids::mnuOptionsDragDrop)
            return !Checked(ids::toolInject);
        const int tool = id == ids::mnuOptionsInjectMode ? ids::toolInject : CommandOf(id)->toolId;
        if (tool == 0)
            throw Failure("no button shows the state of command " + std::to_string(id));
        return (ToolState(tool) & TBSTATE_CHECKED) != 0;
    }
    /// State of a toolbar button: TBSTATE_CHECKED, TBSTATE_ENABLED and the like; and its middle on the screen.
    [[nodiscard]] int ToolState(int id) const {
        return static_cast<int>(Ask(Control(ids::tbToolbar), TB_GETSTATE, static_cast<WPARAM>(id)));
    }
    [[nodiscard]] POINT ToolPlace(int id) const {
        const HWND toolbar = Control(ids::tbToolbar);
        const RemoteMemory memory(process_, sizeof(RECT));
        Ask(toolbar, TB_GETRECT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(memory.Address()));
        RECT bounds{};
        memory.Read(&bounds, sizeof bounds);
        MapWindowPoints(toolbar, nullptr, reinterpret_cast<POINT*>(&bounds), 2);
        return CentreOf(bounds);
    }

    /// An open menu of the program, or null.
    [[nodiscard]] HWND OpenMenu() const { return process_.Window(L"#32768"); }
    HWND AwaitMenu() const { return process_.AwaitWindow(L"#32768"); }
    /// Opens a menu of the menu bar by Alt and its letter and strokes keys there.
    void ChooseByKeys(char menu, std::initializer_list<WORD> keys) const {
        Keys::Stroke(static_cast<WORD>(menu), {VK_MENU});
        AwaitMenu();
        for (const WORD key : keys)
            Keys::Stroke(key);
    }

    void Activate() const { BringToFront(main_); }
    void MoveTo(POINT topLeft) const {
        SetWindowPos(main_, nullptr, topLeft.x, topLeft.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        Await("the main window has moved", [&] {
            const RECT bounds = BoundsOf(main_);
            return bounds.left == topLeft.x && bounds.top == topLeft.y;
        });
    }
    void Resize(int width, int height) const {
        SetWindowPos(main_, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        Ask(main_, WM_NULL);
    }

    /// Clicks keys with the real pointer, upper-case letters and signs by way of the Shift key, and waits after each
    /// until the password box has one character more.
    void ClickPassword(Pointer& pointer, const std::wstring& password) const {
        for (const wchar_t unit : password) {
            const std::wstring caption(1, unit);
            const std::size_t length = Shown().size();
            if (!FindKey(caption))
                pointer.Click(Key(keys::leftShift));
            Await("a key " + Narrow(caption), [&] { return FindKey(caption) != nullptr; });
            pointer.Click(FindKey(caption));
            AwaitLength(length + 1);
        }
    }

    /// A dialog of the system's kind, or a form of the program's; throws if none appears.
    [[nodiscard]] HWND AwaitDialog(const std::optional<std::wstring>& title = {}) const {
        return process_.AwaitWindow(dialogClass, title);
    }
    [[nodiscard]] HWND AwaitForm(const std::wstring& title) const { return process_.AwaitWindow(formClass, title); }
    /// Clicks a dialog's button with the real pointer, or orders it by message, and waits until the dialog has gone.
    static void Answer(Pointer& pointer, HWND dialog, int buttonId) {
        pointer.Click(GetDlgItem(dialog, buttonId));
        Await("the dialog has gone", [&] { return !IsWindowVisible(dialog); });
    }
    void Dismiss(HWND dialog, int buttonId) const {
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(buttonId), 0);
        Await("the dialog has gone", [&] { return !IsWindow(dialog) && IsWindowEnabled(main_); });
    }

    /// The hint that a drag shows, or null.
    [[nodiscard]] HWND Hint() const { return NamelessWith(ids::dragNoteHeader); }
    /// Until the next may begin.
    void AwaitEndOfDrag() const {
        const auto isOver = [this] { return !Hint() && (ToolState(ids::toolToggleMask) & TBSTATE_ENABLED) != 0; };
        Await("the drag is over", isOver);
    }

    /// Asks the main window to close, as its close button does; returns the program's exit code.
    DWORD Close() const {
        PostMessageW(main_, WM_CLOSE, 0, 0);
        return process_.ExitCode();
    }

  private:
    [[nodiscard]] HWND NamelessWith(int control) const {
        for (const HWND window : process_.Windows(formClass, L""))
            if (GetDlgItem(window, control))
                return window;
        return nullptr;
    }

    Process process_;
    HWND main_;
};

} // namespace vextrel::driver
