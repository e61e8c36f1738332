#pragma once

#include "app/CaptionBoard.h"
#include "app/Options.h"
#include "ui/Operations.h"
#include "ui/ProtectiveLayer.h"
#include "win32/FileDialog.h"
#include "win32/ProgramState.h"
#include "win32/SettingsStore.h"

#include <optional>

namespace vextrel {

/// Decides which captions the keys carry: built in, captured from the system, last imported, or from a file.
class Layouts {
  public:
    struct Parts {
        MainWindow& form;
        ProtectiveLayer& cover;
        CaptionBoard& captions;
        Options& options;
        SettingsStore& store;
        ProgramState& program;
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
    void ReadLayout(const std::wstring& file);

  private:
    void WriteLayout(const std::wstring& file);
    void LoadDefault(bool dontRecord);
    void Import(bool dontRecord);
    void Record(const wchar_t* name, bool dontRecord);
    /// @return nothing when the user gave no file.
    [[nodiscard]] std::optional<std::wstring> AskForFile(const wchar_t* title, bool save);

    Parts parts_;
    std::optional<FileDialog> dialogs_; ///< made at their first use
};

} // namespace vextrel
