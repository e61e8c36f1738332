// The floor under the measurements: the windows, controls, timer and system DLLs of the real program, and nothing of
// what it does. What this needs, any program of that shape needs.

#include "floor/Contract.h"
#include "win32/resources.h"

#include <commctrl.h>
#include <ole2.h>

#include <array>
#include <string>

namespace {

using namespace vextrel::floor;

constexpr int buttonCount = 66;
constexpr int captionCount = 47;
constexpr int toolCount = 15;
constexpr int perRow = 14;

// Between the smallest and the largest that the real program takes on a screen of usual size.
constexpr int usualWidth = 720;
constexpr int usualHeight = 380;

struct Typing {
    LARGE_INTEGER first{};
    LARGE_INTEGER last{};
    bool begun = false;
};

struct Floor {
    HWND window = nullptr;
    HWND layer = nullptr;
    std::array<HWND, buttonCount> buttons{};
    HWND text = nullptr;
    HWND typing = nullptr;
    Typing typed;
    unsigned turn = 0;
};

Floor& TheFloor() {
    static Floor floor;
    return floor;
}

HWND Add(const wchar_t* className, DWORD style, RECT place, int id = 0) {
    return CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, TheFloor().window,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
}

RECT ButtonPlace(int index, int width, int height) {
    const int unitX = width / perRow;
    const int unitY = (height - 130) / 5;
    const int left = index % perRow * unitX;
    const int top = 100 + index / perRow * unitY;
    return {left, top, left + unitX - 2, top + unitY - 2};
}

LRESULT CALLBACK TimeCharacters(HWND field, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) noexcept {
    Typing& typed = TheFloor().typed;
    if (message == WM_CHAR && !typed.begun) {
        typed.begun = true;
        QueryPerformanceCounter(&typed.first);
    }
    const LRESULT result = DefSubclassProc(field, message, wParam, lParam);
    if (message == WM_CHAR)
        QueryPerformanceCounter(&typed.last);
    return result;
}

void AddToolbar(int width) {
    const HWND toolbar = Add(TOOLBARCLASSNAMEW, TBSTYLE_FLAT | CCS_NOPARENTALIGN | CCS_NORESIZE, {0, 0, width, 28});
    SendMessageW(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    const HIMAGELIST pictures = ImageList_Create(16, 16, ILC_COLOR32, toolCount, 0);
    const auto strip = static_cast<HBITMAP>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDB_TOOLBAR_100),
                                                       IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    ImageList_Add(pictures, strip, nullptr);
    DeleteObject(strip);
    SendMessageW(toolbar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures));
    for (int tool = 0; tool < toolCount; ++tool) {
        TBBUTTON button{};
        button.iBitmap = tool;
        button.idCommand = 300 + tool;
        button.fsState = TBSTATE_ENABLED;
        SendMessageW(toolbar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
}

void Create() {
    Floor& floor = TheFloor();
    floor.window = CreateWindowExW(WS_EX_TOPMOST, windowClass, L"Floor",
                                   WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN, 300, 200,
                                   usualWidth, usualHeight, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    RECT client{};
    GetClientRect(floor.window, &client);
    const int width = client.right;
    AddToolbar(width);
    floor.text = Add(WC_EDITW, WS_BORDER | ES_AUTOHSCROLL, {10, 30, width / 2, 56}, textField);
    floor.typing = Add(WC_EDITW, WS_BORDER | ES_AUTOHSCROLL, {width / 2 + 4, 30, width - 10, 56}, typingField);
    SetWindowSubclass(floor.typing, TimeCharacters, 0, 0);
    Add(TRACKBAR_CLASSW, TBS_NOTICKS, {10, 64, width / 2, 90});
    Add(TRACKBAR_CLASSW, TBS_NOTICKS, {width / 2 + 4, 64, width - 10, 90});
    for (int index = 0; index < buttonCount; ++index) {
        HWND& button = floor.buttons.at(static_cast<std::size_t>(index));
        button = Add(WC_BUTTONW, BS_PUSHBUTTON, ButtonPlace(index, width, client.bottom));
        SetWindowTextW(button, L"q");
    }
    Add(STATUSCLASSNAMEW, CCS_NOPARENTALIGN | CCS_NORESIZE, {0, client.bottom - 22, width, client.bottom});

    POINT keys{0, 100};
    ClientToScreen(floor.window, &keys);
    floor.layer =
        CreateWindowExW(WS_EX_LAYERED | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, layerClass, L"", WS_POPUP, keys.x, keys.y,
                        width, client.bottom - 130, floor.window, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetLayeredWindowAttributes(floor.layer, 0, 5, LWA_ALPHA);
    SetTimer(floor.layer, 1, 50, nullptr);
    ShowWindow(floor.window, SW_SHOW);
    ShowWindow(floor.layer, SW_SHOWNA);
}

void SetCaptions(Floor& floor) {
    for (int index = 0; index < captionCount; ++index)
        SetWindowTextW(floor.buttons.at(static_cast<std::size_t>(index)), floor.turn % 2 == 0 ? L"q" : L"Q");
}

void Place(Floor& floor) {
    // Sizes and places as far apart as those of the real program.
    const int width = 500 + static_cast<int>(floor.turn * 97 % 440);
    const int height = width / 2 + 20;
    const POINT place{static_cast<int>(floor.turn * 131 % 700), static_cast<int>(floor.turn * 71 % 400)};
    SetWindowPos(floor.window, nullptr, place.x, place.y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT client{};
    GetClientRect(floor.window, &client);
    HDWP positions = BeginDeferWindowPos(buttonCount);
    for (int index = 0; index < buttonCount && positions; ++index) {
        const RECT to = ButtonPlace(index, client.right, client.bottom);
        positions = DeferWindowPos(positions, floor.buttons.at(static_cast<std::size_t>(index)), nullptr, to.left,
                                   to.top, to.right - to.left, to.bottom - to.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    if (positions)
        EndDeferWindowPos(positions);
    POINT keys{0, 100};
    ClientToScreen(floor.window, &keys);
    SetWindowPos(floor.layer, nullptr, keys.x, keys.y, client.right, client.bottom - 130,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    RedrawWindow(floor.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

LRESULT TypingTime(Floor& floor) {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    const LONGLONG ticks = floor.typed.last.QuadPart - floor.typed.first.QuadPart;
    floor.typed = {};
    SetWindowTextW(floor.typing, L"");
    return static_cast<LRESULT>(ticks * 1000000 / frequency.QuadPart);
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    Floor& floor = TheFloor();
    if (message >= setCaptions && message <= place)
        ++floor.turn;
    switch (message) {
    case setCaptions: SetCaptions(floor); return 0;
    case setText:
        SetWindowTextW(floor.text, std::wstring(longText, floor.turn % 2 == 0 ? L'*' : L'a').c_str());
        return 0;
    case place: Place(floor); return 0;
    case typingTime: return TypingTime(floor);
    case WM_TIMER: return 0;
    case WM_DESTROY:
        if (window == floor.window)
            PostQuitMessage(0);
        return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

void Register(const wchar_t* name) {
    WNDCLASSW definition{};
    definition.lpfnWndProc = WindowProcedure;
    definition.hInstance = GetModuleHandleW(nullptr);
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    definition.lpszClassName = name;
    RegisterClassW(&definition);
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    OleInitialize(nullptr);
    // The real program's other DLLs; this one would not need them.
    for (const wchar_t* name : {L"imm32.dll", L"advapi32.dll", L"oleacc.dll", L"oleaut32.dll"})
        LoadLibraryW(name);
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_LINK_CLASS};
    InitCommonControlsEx(&classes);
    Register(windowClass);
    Register(layerClass);
    Create();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    OleUninitialize();
    return 0;
}
