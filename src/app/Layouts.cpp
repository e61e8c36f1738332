#include "app/Layouts.h"

#include "transfer/SystemLayout.h"

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
        return L"The system's layout was not read: a Ctrl, Alt or Windows key is held down.";
    default: return L"The system's layout was not read to its end: a key was not answered.";
    }
}

} // namespace

void Layouts::SwitchKeyboardLang(std::int32_t layoutId, bool dontRecord) {
    if (parts_.operations.IsTransferring()) {
        return;
    }
    switch (static_cast<LayoutId>(layoutId)) {
    case LayoutId::English:
        LoadEnglishLayout(parts_.captions.CurrentLayout().captions);
        parts_.options.SetLayoutMark(LayoutMark::English);
        Record(L"English", dontRecord);
        break;
    case LayoutId::Default: LoadDefault(dontRecord); break;
    case LayoutId::LastSaved:
        ReadLayout(parts_.program.SettingsFilePath);
        parts_.options.SetLayoutMark(LayoutMark::LastSaved);
        Record(L"Config", dontRecord);
        break;
    case LayoutId::Import: Import(dontRecord); break;
    default: break;
    }
    parts_.captions.Refresh();
}

void Layouts::Record(const wchar_t* name, bool dontRecord) {
    if (!dontRecord && parts_.form.IsVisible()) {
        parts_.store.WriteSetting(settings::keyboardLayout, name);
    }
}

void Layouts::LoadDefault(bool dontRecord) {
    const CaptureResult result = [this] {
        const Operations::Scope capture(parts_.operations, Operations::Kind::Transfer);
        return LoadDefaultLayout(parts_.cover.txtSetup(), parts_.captions.CurrentLayout().captions);
    }();
    parts_.form.FocusVisibleBox();
    if (result == CaptureResult::Done) {
        parts_.options.SetLayoutMark(LayoutMark::Default);
        Record(L"Default", dontRecord);
        return;
    }
    parts_.options.RefreshToolbar();
    if (dontRecord) {
        parts_.form.ShowNotice(L"System's layout not read"); // at start-up nothing asks or interrupts
    } else {
        ShowMessageBox(parts_.operations, ReasonOf(result), L"Vextrel", MB_OK | MB_ICONINFORMATION);
    }
}

void Layouts::Import(bool dontRecord) {
    if (const std::optional<std::wstring> file = AskForFile(L"Open", false)) {
        ReadLayout(*file);
        parts_.options.SetLayoutMark(LayoutMark::Imported);
        if (!dontRecord) {
            WriteLayout(parts_.program.SettingsFilePath);
        }
        Record(L"Config", dontRecord);
    }
}

void Layouts::CreateNewLayoutFile() {
    if (parts_.operations.IsTransferring()) {
        return;
    }
    const std::optional<std::wstring> file = AskForFile(L"Save As", true);
    if (!file) {
        return;
    }
    WriteLayout(*file);
    if (!parts_.options.SaveSettingsInINI()) {
        parts_.form.ShowNotice(L"Not written: saving is off");
    }
}

void Layouts::ReadActionCaptions() {
    ActionKeyCaptions& captions = parts_.captions.CurrentLayout().actionCaptions;
    for (std::size_t key = 0; key < captions.size(); ++key) {
        captions.at(key) = ActionCaptionOrDefault(
            parts_.store.ReadINIValue(parts_.program.SettingsFilePath, actionCaptionSection, actionCaptionKeys[key]),
            static_cast<ActionKey>(key));
    }
}

void Layouts::ReadLayout(const std::wstring& file) {
    ReadLayoutEntries(
        [&](std::wstring_view section, std::wstring_view key) { return parts_.store.ReadINIValue(file, section, key); },
        parts_.captions.CurrentLayout());
}

void Layouts::WriteLayout(const std::wstring& file) {
    for (const LayoutEntry& entry : LayoutEntries(parts_.captions.CurrentLayout())) {
        parts_.store.WriteINIValue(file, entry.section, entry.key, entry.value);
    }
}

std::optional<std::wstring> Layouts::AskForFile(const wchar_t* title, bool save) {
    if (!dialogs_) {
        dialogs_.emplace();
    }
    dialogs_->hwnd = parts_.form.Handle();
    dialogs_->DialogTitle = title;
    dialogs_->SetFilter(layoutFileFilter);
    dialogs_->FilterIndex = 1;
    dialogs_->CancelError = true;
    dialogs_->flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_EXPLORER;
    dialogs_->FileName = parts_.program.folder + L"\\*.lng";
    const Operations::Scope modal(parts_.operations, Operations::Kind::Modal);
    const bool cancelled = save ? dialogs_->ShowSave() : dialogs_->ShowOpen();
    return cancelled ? std::nullopt : std::optional(dialogs_->FileName);
}

} // namespace vextrel
