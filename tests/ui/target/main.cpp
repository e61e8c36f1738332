// A second program for the tests: a field to drop text on, a field to type into, and a record of what came. It keeps
// everything in its window and writes nothing to disk.

#include "target/Contract.h"
#include "target/TextDropTarget.h"

#include <commctrl.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

using namespace vextrel::target;

struct Options {
    DropOptions drop;
    bool closeOnClick = false;
    bool topmost = false;
    int x = 40;
    int y = 40;
};

Options Parse(int argc, wchar_t** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::wstring option = argv[i];
        if (option == L"--read=entry")
            options.drop.readAt = ReadAt::Entry;
        else if (option == L"--read=later")
            options.drop.readAt = ReadAt::Later;
        else if (option == L"--read=crossed")
            options.drop.readAt = ReadAt::Crossed;
        else if (option == L"--read=always")
            options.drop.readAt = ReadAt::Always;
        else if (option == L"--ansi")
            options.drop.ansi = true;
        else if (option == L"--refuse")
            options.drop.refuse = true;
        else if (option == L"--close-on-click")
            options.closeOnClick = true;
        else if (option == L"--topmost")
            options.topmost = true;
        else if (option.rfind(L"--at=", 0) == 0)
            static_cast<void>(std::swscanf(option.c_str(), L"--at=%d,%d", &options.x, &options.y));
    }
    return options;
}

HWND AddField(HWND parent, const wchar_t* label, int id, int top, DWORD style) {
    CreateWindowW(L"STATIC", label, WS_CHILD | WS_VISIBLE, 10, top + 4, 90, 20, parent, nullptr, nullptr, nullptr);
    return CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE | style, 110, top, 340, 26, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

void Append(HWND field, const wchar_t* format, WPARAM value) noexcept {
    wchar_t entry[8];
    std::swprintf(entry, std::size(entry), format, static_cast<unsigned>(value));
    SendMessageW(field, EM_SETSEL, 0x7FFF, 0x7FFF);
    SendMessageW(field, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(entry));
}

LRESULT CALLBACK RecordKeys(HWND field, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                            DWORD_PTR closeOnClick) noexcept {
    const HWND window = GetParent(field);
    switch (message) {
    case WM_CHAR: Append(GetDlgItem(window, charRecord), L"%04X ", wParam); break;
    case WM_KEYDOWN: Append(GetDlgItem(window, keyRecord), L"+%02X ", wParam); break;
    case WM_KEYUP: Append(GetDlgItem(window, keyRecord), L"-%02X ", wParam); break;
    // Left alone, they would open the window's menu, which takes the keys that follow.
    case WM_SYSKEYDOWN: Append(GetDlgItem(window, keyRecord), L"+%02X ", wParam); return 0;
    case WM_SYSKEYUP: Append(GetDlgItem(window, keyRecord), L"-%02X ", wParam); return 0;
    case WM_LBUTTONDOWN:
        if (closeOnClick != 0) {
            DestroyWindow(window);
            return 0;
        }
        break;
    default: break;
    }
    return DefSubclassProc(field, message, wParam, lParam);
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
    case readNow:
        if (auto* target = reinterpret_cast<TextDropTarget*>(GetWindowLongPtrW(window, GWLP_USERDATA)))
            target->ReadNow();
        return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

HWND CreateTarget(const Options& options) {
    WNDCLASSW definition{};
    definition.lpfnWndProc = WindowProcedure;
    definition.hInstance = GetModuleHandleW(nullptr);
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    definition.lpszClassName = windowClass;
    RegisterClassW(&definition);
    const HWND window = CreateWindowExW(options.topmost ? WS_EX_TOPMOST : 0, windowClass, L"Drop target",
                                        WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU, options.x, options.y, 480, 235,
                                        nullptr, nullptr, definition.hInstance, nullptr);
    AddField(window, L"Drop here:", dropField, 10, ES_AUTOHSCROLL);
    const HWND edit = AddField(window, L"Type here:", editField, 45, ES_AUTOHSCROLL);
    AddField(window, L"Characters:", charRecord, 80, ES_AUTOHSCROLL | ES_READONLY);
    AddField(window, L"Drops:", dropCount, 115, ES_READONLY);
    SetDlgItemInt(window, dropCount, 0, FALSE);
    AddField(window, L"Keys:", keyRecord, 150, ES_AUTOHSCROLL | ES_READONLY);
    SetWindowSubclass(edit, RecordKeys, 1, options.closeOnClick ? 1 : 0);
    CreateWindowW(L"STATIC", L"0", WS_CHILD, 0, 0, 0, 0, window,
                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(enterCount)), nullptr, nullptr);
    return window;
}

int Run(const Options& options) {
    const HWND window = CreateTarget(options);
    auto* const target = new TextDropTarget(
        options.drop,
        [window] { SetDlgItemInt(window, enterCount, GetDlgItemInt(window, enterCount, nullptr, FALSE) + 1, FALSE); },
        [window](const std::wstring& text) {
            // The count follows the text, so that who sees the new count finds the text in place.
            SetDlgItemTextW(window, dropField, text.c_str());
            SetDlgItemInt(window, dropCount, GetDlgItemInt(window, dropCount, nullptr, FALSE) + 1, FALSE);
        });
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(target));
    const HWND field = GetDlgItem(window, dropField);
    if (FAILED(RegisterDragDrop(field, target)))
        return 2;
    ShowWindow(window, SW_SHOW);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    RevokeDragDrop(field);
    target->Release();
    return 0;
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    if (FAILED(OleInitialize(nullptr)))
        return 2;
    const int code = Run(Parse(argc, argv));
    OleUninitialize();
    return code;
}
