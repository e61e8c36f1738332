// The floor under the measurements: the windows, controls, timer and system DLLs of the real program, and nothing of
// what it does. It is operated as the real one is: by the same window class, numbers and messages. Its second box only
// counts and times the characters that come; WM_APP asks for the microseconds from the first to the last of so many.

#include "core/ids.h"
#include "win32/resources.h"

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include <chrono>
#include <string>

namespace {

using namespace vextrel;

constexpr const wchar_t* className = L"VextrelForm";
constexpr int buttonCount = 66;
constexpr int perRow = 14;
constexpr int keysTop = 100;
constexpr int aroundKeys = 130; // above and below them
constexpr UINT still = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;

HWND Add(HWND window, const wchar_t* kind, DWORD style, RECT place, int id = 0) {
    return CreateWindowExW(0, kind, L"q", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style, place.left, place.top,
                           place.right, place.bottom, window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           nullptr, nullptr);
}

void AddToolbar(HWND window, LONG width) {
    const HWND bar = Add(window, TOOLBARCLASSNAMEW, TBSTYLE_FLAT | CCS_NOPARENTALIGN | CCS_NORESIZE, {0, 0, width, 28});
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    const TBADDBITMAP pictures{GetModuleHandleW(nullptr), IDB_TOOLBAR_100};
    SendMessageW(bar, TB_ADDBITMAP, 15, reinterpret_cast<LPARAM>(&pictures));
    for (int tool = 0; tool < 15; ++tool) {
        const TBBUTTON button{tool, 300 + tool, TBSTATE_ENABLED, BTNS_BUTTON, {}, 0, 0};
        SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
}

/// Puts buttons and layer where they belong in a window of this size.
void LayOut(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const int unitX = client.right / perRow;
    const int unitY = (client.bottom - aroundKeys) / 5;
    HDWP all = BeginDeferWindowPos(buttonCount);
    for (int n = 0; n < buttonCount; ++n)
        all = DeferWindowPos(all, GetDlgItem(window, ids::firstKey + n), nullptr, n % perRow * unitX,
                             keysTop + n / perRow * unitY, unitX - 2, unitY - 2, still);
    EndDeferWindowPos(all);
    POINT keys{0, keysTop};
    ClientToScreen(window, &keys);
    SetWindowPos(reinterpret_cast<HWND>(GetWindowLongPtrW(window, GWLP_USERDATA)), nullptr, keys.x, keys.y,
                 client.right, client.bottom - aroundKeys, still);
}

void Create() {
    // Between the smallest and the largest that the real program takes on a screen of usual size.
    const HWND window = CreateWindowExW(WS_EX_TOPMOST, className, L"Vextrel",
                                        WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN, 0,
                                        600, 720, 380, nullptr, nullptr, nullptr, nullptr);
    RECT client{};
    GetClientRect(window, &client);
    AddToolbar(window, client.right);
    Add(window, WC_EDITW, WS_BORDER | ES_AUTOHSCROLL, {10, 30, 340, 26}, ids::txtPassword);
    Add(window, className, WS_BORDER, {360, 30, 340, 26}, ids::txtText);
    Add(window, TRACKBAR_CLASSW, TBS_NOTICKS, {10, 64, 340, 26});
    Add(window, TRACKBAR_CLASSW, TBS_NOTICKS, {360, 64, 340, 26});
    for (int n = 0; n < buttonCount; ++n)
        Add(window, WC_BUTTONW, BS_PUSHBUTTON, {}, ids::firstKey + n);
    Add(window, STATUSCLASSNAMEW, CCS_NOPARENTALIGN | CCS_NORESIZE, {0, client.bottom - 22, client.right, 22});
    const HWND layer = CreateWindowExW(WS_EX_LAYERED | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, className, L"", WS_POPUP, 0,
                                       0, 0, 0, window, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(layer));
    SetLayeredWindowAttributes(layer, 0, 5, LWA_ALPHA);
    SetTimer(layer, 1, 50, nullptr);
    LayOut(window);
    ShowWindow(window, SW_SHOW);
    ShowWindow(layer, SW_SHOWNA);
}

void Obey(HWND window, int command) {
    static int turn = 0;
    const bool odd = ++turn % 2 != 0;
    if (command == ids::firstKey + 41) { // Shift
        for (int n = 0; n < 47; ++n)
            SetDlgItemTextW(window, ids::firstKey + n, odd ? L"Q" : L"q");
    } else if (command == ids::mnuViewPasswordMask) {
        SetDlgItemTextW(window, ids::txtPassword, std::wstring(1000, odd ? L'*' : L'a').c_str());
    } else if (command == ids::toolRefresh) {
        // Sizes and places as far apart as those of the real program.
        const int width = 500 + turn * 97 % 440;
        SetWindowPos(window, nullptr, turn * 131 % 700, turn * 71 % 400, width, width / 2 + 20, still);
        LayOut(window);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    using Clock = std::chrono::steady_clock;
    static WPARAM typed = 0;
    static Clock::time_point first, last;
    switch (message) {
    case WM_COMMAND: Obey(window, LOWORD(wParam)); return 0;
    case WM_LBUTTONUP: return SendDlgItemMessageW(GetWindow(window, GW_OWNER), ids::txtPassword, WM_CHAR, L'a', 0);
    case WM_CHAR: (typed++ == 0 ? first : last) = Clock::now(); return 0;
    case WM_APP:
        if (typed < wParam)
            return 0;
        typed = 0;
        return std::chrono::duration_cast<std::chrono::microseconds>(last - first).count();
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    OleInitialize(nullptr);
    // The real program's other DLLs.
    for (const wchar_t* name : {L"imm32.dll", L"advapi32.dll", L"oleacc.dll", L"oleaut32.dll"})
        LoadLibraryW(name);
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_LINK_CLASS};
    InitCommonControlsEx(&classes);
    WNDCLASSW definition{};
    definition.lpfnWndProc = WindowProcedure;
    definition.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    definition.lpszClassName = className;
    RegisterClassW(&definition);
    Create();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
