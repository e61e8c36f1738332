#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>

namespace vextrel::driver {

/// Writes what the display shows, windows of all programs, as a PNG file: all of it, or a part that lies on it. First
/// waits, not long, until it is at rest.
void TakeScreenshot(const std::filesystem::path& file, std::optional<RECT> part = {});

} // namespace vextrel::driver
