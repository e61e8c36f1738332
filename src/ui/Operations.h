#pragma once

#include "core/Pinned.h"
#include "win32/ScreenCapture.h"

#include <functional>
#include <optional>

namespace vextrel {

/// Keeps count of the operations that run a message loop inside themselves (drags, injection, layout capture, the
/// double-click flash, everything modal), since events that arrive meanwhile must find the program safe:
/// one transfer at a time, the layer disabled under modal windows, closing put off until all of it has unwound.
class Operations {
  public:
    enum class Kind {
        Transfer, ///< a drag, an injection or a capture: what would disturb it is refused
        Modal,    ///< a dialog, message box, common dialog or input box
        Flash,    ///< pumps messages, and clicks during it count
    };

    /// Runs an operation for as long as it lives.
    class Scope : private Pinned {
      public:
        Scope(Operations& operations, Kind kind) noexcept;
        ~Scope();

      private:
        Operations& operations_;
        Kind kind_;
        std::optional<SystemWindowsScope> systemWindows_; ///< while something modal is shown
    };

    /// The windows that modality and closing act on; null while there are none.
    void SetWindows(HWND mainWindow, HWND layer) noexcept {
        mainWindow_ = mainWindow;
        layer_ = layer;
    }
    [[nodiscard]] HWND MainWindow() const noexcept { return mainWindow_; }

    [[nodiscard]] bool IsTransferring() const noexcept { return transfers_ > 0; }
    /// Timers and hover entry rest while something modal or a transfer is going on.
    [[nodiscard]] bool IsResting() const noexcept { return modals_ > 0 || transfers_ > 0; }
    [[nodiscard]] bool IsClosePending() const noexcept { return closePending_; }

    /// A close request. @return whether the main window may be unloaded now; if not, the request is remembered, open
    /// dialogs are ended, and it comes again (WM_CLOSE) when the outermost operation has unwound.
    [[nodiscard]] bool RequestClose() noexcept;

    /// What waits for the end of a transfer; called when the last one has unwound.
    void SetAfterTransfer(std::function<void()> afterTransfer) { afterTransfer_ = std::move(afterTransfer); }

  private:
    HWND mainWindow_ = nullptr;
    HWND layer_ = nullptr;
    int transfers_ = 0;
    int modals_ = 0;
    int depth_ = 0;
    bool closePending_ = false;
    std::function<void()> afterTransfer_;
};

/// Runs a message box of the system as a modal operation; without a main window as a plain one.
int ShowMessageBox(Operations& operations, const wchar_t* text, const wchar_t* title, UINT style);

} // namespace vextrel
