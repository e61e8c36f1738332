#pragma once

#include <filesystem>

namespace vextrel::driver {

/// Writes what the display shows now, all windows of all programs, as a PNG file.
void TakeScreenshot(const std::filesystem::path& file);

} // namespace vextrel::driver
