#include "driver/Input.h"

#include "driver/Process.h"

#include <cstring>

namespace vextrel::driver {

namespace {

void Send(INPUT input) {
    Check(SendInput(1, &input, sizeof input) == 1, "SendInput");
}

void SendMouse(DWORD flags, POINT place = {}) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    if ((flags & MOUSEEVENTF_ABSOLUTE) != 0) {
        // SendInput counts a screen as 65536 units and cuts off; half a unit more hits the middle of the pixel.
        const auto units = [](LONG pixels, int extent) {
            return static_cast<LONG>((pixels * 65536LL + 32768) / extent);
        };
        input.mi.dx = units(place.x, GetSystemMetrics(SM_CXSCREEN));
        input.mi.dy = units(place.y, GetSystemMetrics(SM_CYSCREEN));
    }
    Send(input);
}

void SendKey(WORD key, WORD unit, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = unit;
    input.ki.dwFlags = flags;
    Send(input);
}

WORD ScanCode(WORD key) {
    return static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
}

// For a drag: OLE looks at the pointer when messages come, a user's hand sends them at about this pace.
constexpr Milliseconds dragPace{40};
constexpr int dragSteps = 12;

// Wine 10 loses a move that comes while the program takes the one before it.
constexpr DWORD betweenMoves = 20;

// A press and a release bring their place along. Under Wine the pointer's moves come back as events of the X server,
// and one that comes late (from a window that has just appeared under the pointer's former place, say) would otherwise
// put the press there; GetCursorPos asks the X server and does not show it.
constexpr DWORD pinned = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;

} // namespace

Pointer::~Pointer() {
    if (held_) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = MOUSEEVENTF_LEFTUP;
        SendInput(1, &input, sizeof input);
    }
}

POINT Pointer::Place() {
    POINT place{};
    Check(GetCursorPos(&place) != FALSE, "GetCursorPos");
    return place;
}

void Pointer::MoveTo(POINT place, int steps, Milliseconds pace) {
    Sleep(betweenMoves);
    const POINT start = Place();
    for (int step = 1; step <= steps; ++step) {
        const POINT next{start.x + (place.x - start.x) * step / steps, start.y + (place.y - start.y) * step / steps};
        SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, next);
        Sleep(static_cast<DWORD>(pace.count()));
    }
    place_ = place;
    Await("the pointer arrives at " + std::to_string(place.x) + ", " + std::to_string(place.y),
          [&, polls = 0]() mutable {
              const POINT now = Place();
              if (++polls % 50 == 0) { // a late event of the X server has taken it elsewhere
                  SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, place);
              }
              return now.x == place.x && now.y == place.y;
          });
}

void Pointer::Press() {
    held_ = true;
    SendMouse(MOUSEEVENTF_LEFTDOWN | pinned, place_);
}

void Pointer::Release() {
    held_ = false;
    SendMouse(MOUSEEVENTF_LEFTUP | pinned, place_);
}

void Pointer::Click(POINT place) {
    MoveTo(place);
    Press();
    Release();
}

void Pointer::Click(HWND window) {
    Click(CentreOf(window));
}

void Pointer::DoubleClick(POINT place) {
    Click(place);
    Press();
    Release();
}

void Pointer::SendButton(DWORD flags, DWORD which) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = which;
    Send(input);
}

void Pointer::Pull(POINT from, POINT to) {
    MoveTo(from);
    Press();
    MoveTo(to, dragSteps, dragPace);
}

void Pointer::Drag(POINT from, POINT to) {
    Pull(from, to);
    // One more step on the spot, so that the target has seen the pointer before the button goes up.
    MoveTo({to.x + 1, to.y}, 1, dragPace);
    Release();
}

void Keys::Down(WORD key) {
    SendKey(key, ScanCode(key), 0);
}

void Keys::Up(WORD key) {
    SendKey(key, ScanCode(key), KEYEVENTF_KEYUP);
}

void Keys::Stroke(WORD key, std::initializer_list<WORD> modifiers) {
    for (const WORD modifier : modifiers)
        Down(modifier);
    Down(key);
    Up(key);
    for (const WORD modifier : modifiers)
        Up(modifier);
}

void Keys::Type(std::wstring_view text) {
    for (const wchar_t unit : text) {
        SendKey(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE);
        SendKey(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    }
}

HCURSOR ShownPointer() {
    CURSORINFO info{};
    info.cbSize = sizeof info;
    Check(GetCursorInfo(&info) != FALSE, "GetCursorInfo");
    return info.hCursor;
}

HCURSOR SettledPointer() {
    HCURSOR pointer = nullptr;
    Await("the pointer settles", [&pointer, same = 0]() mutable {
        const HCURSOR now = ShownPointer();
        same = now != nullptr && now == pointer ? same + 1 : 0;
        pointer = now;
        return same == 20;
    });
    return pointer;
}

void SetClipboard(const std::wstring& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(memory), text.c_str(), bytes);
    GlobalUnlock(memory);
    Await("the clipboard opens", [] { return OpenClipboard(nullptr) != FALSE; });
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

} // namespace vextrel::driver
