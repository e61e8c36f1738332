#pragma once

#include "ui/MainWindow.h"
#include "win32/ClockRandom.h"

namespace vextrel {

/// Where the main window stands and how large it is: at random.
class Placement {
  public:
    explicit Placement(MainWindow& form)
        : form_(form) {}

    /// Gives the main window a random size and place, and arranges it.
    void RandomiseFormSizeAndPlacement();
    /// Sets the window's height for the present width; what is in it is arranged when it is shown or resized then.
    void FitHeight();
    /// Brings a window that no monitor shows any more back to a visible place.
    void ReturnToVisiblePlace() noexcept;

  private:
    MainWindow& form_;
    ClockRandom random_;
};

} // namespace vextrel
