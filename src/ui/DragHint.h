#pragma once

#include "core/OptionValues.h"
#include "win32/Form.h"
#include "win32/SystemLook.h"

namespace vextrel {

/// The hint that follows the pointer while the password is dragged. It takes neither the pointer nor the focus nor the
/// drop.
class DragHint final : public Form {
  public:
    DragHint() = default;
    ~DragHint() override { Unload(); }

    /// Shows the hint beside the pointer and paints it at once. @param owner the main window.
    void ShowFor(DragDropMode mode, HWND owner);

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Arrange();
    void FollowPointer() noexcept;

    FontCache fonts_;
    DragDropMode mode_ = DragDropMode::DragDrop;
    HWND header_ = nullptr;
    HWND text_ = nullptr;
    bool changingDpi_ = false;
};

} // namespace vextrel
