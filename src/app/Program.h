#pragma once

namespace vextrel {

/// Runs the program: builds the controller, serves window events until the main window is unloaded.
/// @param hooksDisabled for a build that only tests run: no hook is installed, no window procedure replaced.
/// @return the process's exit code.
int Main(bool hooksDisabled = false);

} // namespace vextrel
