#pragma once

#include "driver/Process.h"

#include <functional>
#include <optional>
#include <vector>

namespace vextrel::bench {

/// Time since some moment, in milliseconds.
[[nodiscard]] double Now();

/// A program under measurement, from its start on: either the real one or the floor.
class Subject {
  public:
    struct Names {
        const wchar_t* mainClass;
        const wchar_t* mainTitle;
        const wchar_t* layerClass;
    };

    /// Returns when both windows are shown and painted.
    Subject(const std::filesystem::path& program, const Names& names);

    [[nodiscard]] double StartMs() const { return startMs_; }
    [[nodiscard]] HWND Main() const { return main_; }
    [[nodiscard]] HWND Layer() const { return layer_; }
    [[nodiscard]] HWND Control(int id) const;
    /// A message that the program carries out before this returns, and then paints what that has changed.
    /// @return how long both took, in milliseconds
    double Time(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    struct MemoryKb {
        double own;      ///< shared with no other process
        double resident; ///< in memory now, shared or not
    };
    [[nodiscard]] MemoryKb Memory() const;
    /// Processor time used so far, user and kernel together, in milliseconds.
    [[nodiscard]] double ProcessorMs() const;
    /// Names of the DLLs in it, lower case, sorted.
    [[nodiscard]] std::vector<std::wstring> Dlls() const;

    void Close() const;

  private:
    [[nodiscard]] bool WaitsForPaint() const;

    double begun_;
    driver::Process process_;
    std::filesystem::path system_; ///< under Wine: what the system below says of the process
    HWND main_ = nullptr;
    HWND layer_ = nullptr;
    double startMs_ = 0;
};

} // namespace vextrel::bench
