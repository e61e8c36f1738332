#pragma once

#include "app/CommandHandlers.h"
#include "core/ids.h"
#include "ui/Manual.h"

namespace vextrel {

/// The controller: owns both windows and all state, and offers the operations that the windows call. What the
/// operations do stands with the concern they belong to; here they are wired.
class Keyboard final : private BoxEvents, private WindowEvents, private LayerEvents, private Pinned {
  public:
    /// Builds everything up to the shown window, applying the stored settings in their order.
    Keyboard(ProgramState& program, SettingsStore& store, Operations& operations);
    ~Keyboard() { UnloadWindows(); }

    [[nodiscard]] MainWindow& Form() noexcept { return form_; }
    [[nodiscard]] vextrel::Options& Options() noexcept { return options_; }
    [[nodiscard]] vextrel::Layouts& Layouts() noexcept { return layouts_; }

    /// Follows the main window's changes from now on, and makes up for those while the start read the layout.
    void FollowWindow() {
        form_.ReportMoves();
        FormResized();
    }
    /// Brings Shift on the screen into line with the physical keys.
    void FollowPhysicalModifiers();
    void ShowManual() { vextrel::ShowManual(operations_, form_.Handle(), program_); }

  private:
    void Start();
    /// Before anything that they report to goes.
    void UnloadWindows() noexcept;

    // KeyEvents, of the keys and of the layer over them
    void ButtonClick(int button) override;
    void ButtonMouseUp(int) override {} // an entry point that does nothing (docs/architecture.md, oddities)
    void ButtonMouseMove(int button) override;

    // LayerEvents and WindowEvents
    void MouseMoveInForm() override;
    [[nodiscard]] bool ShowsDotPointer() const override { return pointer_.ShowsDot(); }

    // LayerEvents
    void FlashKey(int button) override;
    void PushKey(int button, bool pushed) noexcept override { form_.Key(button).SetPushed(pushed); }
    void BringToFront() override;
    void Timer() override;
    void ClearCurrentButton() override { hover_.ClearCurrentButton(); }
    void CheckForeground() override {
        if (hover_.TimerEnabled()) {
            hover_.SeePointer();
        }
        layer_.CheckForeground();
    }
    [[nodiscard]] InputMode CurrentInputMode() const override { return options_.Snapshot().inputMode; }
    [[nodiscard]] bool IsHoverEntryEnabled() const override { return hover_.TimerEnabled(); }

    // BoxEvents
    void MouseMoveInTextBox() override;
    bool KeyPress(wchar_t code) override;
    bool KeyDown(unsigned virtualKey) override;
    void KeyUp(unsigned) override { FollowPhysicalModifiers(); }
    void ClearText() override { Command(ids::toolClear); }
    void PasteIntoMaskedBox() override;
    bool PlainBoxWillChange() override;
    void PlainBoxHasChanged() override;
    void DragPassword() override;

    // WindowEvents
    void Command(int id) override;
    void HoverSliderMoved(int positionMs) override { options_.HoverSliderMoved(positionMs); }
    void TransparencySliderMoved(int percent) override { options_.TransparencySliderMoved(percent); }
    void FormActivated() override;
    void FormResized() override { form_.Arrange(); }
    void FormMoved() override { layer_.FormMove(); }
    void SessionChanged(WPARAM change) override;
    void DisplayChanged() override { placement_.ReturnToVisiblePlace(); }
    bool MayUnload() override { return operations_.RequestClose(); }
    void FormUnloading() override;
    void CheckActiveWindow() override;
    void MenuLoop(bool entered) override;
    void SessionEnding() override {
        WipePassword();
        store_.WriteWaiting();
    }

    void WipePassword() noexcept;
    /// Clears everything, if there is anything, when nobody has asked for it, and says why: after a transfer, if one is
    /// running.
    void ClearUnasked(std::wstring_view reason);
    /// After an entry: what was said of before it is past.
    void ShowEntry() {
        form_.ShowNotice({});
        ShowRemark();
    }
    /// After whatever may have changed box or password.
    void ShowRemark() { form_.ShowRemark(password_.Remark()); }
    /// Shows what a transfer refuses, and carries out what has waited for its end.
    void OnTransfer() noexcept;

    ProgramState& program_;
    SettingsStore& store_;
    Operations& operations_;
    MainWindow form_;
    ProtectiveLayer formCover_;
    vextrel::Hover hover_;
    PasswordField password_;
    HiddenPointer pointer_;
    Placement placement_;
    LayerWatch layer_;
    vextrel::Options options_;
    Transfer transfer_;
    vextrel::Layouts layouts_;
    CommandParts commands_;
    bool scrambledInput_ = false;           ///< dormant: no command sets it
    std::optional<Operations::Scope> menu_; ///< while one is open
    int waitingCommand_ = 0;                ///< 0: none waits for the end of a transfer
    std::wstring waitingReason_;            ///< to clear everything then; empty: none
    ULONGLONG transferEndMs_ = 0;           ///< of the last one
    int flashedKey_ = 0;                    ///< 0: none flashes
    int flashRoundsLeft_ = 0;
    HWND lastForeground_ = nullptr;
};

} // namespace vextrel
