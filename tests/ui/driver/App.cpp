#include "driver/App.h"

#include "core/ids.h"
#include "driver/Remote.h"

#include <commctrl.h>

namespace vextrel::driver {

namespace {

constexpr int shiftKey = ids::firstKey + 41; // Command42, the left Shift key

} // namespace

App::App(const Sandbox& sandbox)
    : App(sandbox.Program()) {}

App::App(const std::filesystem::path& program)
    : process_(program)
    , main_(process_.AwaitWindow(formClass, L"Vextrel")) {
    SettleInForeground(main_);
}

HWND App::Layer() const {
    for (const HWND window : process_.Windows(formClass, L""))
        if (GetWindow(window, GW_OWNER) == main_)
            return window;
    return nullptr;
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

App::Selection App::SelectionOf(HWND edit) {
    const auto packed = static_cast<DWORD>(Ask(edit, EM_GETSEL));
    return {LOWORD(packed), HIWORD(packed)};
}

void App::Command(int id) const {
    Check(PostMessageW(main_, WM_COMMAND, static_cast<WPARAM>(id), 0) != FALSE, "posting a command");
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

void App::Activate() const {
    // The window manager may be about to bring another window to the front, one that has just appeared: ask again until
    // the main window stays there.
    const auto inFront = [&] { return GetForegroundWindow() == main_; };
    for (int attempt = 0; attempt < 5; ++attempt) {
        SetForegroundWindow(main_);
        if (WaitFor(inFront, Milliseconds(2000)) && !WaitFor([&] { return !inFront(); }, Milliseconds(250)))
            return;
    }
    throw Failure("the main window does not stay in the foreground");
}

void App::MoveTo(POINT topLeft) const {
    Check(SetWindowPos(main_, nullptr, topLeft.x, topLeft.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != FALSE,
          "SetWindowPos");
    Await("the main window has moved", [&] {
        const RECT bounds = BoundsOf(main_);
        return bounds.left == topLeft.x && bounds.top == topLeft.y;
    });
}

void App::ClickPassword(Pointer& pointer, const std::wstring& password) const {
    for (const wchar_t unit : password) {
        const std::wstring caption(unit == L'&' ? 2 : 1, unit); // doubled, so that it is no access-key mark
        const auto length = Ask(PasswordBox(), WM_GETTEXTLENGTH);
        HWND key = FindKey(caption);
        const bool shifted = key == nullptr;
        if (shifted) {
            pointer.Click(Control(shiftKey));
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

DWORD App::Close() const {
    Check(PostMessageW(main_, WM_CLOSE, 0, 0) != FALSE, "posting WM_CLOSE");
    return process_.ExitCode();
}

} // namespace vextrel::driver
