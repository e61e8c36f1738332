#include "app/Application.h"

namespace vextrel {

Application::Application(ProgramState& program, SettingsStore& store, Operations& operations, ErrorReport& errors)
    : errors_(errors)
    , toolbar_(std::make_unique<vextrel::Toolbar>())
    , keyboard_(std::make_unique<vextrel::Keyboard>(program, store, operations)) {
    keyboard_->SetCloseProgram([this] { CloseProgram(); });
    if (!program.HooksDisabled) {
        hook_.Install();
    }
    program.printScreenBlocked = hook_.IsInstalled();
}

Application::~Application() {
    keyboard_.reset();
    hook_.Remove();
    toolbar_.reset();
}

void Application::CloseProgram() noexcept {
    // Unloading one window may take others with it: look anew each time.
    for (std::size_t left = Form::Loaded().size(); left > 0; --left) {
        if (left <= Form::Loaded().size()) {
            Form::Loaded()[left - 1]->Unload();
        }
    }
}

void Application::LogError(std::wstring_view source, std::int32_t number, std::wstring_view description,
                           HWND owner) noexcept {
    errors_.Report(source, number, description, owner);
}

} // namespace vextrel
