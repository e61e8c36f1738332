#pragma once

#include "driver/Input.h"
#include "driver/Process.h"
#include "target/Contract.h"

#include <sstream>

namespace vextrel::driver {

/// The second program, with fields to drop on and to type into; tests/ui/target/Contract.h lists its options. It starts
/// in the foreground.
class Target {
  public:
    explicit Target(const std::wstring& options = {})
        : process_(OwnFolder() / L"vextrel_target.exe", options)
        , window_(process_.AwaitWindow(target::windowClass)) {
        SettleInForeground(window_);
    }

    [[nodiscard]] const Process& Running() const { return process_; }
    [[nodiscard]] HWND Window() const { return window_; }
    [[nodiscard]] HWND Field(int id) const {
        const HWND field = GetDlgItem(window_, id);
        Check(field != nullptr, "finding the target's field");
        return field;
    }
    [[nodiscard]] std::wstring Text(int id = target::dropField) const { return TextOf(Field(id)); }
    [[nodiscard]] int Drops() const { return std::stoi(Text(target::dropCount)); }
    /// How often a drag has entered the drop field and been looked at.
    [[nodiscard]] int Entries() const { return std::stoi(Text(target::enterCount)); }
    [[nodiscard]] std::wstring TypedCharacters() const {
        std::wistringstream record(Text(target::charRecord));
        std::wstring characters;
        for (unsigned unit = 0; record >> std::hex >> unit;)
            characters += static_cast<wchar_t>(unit);
        return characters;
    }

    /// Pulls something onto dropField until that has looked at it: OLE may begin with the last move, and looks where
    /// the pointer is with the next one; and Wine loses the button's release while a target is asking for the data.
    void PullHere(Pointer& pointer, POINT from) const {
        const int entries = Entries();
        const POINT field = CentreOf(Field(target::dropField));
        pointer.Pull(from, field);
        Await("the drag enters the target", [&, shift = 0]() mutable {
            shift = 1 - shift;
            pointer.MoveTo({field.x + shift, field.y}, 1, Pointer::dragPace);
            return Entries() > entries;
        });
    }
    /// The same to its end. @return the text that arrived.
    std::wstring TakeDrag(Pointer& pointer, POINT from) const {
        const int drops = Drops();
        PullHere(pointer, from);
        pointer.Release();
        Await("the drop arrives", [&] { return Drops() > drops; });
        return Text();
    }
    /// With --read=always --keep: asks what it has kept.
    void ReadNow() const { Ask(window_, target::readNow); }
    /// Moves it to the corner of the screen that is furthest from another window.
    void KeepClearOf(const RECT& other) const {
        const RECT own = BoundsOf(window_);
        const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        const bool toTheRight = CentreOf(other).x < CentreOf(screen).x, down = CentreOf(other).y < CentreOf(screen).y;
        SetWindowPos(window_, nullptr, toTheRight ? screen.right - Width(own) : 0,
                     down ? screen.bottom - Height(own) : 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        Await("the target is clear of the window", [&, common = RECT{}]() mutable {
            const RECT now = BoundsOf(window_);
            return !IntersectRect(&common, &now, &other);
        });
    }

  private:
    Process process_;
    HWND window_;
};

} // namespace vextrel::driver
