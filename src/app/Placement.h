#pragma once

#include "ui/MainWindow.h"
#include "win32/ClockRandom.h"
#include "win32/ProgramState.h"

namespace vextrel {

/// Where the main window stands and how large it is: at random.
class Placement {
  public:
    Placement(MainWindow& form, const ProgramState& program)
        : form_(form)
        , program_(program) {}

    /// Gives the main window a random size and place, and arranges it.
    void RandomiseFormSizeAndPlacement();
    /// The widest that a random size can be on the window's monitor, and the height that follows.
    void TakeWidestSize();
    /// Brings a window back whose title bar lies on no monitor any more.
    void ReturnToVisiblePlace() noexcept;

  private:
    /// Sets the window's height for the present width; what is in it is arranged when it is shown or resized then.
    void FitHeight();
    void MoveInto(const RECT& workArea) noexcept;

    MainWindow& form_;
    const ProgramState& program_;
    ClockRandom random_;
};

} // namespace vextrel
