#pragma once

#include "core/KeyTable.h"

#include <functional>
#include <string_view>
#include <vector>

namespace vextrel {

/// One entry of a layout file.
struct LayoutEntry {
    std::wstring section;
    std::wstring key;
    std::wstring value;
    friend bool operator==(const LayoutEntry&, const LayoutEntry&) = default;
};

/// Everything a layout says.
struct Layout {
    KeyCaptions captions;
    ActionKeyCaptions actionCaptions = defaultActionKeyCaptions;
    friend bool operator==(const Layout&, const Layout&) = default;
};

inline constexpr std::wstring_view actionCaptionSection = L"Action Keyboard Button Text";
/// Key names of the action captions, in the order of ActionKey.
inline constexpr std::wstring_view actionCaptionKeys[] = {L"Backspace", L"Tab", L"Caps Lock", L"Enter", L"Shift"};

/// The 99 entries of a complete layout file, in the order in which they are written, captions as held.
[[nodiscard]] std::vector<LayoutEntry> LayoutEntries(const Layout& layout);

using LayoutReader = std::function<std::wstring(std::wstring_view section, std::wstring_view key)>;

/// Reads a layout over the one given: a character caption that the source lacks keeps its value, an action caption
/// that it lacks becomes empty. NUL characters are removed. The last upper-case row is mapped in its own way, see the
/// implementation: what is written does not read back the same there. Deliberate.
/// @param read gives the value of a key, the empty string where there is none. @return whether there was any character
/// caption: without one it is no layout.
bool ReadLayoutEntries(const LayoutReader& read, Layout& layout);

/// What an imported layout is called: the name of its file. For a text that a settings file has kept, which anybody may
/// have written, as well: one line of a sensible length, and nothing where it cannot be a file's name.
[[nodiscard]] std::wstring LayoutName(std::wstring_view text);
[[nodiscard]] std::wstring LayoutNameOfFile(std::wstring_view path);

/// An action caption as the start-up takes it: NULs removed, the default where only blanks are left.
[[nodiscard]] std::wstring ActionCaptionOrDefault(std::wstring_view stored, ActionKey key);

} // namespace vextrel
