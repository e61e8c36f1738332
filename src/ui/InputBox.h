#pragma once

#include "ui/Dialog.h"

namespace vextrel {

/// Asks for one line of text.
class InputBox final : public Dialog {
  public:
    /// @param answer what stands in the field at first, selected.
    InputBox(std::wstring title, std::wstring prompt, std::wstring answer)
        : Dialog(std::move(title), {380, 120})
        , prompt_(std::move(prompt))
        , answer_(std::move(answer)) {}

    /// @return the text, an empty one too; nothing when the user cancelled.
    [[nodiscard]] std::optional<std::wstring> Ask(Operations& operations, HWND owner) {
        return RunModal(operations, owner) == IDOK ? std::optional(answer_) : std::nullopt;
    }

  private:
    void CreateControls() override;
    void FitControls() override;
    void OnCommand(int id) override;

    std::wstring prompt_;
    std::wstring answer_;
    HWND field_ = nullptr;
};

} // namespace vextrel
