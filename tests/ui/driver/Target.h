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
    /// The units that came to the edit field as characters, one by one.
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
    /// With --read=always: asks what it has kept.
    void ReadNow() const { Ask(window_, target::readNow); }
    /// Moves it to a corner of the screen where it does not cover the given rectangle.
    void KeepClearOf(const RECT& other) const {
        const RECT own = BoundsOf(window_);
        const LONG right = GetSystemMetrics(SM_CXSCREEN) - Width(own);
        const LONG bottom = GetSystemMetrics(SM_CYSCREEN) - Height(own);
        for (const POINT corner : {POINT{0, 0}, POINT{right, 0}, POINT{0, bottom}, POINT{right, bottom}}) {
            const RECT there{corner.x, corner.y, corner.x + Width(own), corner.y + Height(own)};
            RECT common{};
            if (IntersectRect(&common, &there, &other))
                continue;
            SetWindowPos(window_, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            return Await("the target has moved", [&] {
                const RECT now = BoundsOf(window_);
                return !IntersectRect(&common, &now, &other);
            });
        }
        throw Failure("no corner of the screen is free for the target");
    }

  private:
    Process process_;
    HWND window_;
};

} // namespace vextrel::driver
