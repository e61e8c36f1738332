#include "driver/App.h"

#include "core/KeyTable.h"
#include "driver/Remote.h"

#include <commctrl.h>

namespace vextrel::driver {

App::App(const Sandbox& sandbox)
    : App(sandbox.Program()) {}

App::App(const std::filesystem::path& program)
    : process_(program)
    , main_(process_.AwaitWindow(formClass, L"Vextrel")) {
    SettleInForeground(main_);
    Await("the layer takes the clicks on the keys", [this] {
        const int alpha = LayerAlpha(); // other than at the start or behind another program, it is neither
        return alpha != 0 && alpha != -1 && WindowFromPoint(CentreOf(Key(1))) == Layer();
    });
}

HWND App::Layer() const {
    for (const HWND window : process_.Windows(formClass, L""))
        if (GetWindow(window, GW_OWNER) == main_)
            return window;
    return nullptr;
}

int App::LayerAlpha() const {
    BYTE alpha = 0;
    return GetLayeredWindowAttributes(Layer(), nullptr, &alpha, nullptr) != FALSE ? alpha : -1;
}

void App::AwaitLayerAlpha(int alpha) const {
    Await("the layer's opacity is " + std::to_string(alpha), [&] { return LayerAlpha() == alpha; });
}

bool App::LayerLiesOnTheKeys() const {
    const RECT first = BoundsOf(Key(1));
    // From the first key to Enter's right edge and the space bar's lower one.
    const RECT keys{first.left, first.top, BoundsOf(Key(keys::enter)).right, BoundsOf(Key(keys::space)).bottom};
    const HWND layer = Layer();
    return layer && BoundsOf(layer) == keys;
}

HWND App::Control(int id) const {
    const HWND control = GetDlgItem(main_, id);
    if (!control)
        throw Failure("the main window has no control " + std::to_string(id));
    return control;
}

std::wstring App::Text(int id) const {
    return TextOf(Control(id));
}

bool App::Visible(int id) const {
    return IsWindowVisible(Control(id)) != FALSE;
}

HWND App::Key(int number) const {
    return Control(ids::firstKey + number - 1);
}

bool App::IsPushed(int number) const {
    return (Ask(Key(number), BM_GETSTATE) & BST_PUSHED) != 0;
}

HWND App::FindKey(const std::wstring& caption) const {
    for (int id = ids::firstKey; id <= ids::lastKey; ++id) {
        const HWND key = GetDlgItem(main_, id);
        if (key && IsWindowVisible(key) && TextOf(key) == caption)
            return key;
    }
    return nullptr;
}

HWND App::PasswordBox() const {
    return Control(Visible(ids::txtPassword) ? ids::txtPassword : ids::txtText);
}

GUITHREADINFO App::Gui() const {
    GUITHREADINFO information{};
    information.cbSize = sizeof information;
    GetGUIThreadInfo(GetWindowThreadProcessId(main_, nullptr), &information);
    return information;
}

void App::AwaitShown(const std::wstring& text) const {
    if (!WaitFor([&] { return Shown() == text; }))
        throw Failure("the box shows " + Narrow(Shown()) + ", not " + Narrow(text));
}

void App::AwaitLength(std::size_t length) const {
    Await("the box holds " + std::to_string(length), [&] { return Shown().size() == length; });
}

void App::Mask(bool masked) const {
    if (IsMasked() != masked) {
        Command(ids::mnuViewPasswordMask);
        Await("the other box is shown", [&] { return IsMasked() == masked; });
    }
}

void App::Restart(bool masked) const {
    Command(ids::toolClear);
    AwaitLength(0);
    Mask(masked);
}

std::wstring App::Password() const {
    const bool masked = IsMasked();
    Mask(true);
    Mask(false);
    std::wstring password = Shown();
    Mask(masked);
    return password;
}

App::Selection App::SelectionOf(HWND edit) {
    const auto packed = static_cast<DWORD>(Ask(edit, EM_GETSEL));
    return {LOWORD(packed), HIWORD(packed)};
}

void App::Select(int start, int end) const {
    Ask(PasswordBox(), EM_SETSEL, static_cast<WPARAM>(start), end);
}

void App::AwaitStatus(const std::wstring& start) const {
    Await("the status bar says " + Narrow(start), [&] { return Text(ids::StatusBar1).starts_with(start); });
}

void App::Command(int id) const {
    Check(PostMessageW(main_, WM_COMMAND, static_cast<WPARAM>(id), 0) != FALSE, "posting a command");
}

void App::Switch(int id, bool on) const {
    if (Checked(id) == on)
        return;
    Command(id);
    Await("the option has changed", [&] { return Checked(id) == on; });
}

UINT App::MenuState(int id) const {
    const auto menu = reinterpret_cast<UINT_PTR>(GetMenu(main_));
    const DWORD state = CallInside(process_, "GetMenuState", {menu, static_cast<UINT_PTR>(id), MF_BYCOMMAND});
    if (state == static_cast<DWORD>(-1))
        throw Failure("the menu has no item " + std::to_string(id));
    return state;
}

int App::ToolState(int id) const {
    return static_cast<int>(Ask(Control(ids::tbToolbar), TB_GETSTATE, static_cast<WPARAM>(id)));
}

POINT App::ToolPlace(int id) const {
    const HWND toolbar = Control(ids::tbToolbar);
    const RemoteMemory memory(process_, sizeof(RECT));
    if (Ask(toolbar, TB_GETRECT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(memory.Address())) == 0)
        throw Failure("the toolbar has no button " + std::to_string(id));
    RECT bounds{};
    memory.Read(&bounds, sizeof bounds);
    POINT middle{(bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2};
    ClientToScreen(toolbar, &middle);
    return middle;
}

HWND App::AwaitMenu() const {
    Await("a menu", [this] { return OpenMenu() != nullptr; });
    return OpenMenu();
}

void App::ChooseByKeys(char menu, std::initializer_list<WORD> keys) const {
    Keys::Stroke(static_cast<WORD>(menu), {VK_MENU});
    AwaitMenu();
    for (const WORD key : keys)
        Keys::Stroke(key);
}

void App::MoveTo(POINT topLeft) const {
    Check(SetWindowPos(main_, nullptr, topLeft.x, topLeft.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != FALSE,
          "SetWindowPos");
    Await("the main window has moved", [&] {
        const RECT bounds = BoundsOf(main_);
        return bounds.left == topLeft.x && bounds.top == topLeft.y;
    });
}

void App::Resize(int width, int height) const {
    SetWindowPos(main_, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Ask(main_, WM_NULL);
}

void App::ClickPassword(Pointer& pointer, const std::wstring& password) const {
    for (const wchar_t unit : password) {
        const std::wstring caption(unit == L'&' ? 2 : 1, unit); // doubled, so that it is no access-key mark
        const auto length = Ask(PasswordBox(), WM_GETTEXTLENGTH);
        HWND key = FindKey(caption);
        const bool shifted = key == nullptr;
        if (shifted) {
            pointer.Click(Key(keys::leftShift));
            Await("Shift brings the caption of " + Narrow(caption),
                  [&] { return (key = FindKey(caption)) != nullptr; });
        }
        pointer.Click(key);
        Await("a click on the key " + Narrow(caption) + " adds a character",
              [&] { return Ask(PasswordBox(), WM_GETTEXTLENGTH) == length + 1; });
        if (shifted)
            Await("Shift is up again", [&] { return TextOf(key) != caption; });
    }
}

HWND App::AwaitDialog(const std::optional<std::wstring>& title) const {
    return process_.AwaitWindow(dialogClass, title);
}

void App::Answer(Pointer& pointer, HWND dialog, int buttonId) {
    const HWND button = GetDlgItem(dialog, buttonId);
    if (!button)
        throw Failure("the dialog has no button " + std::to_string(buttonId));
    pointer.Click(button);
    Await("the dialog has gone", [&] { return !IsWindow(dialog) || !IsWindowVisible(dialog); });
}

void App::Dismiss(HWND dialog, int buttonId) const {
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(buttonId), 0);
    Await("the dialog has gone", [&] { return !IsWindow(dialog) && IsWindowEnabled(main_); });
}

HWND App::Hint() const {
    for (const HWND window : process_.Windows(formClass, L""))
        if (GetDlgItem(window, ids::dragNoteHeader))
            return window;
    return nullptr;
}

void App::AwaitEndOfDrag() const {
    Await("the drag is over", [this] { return !Hint() && (MenuState(ids::mnuViewPasswordMask) & MF_GRAYED) == 0; });
}

DWORD App::Close() const {
    Check(PostMessageW(main_, WM_CLOSE, 0, 0) != FALSE, "posting WM_CLOSE");
    return process_.ExitCode();
}

} // namespace vextrel::driver
