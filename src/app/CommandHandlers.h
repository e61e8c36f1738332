#pragma once

namespace vextrel {

class Keyboard;

/// Runs a command of the menu bar, the toolbar or the Hover button's menu, guarded under its handler's name. An
/// unknown identifier does nothing.
void RunCommand(int id, Keyboard& keyboard) noexcept;

} // namespace vextrel
