#pragma once

#include "app/Layouts.h"
#include "app/Placement.h"
#include "app/Transfer.h"

namespace vextrel {

/// What the commands of the menu bar, the toolbar and the Hover button's menu act on.
struct CommandParts {
    MainWindow& form;
    Operations& operations;
    const ProgramState& program;
    Options& options;
    PasswordField& password;
    Transfer& transfer;
    HiddenPointer& pointer;
    LayerWatch& layer;
    Placement& placement;
    Layouts& layouts;
};

/// Runs a command, guarded under its handler's name. A number that stands for none does nothing.
void RunCommand(int id, const CommandParts& parts) noexcept;

} // namespace vextrel
