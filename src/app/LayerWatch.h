#pragma once

#include "core/LayerOpacity.h"
#include "ui/MainWindow.h"
#include "ui/Operations.h"
#include "ui/ProtectiveLayer.h"

namespace vextrel {

/// Keeps the protective layer where it belongs: over the keys, above the main window, as opaque as was asked for, and
/// out of the way while another program is in front.
class LayerWatch {
  public:
    LayerWatch(MainWindow& form, ProtectiveLayer& cover, Operations& operations)
        : form_(form)
        , cover_(cover)
        , operations_(operations) {}

    /// Outside 0..255 the value is stored and nothing applied.
    void SetCoverTransparency(std::int16_t value) noexcept;
    /// The check mark of the View menu's command: what the command did last, not how opaque the layer is.
    [[nodiscard]] bool IsMarked() const noexcept { return marked_; }
    /// The protective-layer command up to its question; says so where it can do nothing. @return whether to ask.
    [[nodiscard]] bool ToggleOpacity() noexcept;
    /// Asks for an opacity, and sets it.
    void AskOpacity();
    /// Whether the layer takes the clicks, or the keys beneath it do.
    [[nodiscard]] bool TakesClicks() const noexcept { return !cover_.IsInvisible(); }

    /// Lets the layer follow the main window: over the keys while they can be seen, else hidden.
    void FormMove() noexcept;

    /// Puts the main window, and the layer right above it, before all other windows or among them; activates neither.
    void KeepTogether(bool topmost) noexcept;
    /// Whether both are topmost, or both are not.
    [[nodiscard]] bool AreTopmost(bool topmost) const noexcept;
    /// Puts the layer above the main window again, if it is not.
    void KeepLayerAbove() noexcept;

    /// Another program's window may have come to the front, or ours back.
    void CheckForeground();

  private:
    [[nodiscard]] bool FocusIsWanted() const;

    MainWindow& form_;
    ProtectiveLayer& cover_;
    Operations& operations_;
    std::int16_t coverTransparency_ = 0; ///< the last value written, applied or not
    LayerCommandState command_;
    bool marked_ = false;
    bool away_ = false;
};

} // namespace vextrel
