#pragma once

#include <filesystem>

namespace vextrel::driver {

/// Writes what the display shows, all windows of all programs, as a PNG file; first waits, not long, until it is at
/// rest.
void TakeScreenshot(const std::filesystem::path& file);

} // namespace vextrel::driver
