#pragma once

#include "core/OptionValues.h"

namespace vextrel {

/// What the protective layer reports, and asks.
class LayerEvents {
  public:
    /// A click on the key that lies beneath, 1 to 65.
    virtual void ButtonClick(int button) = 0;
    virtual void ButtonMouseMove(int button) = 0;
    /// Over a part of the layer that is no key.
    virtual void MouseMoveInForm() = 0;
    /// A double click on a key.
    virtual void FlashKey(int button) = 0;
    /// A key beneath is to be shown pushed, or no longer.
    virtual void PushKey(int button, bool pushed) noexcept = 0;
    /// The layer was clicked: the main window, not the layer, comes to the front.
    virtual void BringToFront() = 0;
    /// A tick of the hover timer with the pointer over the layer.
    virtual void Timer() = 0;
    /// The pointer is no longer over the keys: none is armed.
    virtual void ClearCurrentButton() = 0;
    /// A tick of the foreground watch.
    virtual void CheckForeground() = 0;

    [[nodiscard]] virtual InputMode CurrentInputMode() const = 0;
    [[nodiscard]] virtual bool IsHoverEntryEnabled() const = 0;
    /// Whether the grey dot is to be shown where the pointer is now.
    [[nodiscard]] virtual bool ShowsDotPointer() const = 0;

  protected:
    ~LayerEvents() = default;
};

} // namespace vextrel
