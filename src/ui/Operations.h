#pragma once

#include "core/Pinned.h"
#include "win32/ScreenCapture.h"

#include <functional>
#include <optional>

namespace vextrel {

/// Keeps count of the operations that run a message loop inside themselves (drags, injection, layout capture, the
/// double-click flash, menus, everything modal), since events that arrive meanwhile must find the program safe:
/// one transfer at a time, the layer disabled under modal windows, closing put off until all of it has unwound.
class Operations {
  public:
    enum class Kind {
        Transfer, ///< a drag, an injection or a capture: what would disturb it is refused
        Modal,    ///< a dialog, message box, common dialog or input box
        Menu,     ///< a menu of the main window that is open
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
        std::optional<SystemWindowsScope> systemWindows_; ///< while a menu or something modal is shown
    };

    /// The windows that modality and closing act on; null while there are none.
    void SetWindows(HWND mainWindow, HWND layer) noexcept {
        mainWindow_ = mainWindow;
        layer_ = layer;
    }
    [[nodiscard]] HWND MainWindow() const noexcept { return mainWindow_; }

    [[nodiscard]] bool IsTransferring() const noexcept { return transfers_ > 0; }
    /// Timers and hover entry rest while anything but a flash is going on.
    [[nodiscard]] bool IsResting() const noexcept { return depth_ > flashes_; }
    [[nodiscard]] bool IsClosePending() const noexcept { return closePending_; }

    /// A close request. @return whether the main window may be unloaded now; if not, the request is remembered, menus
    /// and open dialogs are ended, and it comes again (WM_CLOSE) when the outermost operation has unwound. Repeat it
    /// while it is pending: a dialog that ends may leave another one beneath it.
    [[nodiscard]] bool RequestClose() noexcept;

    /// @param onTransfer must not throw; called when a transfer begins, and when it has unwound.
    void SetOnTransfer(std::function<void()> onTransfer) { onTransfer_ = std::move(onTransfer); }

  private:
    HWND mainWindow_ = nullptr;
    HWND layer_ = nullptr;
    int transfers_ = 0;
    int modals_ = 0;
    int flashes_ = 0;
    int depth_ = 0; ///< of all
    bool closePending_ = false;
    std::function<void()> onTransfer_;
};

/// Runs a message box of the system as a modal operation; without a main window as a plain one.
/// @param owner null: the main window.
int ShowMessageBox(Operations& operations, const wchar_t* text, const wchar_t* title, UINT style, HWND owner = nullptr);

} // namespace vextrel
