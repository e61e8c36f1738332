#include "win32/FileDialog.h"

#include "core/CaptionText.h"
#include "win32/Text.h"

#include <commdlg.h>
#include <objbase.h>
#include <shlobj.h>

#include <algorithm>
#include <vector>

namespace vextrel {

namespace {

/// Puts the process's current folder back.
class CurrentFolderScope : private Pinned {
  public:
    CurrentFolderScope()
        : folder_(::GetCurrentDirectoryW(0, nullptr), L'\0') {
        folder_.resize(::GetCurrentDirectoryW(static_cast<DWORD>(folder_.size()), folder_.data()));
    }
    ~CurrentFolderScope() { ::SetCurrentDirectoryW(folder_.c_str()); }

  private:
    std::wstring folder_;
};

/// The name that the dialog has at first. It would not open with one that the code page cannot express: of such a name
/// only what stands behind its folder is given, if that.
std::string InitialName(const std::wstring& path) {
    if (const std::optional<std::string> whole = NarrowPath(path)) {
        return *whole;
    }
    const std::wstring folder(FolderOfPath(path));
    const std::wstring name = path.substr(folder.size());
    if (!CodePageExpresses(name)) {
        return {};
    }
    // A pattern, or a file that does not exist yet: its folder may have a short form.
    const std::optional<std::string> start = NarrowPath(folder);
    return start ? *start + Narrow(name) : Narrow(name.substr(1));
}

/// Text up to its terminator, without blanks around.
std::wstring Returned(const char* text) {
    return std::wstring(TrimBlanks(Widen(text)));
}

} // namespace

bool FileDialog::Show(const char* dialog) {
    const auto show = dialogs_.Find<decltype(&::GetOpenFileNameA)>(dialog);
    const std::string filter = Narrow(filter_);
    const std::string title = Narrow(DialogTitle);
    const std::string extension = Narrow(DefaultExt);
    const std::string name = InitialName(FileName);
    // A folder that the name brings along has to win, and the name alone tells it: since Windows 7 an initial folder
    // that is the same as at the program's first dialog means the folder that the user was in last.
    const std::string folder = FolderOfPath(Widen(name)).empty() ? NarrowPath(InitDir).value_or("") : "";
    const auto fileSize = static_cast<std::size_t>(std::max<std::int16_t>(MaxFileSize, 0));
    std::vector<char> file(fileSize + 1);
    name.copy(file.data(), fileSize > 0 ? fileSize - 1 : 0);
    char fileTitle[260] = {};

    OPENFILENAMEA record{};
    // The record's first version, which every system takes: 76 bytes where pointers have 32 bits.
    record.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    record.hwndOwner = hwnd;
    record.lpstrFilter = filter.c_str();
    record.nFilterIndex = static_cast<DWORD>(FilterIndex);
    record.lpstrFile = file.data();
    record.nMaxFile = static_cast<DWORD>(fileSize);
    record.lpstrFileTitle = fileTitle;
    record.nMaxFileTitle = static_cast<DWORD>(std::size(fileTitle));
    record.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    record.lpstrTitle = title.empty() ? nullptr : title.c_str();
    record.Flags = flags;
    record.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();

    const CurrentFolderScope currentFolder;
    if (show == nullptr || show(&record) == FALSE) {
        return CancelError;
    }
    FileName = Returned(file.data());
    FileTitle = Returned(fileTitle);
    FileExt = static_cast<std::int16_t>(record.nFileExtension);
    InitDir = std::wstring(TrimBlanks(InitDir));
    FilterIndex = static_cast<std::int16_t>(record.nFilterIndex);
    return false;
}

bool FileDialog::ChooseDirectory() {
    const SystemLibrary shell(L"shell32.dll");
    const auto browse = shell.Find<decltype(&::SHBrowseForFolderA)>("SHBrowseForFolderA");
    const auto pathOf = shell.Find<decltype(&::SHGetPathFromIDListA)>("SHGetPathFromIDListA");
    if (browse == nullptr || pathOf == nullptr) {
        return CancelError;
    }
    // The new look of the browser is a COM object. On a thread that has COM already this only counts.
    const bool initialised = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    const std::string title = Narrow(DialogTitle);
    BROWSEINFOA browser{};
    browser.hwndOwner = hwnd;
    browser.lpszTitle = title.c_str();
    browser.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;

    const CurrentFolderScope currentFolder;
    bool chosen = false;
    char path[MAX_PATH] = {};
    if (PIDLIST_ABSOLUTE folder = browse(&browser); folder != nullptr) {
        chosen = pathOf(folder, path) != FALSE;
        ::CoTaskMemFree(folder);
    }
    if (initialised) {
        ::CoUninitialize();
    }
    if (!chosen) {
        return CancelError;
    }
    Directory = Widen(path);
    return false;
}

bool FileDialog::Exists(const std::wstring& path, bool isFolder) noexcept {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) == isFolder;
}

} // namespace vextrel
