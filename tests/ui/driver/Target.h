#pragma once

#include "driver/Input.h"
#include "driver/Process.h"
#include "target/Contract.h"

#include <string>

namespace vextrel::driver {

/// The second program, with fields to drop on and to type into; tests/ui/target/Contract.h lists its options. It starts
/// in the foreground.
class Target {
  public:
    explicit Target(const std::wstring& options = {});

    [[nodiscard]] const Process& Running() const { return process_; }
    [[nodiscard]] HWND Window() const { return window_; }
    [[nodiscard]] HWND Field(int id) const;
    [[nodiscard]] std::wstring Text(int id = target::dropField) const;
    [[nodiscard]] int Drops() const;
    /// How often a drag has entered the drop field and been looked at.
    [[nodiscard]] int Entries() const;
    /// The units that came to the edit field as characters, one by one.
    [[nodiscard]] std::wstring TypedCharacters() const;

    /// Pulls something onto dropField until that has looked at it: a loaded program may begin late, and Wine loses the
    /// button's release while a target is asking for the data.
    void PullHere(Pointer& pointer, POINT from) const;
    /// The same to its end. @return the text that arrived.
    std::wstring TakeDrag(Pointer& pointer, POINT from) const;
    /// With --read=later: makes it read what was dropped on it.
    void ReadNow() const;
    /// Moves it to a corner of the screen where it does not cover the given rectangle.
    void KeepClearOf(const RECT& other) const;

  private:
    Process process_;
    HWND window_;
};

} // namespace vextrel::driver
