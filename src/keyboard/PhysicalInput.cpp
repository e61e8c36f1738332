#include "keyboard/PhysicalInput.h"

#include "base/Wipe.h"

#include <algorithm>

namespace vextrel {

namespace {

/// C0, DEL and C1.
constexpr bool IsControlCharacter(wchar_t c) noexcept {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F);
}

constexpr bool IsTabOrLineBreak(wchar_t c) noexcept {
    return c == L'\t' || c == L'\r' || c == L'\n';
}

/// In one allocation, and wiped behind its end: what is kept may become a piece of the password.
template <typename Predicate>
std::wstring Without(std::wstring_view text, Predicate dropped) {
    std::wstring kept(text);
    const auto end = static_cast<std::size_t>(std::remove_if(kept.begin(), kept.end(), dropped) - kept.begin());
    WipeMemory(kept.data() + end, (kept.size() - end) * sizeof(wchar_t));
    kept.resize(end);
    return kept;
}

std::size_t CommonStart(std::wstring_view a, std::wstring_view b) noexcept {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

std::size_t CommonEnd(std::wstring_view a, std::wstring_view b) noexcept {
    return static_cast<std::size_t>(std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin());
}

} // namespace

bool FoldedShift(PhysicalModifiers modifiers) noexcept {
    const bool shift = modifiers.shiftPressed || modifiers.rightShiftPressed || modifiers.leftShiftPressed;
    return modifiers.capsLockToggled != shift;
}

std::wstring WithoutControlCharacters(std::wstring_view text) {
    return Without(text, IsControlCharacter);
}

std::optional<Splice> FollowPlainBox(std::wstring_view before, std::wstring_view after, std::size_t passwordLength) {
    if (before == after) {
        return std::nullopt;
    }
    const std::size_t start = CommonStart(before, after);
    before.remove_prefix(start);
    after.remove_prefix(start);
    const std::size_t end = CommonEnd(before, after);
    before.remove_suffix(end);
    after.remove_suffix(end);
    return Splice{.range = TextRange{start, before.size()}.CutAt(passwordLength),
                  .text = Without(after, IsTabOrLineBreak)};
}

} // namespace vextrel
