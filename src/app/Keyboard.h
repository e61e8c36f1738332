#pragma once

#include "app/CaptionBoard.h"
#include "app/Hover.h"
#include "app/Layouts.h"
#include "app/Options.h"
#include "app/PasswordField.h"
#include "app/Protection.h"
#include "app/Transfer.h"
#include "ui/KeyboardEvents.h"
#include "ui/LayerHost.h"
#include "ui/MainWindow.h"
#include "ui/Operations.h"
#include "ui/ProtectiveLayer.h"
#include "win32/Hardening.h"
#include "win32/ProgramState.h"
#include "win32/SettingsStore.h"

#include <functional>
#include <string>
#include <vector>

namespace vextrel {

/// The controller: owns both windows and all state, and offers the operations that the windows call. What the
/// operations do stands with the concern they belong to; here they are wired.
class Keyboard final : private KeyboardEvents, private LayerHost {
  public:
    /// Builds everything up to the shown window, applying the stored settings in their order.
    Keyboard(ProgramState& program, SettingsStore& store, Operations& operations);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    [[nodiscard]] MainWindow& Form() noexcept { return form_; }
    [[nodiscard]] ProtectiveLayer& FormCover() noexcept { return formCover_; }
    [[nodiscard]] Options& Options() noexcept { return options_; }
    [[nodiscard]] PasswordField& Password() noexcept { return password_; }
    [[nodiscard]] Protection& Protections() noexcept { return protection_; }
    [[nodiscard]] Layouts& Layouts() noexcept { return layouts_; }
    [[nodiscard]] Hover& Hover() noexcept { return hover_; }

    /// Empties box and password; refused while they are being handed over.
    void ClearText();
    /// Switches the mask; refused while the password is being handed over.
    void ToggleMask();
    /// The protective-layer command of the View menu.
    void ToggleProtectiveLayer();
    void ShowAbout();
    /// A new random size and place.
    void Rearrange();

    /// What the process was granted at its start; shown to who asks.
    void SetHardening(const Hardening& hardening) noexcept { hardening_ = hardening; }
    void SetPrintScreenBlocked(bool blocked) noexcept { printScreenBlocked_ = blocked; }

    /// What ends the program's other windows when the main window is unloaded.
    void SetCloseProgram(std::function<void()> closeProgram) { closeProgram_ = std::move(closeProgram); }

  private:
    void Start();
    /// From here on no window reaches the controller.
    void LeaveWindows() noexcept;
    void LoadWindows();
    void ApplyEarlySettings();
    void ApplyRemainingSettings();

    // KeyboardEvents
    void ButtonClick(int button) override;
    void ButtonMouseUp(int) override {}
    void ButtonMouseMove(int button) override;
    void MouseMoveInTextBox() override;
    void MouseMoveInForm() override;
    void Timer() override;
    bool KeyPress(wchar_t code) override;
    bool KeyDown(UINT virtualKey) override;
    void KeyUp(UINT virtualKey) override;
    void PasteIntoMaskedBox() override;
    bool PlainBoxWillChange() override;
    void PlainBoxHasChanged() override { password_.PlainBoxHasChanged(); }
    void DragPassword() override;
    void Command(int id) override;
    void HoverSliderMoved(int positionMs) override;
    void TransparencySliderMoved(int percent) override;
    void FormActivated() override;
    void FormResized() override;
    void FormMoved() override;
    void DisplayChanged() override;
    bool MayUnload() override;
    void FormUnloading() override;
    void CheckActiveWindow() override;
    void MenuLoop(bool entered) override;
    void SessionEnding() override { WipePassword(); }
    [[nodiscard]] bool ShowsDotPointer() const override { return protection_.ShowsDot(); }

    // LayerHost
    [[nodiscard]] InputMode CurrentInputMode() const override { return options_.InputMode(); }
    [[nodiscard]] bool IsHoverEntryEnabled() const override { return hover_.TimerEnabled(); }
    void ClearCurrentButton() override { hover_.ClearCurrentButton(); }
    [[nodiscard]] HWND KeyWindow(int button) override { return form_.Key(button).Handle(); }
    void BringToFront() override;
    void CheckForeground() override;
    void FlashKey(int button) override;

    void WipePassword() noexcept;
    void EnterKey(int button);
    [[nodiscard]] std::vector<std::wstring> ProtectionsInForce() const;
    void FollowPhysicalModifiers();
    void EnterCharacter(wchar_t code);
    [[nodiscard]] bool IsMasked() noexcept { return form_.VisibleBox().View() == PasswordBoxView::Masked; }

    ProgramState& program_;
    SettingsStore& store_;
    Operations& operations_;
    MainWindow form_;
    ProtectiveLayer formCover_;
    Hover hover_;
    CaptionBoard captions_;
    PasswordField password_;
    Transfer transfer_;
    Protection protection_;
    Options options_;
    Layouts layouts_;
    LayerCommandState layerCommand_;
    bool shiftLatched_ = false;
    bool scrambledInput_ = false; ///< dormant: no command sets it
    bool menuOpen_ = false;
    int flashedKey_ = 0; ///< 0: none flashes
    int flashRoundsLeft_ = 0;
    HWND lastForeground_ = nullptr;
    Hardening hardening_;
    bool printScreenBlocked_ = false;
    std::function<void()> closeProgram_;
};

} // namespace vextrel
