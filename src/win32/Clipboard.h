#pragma once

#include "core/SecretText.h"
#include "win32/Windows.h"

namespace vextrel {

/// Reads the clipboard's text, cut to what a SecretText holds; empty when there is none or the clipboard is busy.
/// Nothing of ours ever writes the clipboard.
void ReadClipboardText(HWND owner, SecretText& text);

} // namespace vextrel
