#pragma once

#include "app/HiddenPointer.h"
#include "app/Hover.h"
#include "app/LayerWatch.h"
#include "app/PasswordField.h"
#include "win32/SettingsStore.h"

namespace vextrel {

/// The user's options as properties. A setter applies the change at once (windows, check marks, toolbar) and then
/// writes its settings key, but only while the main window is visible.
class Options {
  public:
    /// What the options act on.
    struct Parts {
        MainWindow& form;
        const ProgramState& program;
        SettingsStore& store;
        Operations& operations;
        PasswordField& password;
        Hover& hover;
        HiddenPointer& pointer;
        LayerWatch& layer;
    };

    explicit Options(const Parts& parts)
        : parts_(parts) {}

    /// The stored settings that apply before the window is shown, and those that apply to the shown one; each through
    /// its setter, in the order that the rest of the program relies on.
    void ApplyEarlySettings();
    void ApplyRemainingSettings();

    /// Switching saving off asks whether that itself may be saved.
    void SetSaveSettingsInINI(bool save);
    /// Shows or hides the toolbar; the window's height follows, the keys keep their size.
    void ShowToolbar(bool show);
    /// Choosing the mode in force does nothing and writes nothing; a declined question leaves everything as it was.
    void SetInputMode(InputMode mode);
    void SetDragDropMode(DragDropMode mode);
    void SetTextIsMasked(bool masked);
    void SetBeepOnHover(bool beep) { Switch(chosen_.beepOnHover, beep, settings::beepOnHover); }
    void SetKeepPasswordAfterDragDrop(bool keep) { Switch(chosen_.keepPassword, keep, settings::keepPassword); }

    [[nodiscard]] std::int16_t KeyboardTransparency() const noexcept { return keyboardTransparency_; }
    void SetKeyboardTransparency(std::int16_t transparency);
    void SetTimerInterval(std::int32_t intervalMs);
    /// The user moved a slider. It may stand for a value between its steps; telling it again what it shows changes
    /// nothing.
    void HoverSliderMoved(int positionMs);
    void TransparencySliderMoved(int percent);

    /// Not persistent: the window starts topmost.
    void SetKeepOnTop(bool keepOnTop);
    /// @param name of an imported layout, empty when it is not known.
    void SetLayoutMark(LayoutMark mark, bool noneImported, std::wstring name);

    /// Check marks, enabled states, toolbar and status bar, all from the present state.
    void RefreshToolbar();
    [[nodiscard]] CommandSnapshot Snapshot() const;

  private:
    /// The toolbar control alone, whatever the option says.
    void ShowToolbarControl(bool show) { parts_.form.ShowToolbarControl(show); }
    void Switch(bool& option, bool on, const wchar_t* key);
    void RefreshAndWrite(const wchar_t* key, std::wstring_view value);
    void Write(const wchar_t* key, std::wstring_view value);

    Parts parts_;
    CommandSnapshot chosen_; ///< but for what others know; Snapshot asks them
    std::int16_t keyboardTransparency_ = 255;
    std::wstring layoutName_;
};

} // namespace vextrel
