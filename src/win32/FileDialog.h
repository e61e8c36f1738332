#pragma once

#include "core/FileFilter.h"
#include "win32/SystemLibrary.h"

#include <cstdint>
#include <string>

namespace vextrel {

/// The system's open and save dialogs and its folder browser: set the properties, show, read the properties. Names pass
/// through the ANSI code page.
///
/// Showing runs a message loop: the caller does it as a modal operation (ui/Operations.h). The process's current folder
/// is afterwards what it was before; with OFN_NOCHANGEDIR among the flags it does not change meanwhile either.
class FileDialog {
  public:
    /// Whether a cancelled dialog is told from one in which the user chose.
    bool CancelError = false;
    /// Added to a name that the user types without an extension; without the dot.
    std::wstring DefaultExt;
    std::wstring DialogTitle;
    /// At first the name in the dialog, a pattern maybe; where it names a folder, the dialog starts there. Afterwards
    /// the chosen path.
    std::wstring FileName;
    /// The chosen name without its folder.
    std::wstring FileTitle;
    /// The pair of the filter that is selected first, counted from 1; afterwards the selected one.
    std::int16_t FilterIndex = 1;
    /// Passed to the system unchanged.
    std::uint32_t flags = 0;
    std::wstring InitDir = L"C:\\";
    /// Size of the buffer for the chosen path, its terminator included. A longer path reads as cancelled.
    std::int16_t MaxFileSize = 260;
    /// The owner; the dialog stands above it, topmost or not.
    HWND hwnd = nullptr;
    /// What ChooseDirectory found.
    std::wstring Directory;
    /// Where the extension starts in the chosen path, in bytes of the code page.
    std::int16_t FileExt = 0;

    [[nodiscard]] const std::wstring& Filter() const noexcept { return filter_; }
    /// @param filter pairs of description and pattern, separated by "|".
    void SetFilter(std::wstring_view filter) { filter_ = FilterForSystem(filter); }

    // Each returns true when the user cancelled, or the dialog failed, and CancelError asks for it; the properties are
    // unchanged then. All else is false.
    [[nodiscard]] bool ShowOpen() { return Show("GetOpenFileNameA"); }
    [[nodiscard]] bool ShowSave() { return Show("GetSaveFileNameA"); }
    [[nodiscard]] bool ChooseDirectory();

    [[nodiscard]] bool DirExists(const std::wstring& path) const noexcept { return Exists(path, true); }
    /// @return false for a folder.
    [[nodiscard]] bool FileExists(const std::wstring& path) const noexcept { return Exists(path, false); }

  private:
    [[nodiscard]] bool Show(const char* dialog);
    [[nodiscard]] static bool Exists(const std::wstring& path, bool isFolder) noexcept;

    std::wstring filter_ = FilterForSystem(L"All Files (*.*)|*.*");
    SystemLibrary dialogs_{L"comdlg32.dll"};
};

} // namespace vextrel
