#include "app/Layouts.h"

#include "transfer/SystemLayout.h"
#include "win32/FileDialog.h"

#include <commdlg.h>

namespace vextrel {

namespace {

constexpr const wchar_t* layoutFileFilter = L"Vextrel language file (*.lng)|*.lng";

/// Why a capture ended early, for the user. The keys captured until then keep their new captions.
const wchar_t* ReasonOf(CaptureResult result) noexcept {
    switch (result) {
    case CaptureResult::LostFocus:
        return L"The system's layout was not read to its end: another window came to the front.";
    case CaptureResult::ModifierHeld:
        return L"The system's layout was not read: a Shift, Ctrl, Alt or Windows key is held down.";
    default: return L"The system's layout was not read to its end: a key was not answered.";
    }
}

} // namespace

void Layouts::SwitchKeyboardLang(std::int32_t layoutId, bool dontRecord) {
    switch (static_cast<LayoutId>(layoutId)) {
    case LayoutId::English:
        LoadEnglishLayout(layout_.captions);
        Loaded(LayoutMark::English, L"English", dontRecord);
        break;
    case LayoutId::Default: LoadDefault(dontRecord); break;
    case LayoutId::LastSaved: {
        const bool found = ReadLayout(parts_.program.SettingsFilePath);
        Loaded(LayoutMark::LastSaved, L"Config", dontRecord, !found,
               LayoutName(parts_.store.ReadSetting(settings::importedLayoutName)));
        break;
    }
    case LayoutId::Import:
        if (const std::optional<std::wstring> file = AskForFile(L"Open", false)) {
            Import(*file, dontRecord);
        }
        break;
    default: break;
    }
    RefreshCaptions();
}

void Layouts::Import(const std::wstring& file, bool dontRecord) {
    // What is no layout changes nothing on the keys: they are not what the file's name says.
    const std::wstring name = ReadLayout(file) ? LayoutNameOfFile(file) : std::wstring();
    const DWORD error = dontRecord ? ERROR_SUCCESS : WriteLayout(parts_.program.SettingsFilePath);
    if (!dontRecord && error == ERROR_SUCCESS) {
        parts_.store.WriteSetting(settings::importedLayoutName, name);
    }
    Loaded(LayoutMark::Imported, L"Config", dontRecord, false, name);
    TellIfNotWritten(error);
}

void Layouts::Loaded(LayoutMark mark, const wchar_t* name, bool dontRecord, bool noneImported,
                     std::wstring layoutName) {
    parts_.options.SetLayoutMark(mark, noneImported, std::move(layoutName));
    if (!dontRecord && parts_.form.IsVisible()) {
        parts_.store.WriteSetting(settings::keyboardLayout, name);
    }
}

void Layouts::LoadDefault(bool dontRecord) {
    const CaptureResult result = [this] {
        const Operations::Scope capture(parts_.operations, Operations::Kind::Transfer);
        return LoadDefaultLayout(parts_.cover.txtSetup(), layout_.captions);
    }();
    parts_.form.FocusVisibleBox();
    if (result == CaptureResult::Done) {
        Loaded(LayoutMark::Default, L"Default", dontRecord);
        return;
    }
    if (dontRecord) {
        parts_.form.ShowNotice(L"System's layout not read"); // at start-up nothing asks or interrupts
    } else {
        ShowMessageBox(parts_.operations, ReasonOf(result), L"Vextrel", MB_OK | MB_ICONINFORMATION);
    }
}

void Layouts::CreateNewLayoutFile() {
    if (const std::optional<std::wstring> file = AskForFile(L"Save As", true)) {
        const DWORD error = WriteLayout(*file);
        if (!parts_.options.Snapshot().saveSettings) {
            parts_.form.ShowNotice(L"Not written: saving is off");
        }
        TellIfNotWritten(error);
    }
}

void Layouts::TellIfNotWritten(DWORD error) {
    if (error != ERROR_SUCCESS) {
        parts_.form.ShowNotice(L"Not written (error " + std::to_wstring(error) + L")");
    }
}

void Layouts::ReadActionCaptions() {
    for (std::size_t key = 0; key < layout_.actionCaptions.size(); ++key) {
        layout_.actionCaptions.at(key) = ActionCaptionOrDefault(
            parts_.store.ReadINIValue(parts_.program.SettingsFilePath, actionCaptionSection, actionCaptionKeys[key]),
            static_cast<ActionKey>(key));
    }
}

bool Layouts::ReadLayout(const std::wstring& file) {
    return ReadLayoutEntries(
        [&](std::wstring_view section, std::wstring_view key) { return parts_.store.ReadINIValue(file, section, key); },
        layout_);
}

DWORD Layouts::WriteLayout(const std::wstring& file) {
    for (const LayoutEntry& entry : LayoutEntries(layout_)) {
        const DWORD error = parts_.store.WriteINIValue(file, entry.section, entry.key, entry.value);
        if (error != ERROR_SUCCESS) {
            return error;
        }
    }
    return ERROR_SUCCESS;
}

std::optional<std::wstring> Layouts::AskForFile(const wchar_t* title, bool save) {
    static FileDialog dialogs; // made at its first use, and its library stays
    dialogs.hwnd = parts_.form.Handle();
    dialogs.DialogTitle = title;
    dialogs.SetFilter(layoutFileFilter);
    dialogs.FilterIndex = 1;
    dialogs.CancelError = true;
    dialogs.flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_EXPLORER | OFN_PATHMUSTEXIST |
                    (save ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    dialogs.FileName = parts_.program.folder + L"\\*.lng";
    const Operations::Scope modal(parts_.operations, Operations::Kind::Modal);
    const bool cancelled = save ? dialogs.ShowSave() : dialogs.ShowOpen();
    return cancelled ? std::nullopt : std::optional(dialogs.FileName);
}

void Layouts::SetModifiers(const vextrel::Modifiers& modifiers) {
    if (modifiers != modifiers_) {
        modifiers_ = modifiers;
        RefreshCaptions();
    }
}

void Layouts::RefreshCaptions(bool shuffle) {
    const std::wstring hovered = parts_.hover.CaptionOfCurrent();
    if (IsShuffledKeyboardType(keyboardType_)) {
        slots_.Rebuild(shuffle, [this] { return random_.Draw(); });
    }
    parts_.form.SetCharacters(SingleCharacters(layout_.captions, layout_.actionCaptions));
    for (const auto& [button, caption] :
         RefreshedCaptions(layout_.captions, layout_.actionCaptions, modifiers_, slots_)) {
        parts_.form.Key(button).SetCaption(caption);
    }
    parts_.form.Key(keys::capsLock).SetLit(modifiers_.capsLockIsDown);
    parts_.form.Key(keys::leftShift).SetLit(modifiers_.shiftIsDown);
    parts_.form.Key(keys::rightShift).SetLit(modifiers_.shiftIsDown);
    parts_.hover.CaptionRefreshed(hovered);
}

} // namespace vextrel
