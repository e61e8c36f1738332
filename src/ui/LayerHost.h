#pragma once

#include "core/OptionValues.h"
#include "win32/Windows.h"

namespace vextrel {

/// What the protective layer asks of the controller beyond forwarding events.
class LayerHost {
  public:
    [[nodiscard]] virtual InputMode CurrentInputMode() const = 0;
    [[nodiscard]] virtual bool IsHoverEntryEnabled() const = 0;
    /// The pointer is no longer over the keys: none is armed.
    virtual void ClearCurrentButton() = 0;
    /// The window of a key button, 1 to 65.
    [[nodiscard]] virtual HWND KeyWindow(int button) = 0;
    /// The layer was clicked: the main window, not the layer, comes to the front.
    virtual void BringToFront() = 0;
    /// A tick of the foreground watch.
    virtual void CheckForeground() = 0;
    /// Runs the body of an operation that pumps messages.
    virtual void FlashKey(int button) = 0;

  protected:
    LayerHost() = default;
    LayerHost(const LayerHost&) = default;
    LayerHost& operator=(const LayerHost&) = default;
    ~LayerHost() = default;
};

} // namespace vextrel
