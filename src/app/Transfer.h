#pragma once

#include "app/PasswordField.h"
#include "core/OptionValues.h"
#include "core/PasswordView.h"
#include "transfer/DragData.h"
#include "transfer/Injection.h"
#include "ui/DragHint.h"
#include "ui/Operations.h"

#include <memory>
#include <string>

namespace vextrel {

/// Takes the password out of its box into another program: a drag from its start to its end, and injection at its end
/// if that is the mode.
class Transfer {
  public:
    Transfer(MainWindow& form, PasswordField& field, Operations& operations)
        : form_(form)
        , field_(field)
        , operations_(operations) {}

    [[nodiscard]] enum DragDropMode DragDropMode() const noexcept { return mode_; }
    void SetDragDropMode(enum DragDropMode mode) noexcept { mode_ = mode; }
    [[nodiscard]] bool KeepPasswordAfterDragDrop() const noexcept { return keepPassword_; }
    void SetKeepPasswordAfterDragDrop(bool keep) noexcept { keepPassword_ = keep; }

    /// What the user should know of the last transfer, in a few words; empty when there is nothing to say.
    [[nodiscard]] const std::wstring& Notice() const noexcept { return notice_; }

    /// The whole drag. Returns when the button is up and the transfer is over. Refused while one is running.
    void Drag();

    /// Wipes what a drag carries or has handed on, whoever still holds it.
    void DiscardHanded() noexcept;

  private:
    void StartDrag(TextDataObject& data);
    void CompleteDrag(TransferEnd end);
    [[nodiscard]] TransferEnd InjectAtPointer();

    MainWindow& form_;
    PasswordField& field_;
    Operations& operations_;
    enum DragDropMode mode_ = DragDropMode::DragDrop;
    bool keepPassword_ = false;
    std::unique_ptr<DragData> data_; ///< of the last drag, until the next one
    TransferPlan plan_;
    std::unique_ptr<DragHint> note_;
    std::wstring notice_;
};

} // namespace vextrel
