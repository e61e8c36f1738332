#pragma once

#include "app/Options.h"
#include "core/Captions.h"
#include "core/LayoutFile.h"
#include "win32/ClockRandom.h"

namespace vextrel {

/// The captions on the keys: the layout that they come from (built in, captured from the system, last imported, or from
/// a file), the modifiers that choose between its captions, and the arrangement of the keys.
class Layouts {
  public:
    struct Parts {
        MainWindow& form;
        ProtectiveLayer& cover;
        Hover& hover;
        Options& options;
        SettingsStore& store;
        const ProgramState& program;
        Operations& operations;
    };

    explicit Layouts(const Parts& parts)
        : parts_(parts) {}

    /// @param layoutId 409 English, 0 captured from the system, 1 last imported, 2 asks for a file; any other loads
    /// nothing. The captions are shown anew in every case. @param dontRecord keeps the choice out of the settings.
    void SwitchKeyboardLang(std::int32_t layoutId, bool dontRecord);
    /// Asks for a file name and writes the present layout there.
    void CreateNewLayoutFile();

    /// The action captions of the settings file, the default for each that is empty.
    void ReadActionCaptions();
    /// @return whether the file has a layout.
    bool ReadLayout(const std::wstring& file);

    [[nodiscard]] const vextrel::Modifiers& Modifiers() const noexcept { return modifiers_; }
    /// Shows the captions anew if anything changes.
    void SetModifiers(const vextrel::Modifiers& modifiers);

    /// 101 is the standard arrangement; 1, 2 and 3 rebuild the key slot table with each refresh.
    [[nodiscard]] std::int16_t KeyboardType() const noexcept { return keyboardType_; }
    void SetKeyboardType(std::int16_t type) noexcept { keyboardType_ = type; }

    /// Shows the captions that layout and modifiers give. For the pointer that rests on a key it is no arrival.
    /// @param shuffle whether a shuffled arrangement is drawn anew.
    void RefreshCaptions(bool shuffle = false);

  private:
    /// @return the error that ended it, else ERROR_SUCCESS.
    DWORD WriteLayout(const std::wstring& file);
    void TellIfNotWritten(DWORD error);
    void LoadDefault(bool dontRecord);
    /// Marks what has been loaded, and records it under its name.
    /// @param layoutName of an imported layout, where it is known.
    void Loaded(LayoutMark mark, const wchar_t* name, bool dontRecord, bool noneImported = false,
                std::wstring layoutName = {});
    /// Reads a file, and keeps it and its name as the layout imported last.
    void Import(const std::wstring& file, bool dontRecord);
    /// @return nothing when the user gave no file.
    [[nodiscard]] std::optional<std::wstring> AskForFile(const wchar_t* title, bool save);

    Parts parts_;
    Layout layout_;
    vextrel::Modifiers modifiers_;
    std::int16_t keyboardType_ = standardKeyboardType;
    KeySlotTable slots_;
    ClockRandom random_;
};

} // namespace vextrel
