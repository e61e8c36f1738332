#pragma once

#include "app/Application.h"

namespace vextrel::Program {

/// The application object; empty until its construction has completed, and again once it goes.
[[nodiscard]] Application* gApplication() noexcept;

/// Runs the program: builds the application object, serves window events until the main window is unloaded.
/// @return the process's exit code.
int Main(HINSTANCE instance);

} // namespace vextrel::Program
