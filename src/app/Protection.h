#pragma once

#include "core/OptionValues.h"
#include "ui/MainWindow.h"
#include "ui/Operations.h"
#include "ui/ProtectiveLayer.h"
#include "win32/ClockRandom.h"

#include <cstdint>

namespace vextrel {

/// What keeps others from looking: the layer and its opacity, the pointer as a grey dot, the window's random place.
class Protection {
  public:
    Protection(MainWindow& form, ProtectiveLayer& cover, Operations& operations, std::int16_t defaultCoverTransparency)
        : form_(form)
        , cover_(cover)
        , operations_(operations)
        , defaultCoverTransparency_(defaultCoverTransparency) {}

    /// The last value written, applied or not.
    [[nodiscard]] std::int16_t CoverTransparency() const noexcept { return coverTransparency_; }
    /// Outside 0..255 the value is stored and nothing applied.
    void SetCoverTransparency(std::int16_t value) noexcept;

    /// Shows the layer and lays it over the keys.
    void ResetFormCover() noexcept;
    /// Lets the layer follow the main window. @return the first key's rectangle on the screen, in pixels.
    RECT FormMove() noexcept;

    /// Gives the main window a random size and place, and lays it out.
    void RandomiseFormSizeAndPlacement();
    /// Sets the window's height for the present width; what is in it is laid out when it is shown or resized then.
    void FitHeight();
    /// Puts the main window, and the layer right above it, before all other windows or among them; activates neither.
    void KeepTogether(bool topmost) noexcept;
    /// Whether both are topmost, or both are not.
    [[nodiscard]] bool AreTopmost(bool topmost) const noexcept;
    /// Puts the layer above the main window again, if it is not.
    void KeepLayerAbove() noexcept;
    /// Brings a window that no monitor shows any more back to a visible place.
    void ReturnToVisiblePlace() noexcept;

    /// Asks the user, except while the stored settings are being applied. @return whether the dot is in force now.
    bool HideMouse();
    /// From now on a question may be asked: the program has started.
    void AllowQuestions() noexcept { mayAsk_ = true; }
    /// @return false: the dot is no longer in force.
    bool ShowMouse() noexcept;
    /// Whether the layer takes the clicks, or the keys beneath it do.
    [[nodiscard]] bool LayerTakesClicks() const noexcept { return !cover_.IsInvisible(); }
    [[nodiscard]] bool MouseHidden() const noexcept { return mouseHidden_; }
    /// Whether the dot is what the pointer shows: in force, and the pointer came over the keys last.
    [[nodiscard]] bool ShowsDot() const noexcept { return mouseHidden_ && pointerOverKeys_; }
    void PointerOverKeys(bool over) noexcept;

    /// Another program's window came to the front, or ours came back. @return what the layer's opacity is set to then.
    void CheckForeground(bool layerMarked);
    [[nodiscard]] bool IsAway() const noexcept { return away_; }

  private:
    /// The random top follows from the height before: a window that has grown may reach below the screen.
    void RaiseAboveLowerEdge() noexcept;
    void SetPointerHidden(bool hidden) noexcept;
    void ComeBack(bool layerMarked);
    [[nodiscard]] bool FocusIsWanted() const;

    MainWindow& form_;
    ProtectiveLayer& cover_;
    Operations& operations_;
    ClockRandom random_;
    std::int16_t defaultCoverTransparency_;
    std::int16_t coverTransparency_ = 0;
    bool mouseHidden_ = false;
    bool pointerOverKeys_ = true;
    bool away_ = false;
    bool mayAsk_ = false;
};

} // namespace vextrel
