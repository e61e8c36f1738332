#pragma once

#include "app/Layouts.h"
#include "app/Options.h"
#include "app/Placement.h"

namespace vextrel {

/// What the commands of the menu bar, the toolbar and the Hover button's menu do.
class CommandHandlers {
  public:
    /// What the commands act on.
    struct Parts {
        MainWindow& form;
        Operations& operations;
        const ProgramState& program;
        Options& options;
        PasswordField& password;
        HiddenPointer& pointer;
        LayerWatch& layer;
        Placement& placement;
        Layouts& layouts;
    };

    explicit CommandHandlers(const Parts& parts)
        : parts_(parts) {}

    /// Runs a command, guarded under its handler's name. A number that stands for none does nothing.
    void Run(int id) noexcept;

  private:
    Parts parts_;
};

} // namespace vextrel
