#pragma once

#include "core/HoverEntry.h"
#include "ui/Events.h"
#include "win32/Form.h"

namespace vextrel {

/// The protective layer: a translucent window laid exactly over the keys. It takes the clicks, works out from the
/// pointer's position alone which key lies beneath, and drives that key itself.
class ProtectiveLayer final : public Form {
  public:
    ProtectiveLayer() = default;
    ~ProtectiveLayer() override { Unload(); }

    /// Creates the window, hidden, owned by the main window. Whom it reports to outlives it.
    /// @throws Error with the system's code.
    void Load(HWND mainWindow, LayerEvents& events);

    /// The box that receives synthesised keys while a layout is captured; never seen.
    [[nodiscard]] HWND txtSetup() const noexcept { return txtSetup_; }

    /// Lays the layer over an area of the screen, in pixels, without activating it or moving it in the stack.
    void Place(const RECT& area) noexcept;
    void Show(bool show) noexcept;
    /// The layer's opacity; nothing changes without one. At 0 clicks fall through to the keys, and the layer is marked
    /// so that they do wherever the program runs.
    void SetAlpha(std::optional<std::uint8_t> alpha) noexcept;
    [[nodiscard]] bool IsInvisible() const noexcept { return invisible_; }

    /// Of the hover timer.
    void Obey(HoverEntry::TimerOrder order, UINT intervalMs) noexcept;

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnUnload() noexcept override { StopHoverTimer(); }
    void StopHoverTimer() noexcept;

    [[nodiscard]] std::optional<int> KeyAt(POINT client) const noexcept;
    void OnMouseDown(POINT client);
    void OnMouseMove(POINT client, bool buttonHeld);
    void OnMouseUp(POINT client);
    void OnDoubleClick();
    void OnHoverTick();
    void ApplyClickThrough() noexcept;
    void Push(std::optional<int> key) noexcept;

    LayerEvents* events_ = nullptr;
    HWND txtSetup_ = nullptr;
    std::optional<int> pressedKey_;
    bool invisible_ = false;
    bool pressedElsewhere_ = false; ///< a button that is down went down while the layer took no input
    UINT hoverIntervalMs_ = 0;      ///< 0: the timer is stopped
    ULONGLONG hoverDueMs_ = 0;      ///< when its next tick is due
};

} // namespace vextrel
