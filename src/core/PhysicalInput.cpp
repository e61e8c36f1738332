#include "core/PhysicalInput.h"

#include <algorithm>

namespace vextrel {

namespace {

constexpr bool IsTabOrLineBreak(wchar_t c) noexcept {
    return c == L'\t' || c == L'\r' || c == L'\n';
}

bool IsOnlyTabsAndLineBreaks(std::wstring_view text) noexcept {
    return std::all_of(text.begin(), text.end(), IsTabOrLineBreak);
}

/// In one allocation, and wiped behind its end: what is kept may become a piece of the password.
std::wstring WithoutTabsAndLineBreaks(std::wstring_view text) {
    std::wstring kept(text);
    const auto end =
        static_cast<std::size_t>(std::remove_if(kept.begin(), kept.end(), IsTabOrLineBreak) - kept.begin());
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

void DropControlCharacters(SecretText& text) noexcept {
    wchar_t* const characters = text.Buffer();
    text.SetSize(static_cast<std::size_t>(std::remove_if(characters, characters + text.Size(), IsControlCharacter) -
                                          characters));
}

std::optional<Splice> FollowPlainBox(std::wstring_view before, std::wstring_view after, std::size_t passwordLength) {
    const std::size_t start = CommonStart(before, after);
    before.remove_prefix(start);
    after.remove_prefix(start);
    const std::size_t end = CommonEnd(before, after);
    before.remove_suffix(end);
    after.remove_suffix(end);
    // The password has none of these.
    if (IsOnlyTabsAndLineBreaks(before) && IsOnlyTabsAndLineBreaks(after)) {
        return std::nullopt;
    }
    return Splice{.range = TextRange{start, before.size()}.CutAt(passwordLength),
                  .text = WithoutTabsAndLineBreaks(after)};
}

} // namespace vextrel
