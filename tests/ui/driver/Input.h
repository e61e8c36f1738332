#pragma once

#include "driver/Wait.h"

#include <windows.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace vextrel::driver {

/// The real pointer, moved and pressed as a user would. Lets go of a held button when it goes.
class Pointer {
  public:
    Pointer() = default;
    ~Pointer();
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;

    /// Moves in steps to a place on the screen, in pixels. `pace` is the user's speed: the time between two steps.
    void MoveTo(POINT place, int steps = 1, Milliseconds pace = {});
    /// Both happen where the pointer was moved to last.
    void Press();
    void Release();
    void Click(POINT place);
    void Click(HWND window);
    void DoubleClick(POINT place);
    /// A press or a release of any button where the pointer stands, as SendInput names it.
    static void SendButton(DWORD flags, DWORD which = 0);

    /// Presses at one place and moves to the other, slowly enough for OLE to follow; the button stays down.
    void Pull(POINT from, POINT to);
    /// Pull() and Release().
    void Drag(POINT from, POINT to);

    [[nodiscard]] static POINT Place();

  private:
    POINT place_ = Place();
    bool held_ = false;
};

/// Strokes on the real keyboard, by virtual-key code.
class Keys {
  public:
    static void Down(WORD key);
    static void Up(WORD key);
    /// One stroke while the modifiers are held.
    static void Stroke(WORD key, std::initializer_list<WORD> modifiers = {});
    /// Characters as they are, whatever keys the layout has for them.
    static void Type(std::wstring_view text);
};

/// The pointer's shape.
[[nodiscard]] HCURSOR ShownPointer();
/// What it is once it no longer changes.
[[nodiscard]] HCURSOR SettledPointer();

/// Puts a text on the clipboard, in place of what is there.
void SetClipboard(const std::wstring& text);

} // namespace vextrel::driver
