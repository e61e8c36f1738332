#pragma once

#include "app/Options.h"
#include "core/PasswordView.h"
#include "transfer/DragData.h"

namespace vextrel {

/// Takes the password out of its box into another program: a drag from its start to its end, and injection at its end
/// if that is the mode.
class Transfer {
  public:
    Transfer(MainWindow& form, PasswordField& field, Operations& operations, const Options& options)
        : form_(form)
        , field_(field)
        , operations_(operations)
        , options_(options) {}

    /// The whole drag. Returns when the button is up and the transfer is over, of which the status bar then tells.
    /// Refused while one is running.
    void Drag();

    /// Wipes what a drag carries or has handed on, whoever still holds it.
    void DiscardHanded() noexcept;

  private:
    void CompleteDrag(const TransferPlan& plan, TransferEnd end);
    [[nodiscard]] DragDropMode Mode() const { return options_.Snapshot().dragDropMode; }

    MainWindow& form_;
    PasswordField& field_;
    Operations& operations_;
    const Options& options_;
    std::optional<DragData> data_; ///< of the last drag, until the next one
};

} // namespace vextrel
