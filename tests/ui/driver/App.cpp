#include "driver/App.h"

#include "ui/ids.h"

namespace vextrel::driver {

namespace {

constexpr int shiftKey = ids::firstKey + 41; // Command42, the left Shift key

} // namespace

App::App(const Sandbox& sandbox)
    : process_(sandbox.Program())
    , main_(process_.AwaitWindow(formClass, L"Vextrel")) {}

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

void App::Activate() const {
    SetForegroundWindow(main_);
    Await("the main window is the foreground window", [&] { return GetForegroundWindow() == main_; });
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
        const std::wstring caption(1, unit);
        const auto length = Ask(PasswordBox(), WM_GETTEXTLENGTH);
        if (!FindKey(caption)) {
            pointer.Click(Control(shiftKey));
            Await("Shift brings the caption of " + Narrow(caption), [&] { return FindKey(caption) != nullptr; });
        }
        pointer.Click(FindKey(caption));
        Await("a click on the key " + Narrow(caption) + " adds a character",
              [&] { return Ask(PasswordBox(), WM_GETTEXTLENGTH) == length + 1; });
        Await("Shift is up again", [&] { return FindKey(L"q") != nullptr; });
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
