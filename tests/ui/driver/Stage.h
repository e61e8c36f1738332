#pragma once

#include "driver/App.h"
#include "driver/Target.h"

#include <optional>

namespace vextrel::driver {

/// What most tests play on: the program with settings of the test's own, a second program beside it that takes what is
/// dragged out, and the user's hand.
struct Stage {
    /// `settings` are lines of the file's section Settings.
    explicit Stage(const std::string& settings = {}, const std::wstring& targetOptions = L"--topmost",
                   Sandbox::Others others = Sandbox::Others::Answered)
        : target(targetOptions)
        , sandbox({}, {}, others) {
        sandbox.Write("[Settings]\r\n" + settings);
        Start();
    }

    /// Starts the program, anew if it has been closed, and makes room beside it for the target.
    void Start() {
        app.reset();
        // The program may come up anywhere, and a target that stays on top would take its first clicks.
        SetWindowPos(target.Window(), nullptr, GetSystemMetrics(SM_CXSCREEN) - 9, GetSystemMetrics(SM_CYSCREEN) - 9, 0,
                     0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        app.emplace(sandbox);
        target.KeepClearOf(BoundsOf(app->Main()));
        app->Activate();
    }

    /// What a drag of the password, or of what is selected of it, brings.
    std::wstring Dragged() {
        app->Activate();
        return target.TakeDrag(pointer, CentreOf(app->PasswordBox()));
    }

    const Target target;
    Sandbox sandbox;
    std::optional<App> app;
    Pointer pointer;
};

} // namespace vextrel::driver
