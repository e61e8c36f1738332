#pragma once

#include "driver/Process.h"

#include <cstring>
#include <utility>

namespace vextrel::driver {

/// The real pointer, moved and pressed as a user would. Lets go of a held button when it goes.
class Pointer : Pinned {
  public:
    Pointer() = default;
    ~Pointer() {
        if (held_)
            SendButton(MOUSEEVENTF_LEFTUP);
    }

    /// Moves in steps to a place on the screen, in pixels. `pace` is the user's speed: the time between two steps.
    void MoveTo(POINT place, int steps = 1, Milliseconds pace = {}) {
        Sleep(20); // Wine 10 loses a move that comes while the program takes the one before it
        const POINT start = Place();
        for (int step = 1; step <= steps; ++step) {
            Send(0, {start.x + (place.x - start.x) * step / steps, start.y + (place.y - start.y) * step / steps});
            Sleep(static_cast<DWORD>(pace.count()));
        }
        place_ = place;
        Await("the pointer arrives", [&, polls = 0]() mutable {
            if (++polls % 50 == 0) // a late event of the X server has taken it elsewhere
                Send(0, place);
            return Place().x == place.x && Place().y == place.y;
        });
    }
    /// Both happen where the pointer was moved to last.
    void Press() {
        held_ = true;
        Send(MOUSEEVENTF_LEFTDOWN, place_);
    }
    void Release() {
        held_ = false;
        Send(MOUSEEVENTF_LEFTUP, place_);
    }
    void Click(POINT place) {
        MoveTo(place);
        Press();
        Release();
    }
    void Click(HWND window) { Click(CentreOf(window)); }
    void DoubleClick(POINT place) {
        Click(place);
        Click(place);
    }
    /// A press or a release of any button where the pointer stands.
    static void SendButton(DWORD flags, DWORD which = 0) { mouse_event(flags, 0, 0, which, 0); }

    /// Presses at one place and moves to the other, slowly enough for OLE to follow; the button stays down.
    void Pull(POINT from, POINT to) {
        MoveTo(from);
        const HWND pressed = WindowFromPoint(from);
        Press();
        // Whoever drags takes the mouse first. A program that still has messages to handle comes to the press late,
        // and would find the pointer gone.
        const auto taken = [&] { return GuiOf(pressed).hwndCapture != nullptr; };
        wchar_t name[64] = {};
        GetClassNameW(pressed, name, 64);
        Await("a window of class " + Narrow(name) + " takes the press", taken, Milliseconds(60000));
        MoveTo(to, 12, dragPace);
    }
    void Drag(POINT from, POINT to) {
        Pull(from, to);
        // One more step on the spot, so that the target has seen the pointer before the button goes up.
        MoveTo({to.x + 1, to.y}, 1, dragPace);
        Release();
    }

    [[nodiscard]] static POINT Place() {
        POINT place{};
        Check(GetCursorPos(&place) != FALSE, "GetCursorPos");
        return place;
    }

    /// OLE looks at the pointer when messages come; a user's hand sends them at about this pace.
    static constexpr Milliseconds dragPace{40};

  private:
    /// Every press and release brings its place along: under Wine moves come back as events of the X server, and one
    /// that comes late would put the press elsewhere. GetCursorPos asks the X server and does not show it.
    static void Send(DWORD flags, POINT place) {
        // A screen counts as 65536 units, and what is given is cut off; half a unit more hits the middle of the pixel.
        const auto units = [](LONG at, int extent) { return static_cast<DWORD>((at * 65536LL + 32768) / extent); };
        mouse_event(flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, units(place.x, GetSystemMetrics(SM_CXSCREEN)),
                    units(place.y, GetSystemMetrics(SM_CYSCREEN)), 0, 0);
    }

    POINT place_ = Place();
    bool held_ = false;
};

/// Strokes on the real keyboard, by virtual-key code.
struct Keys {
    static void Down(WORD key, DWORD flags = 0) { Send(key, MapVirtualKeyW(key, MAPVK_VK_TO_VSC), flags); }
    static void Up(WORD key) { Down(key, KEYEVENTF_KEYUP); }
    /// One stroke while the modifiers are held.
    static void Stroke(WORD key, std::initializer_list<WORD> modifiers = {}) {
        for (const WORD modifier : modifiers)
            Down(modifier);
        Down(key);
        Up(key);
        for (const WORD modifier : modifiers)
            Up(modifier);
    }
    /// Characters as they are, whatever keys the layout has for them.
    static void Type(std::wstring_view text) {
        for (const wchar_t unit : text)
            for (const DWORD flags : {DWORD{KEYEVENTF_UNICODE}, DWORD{KEYEVENTF_UNICODE | KEYEVENTF_KEYUP}})
                Send(0, unit, flags);
    }

  private:
    static void Send(WORD key, UINT code, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki = {key, static_cast<WORD>(code), flags, 0, 0};
        Check(SendInput(1, &input, sizeof input) == 1, "SendInput");
    }
};

[[nodiscard]] inline HCURSOR ShownPointer() {
    CURSORINFO info{};
    info.cbSize = sizeof info;
    Check(GetCursorInfo(&info) != FALSE, "GetCursorInfo");
    return info.hCursor;
}
/// Once it no longer changes.
[[nodiscard]] inline HCURSOR SettledPointer() {
    HCURSOR pointer = nullptr;
    Await("the pointer settles", [&pointer, same = 0]() mutable {
        const HCURSOR before = std::exchange(pointer, ShownPointer());
        same = pointer && pointer == before ? same + 1 : 0;
        return same == 20;
    });
    return pointer;
}

/// Puts a text on the clipboard, in place of what is there.
inline void SetClipboard(const std::wstring& text) {
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
