#include "core/PhysicalInput.h"

#include <algorithm>
#include <ranges>
#include <span>

namespace vextrel {

namespace {

constexpr bool IsTabOrLineBreak(wchar_t c) noexcept {
    return c == L'\t' || c == L'\r' || c == L'\n';
}

/// In one allocation, and wiped behind its end: what is kept may become a piece of the password.
std::wstring WithoutTabsAndLineBreaks(std::wstring_view text) {
    std::wstring kept(text);
    const auto rest = std::ranges::remove_if(kept, IsTabOrLineBreak);
    WipeMemory(rest.data(), rest.size() * sizeof(wchar_t));
    kept.erase(rest.begin(), rest.end());
    return kept;
}

std::size_t CommonStart(const auto& a, const auto& b) noexcept {
    return static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
}

} // namespace

void DropControlCharacters(SecretText& text) noexcept {
    const std::span characters(text.Buffer(), text.Size());
    text.SetSize(text.Size() - std::ranges::remove_if(characters, IsControlCharacter).size());
}

std::optional<Splice> FollowPlainBox(std::wstring_view before, std::wstring_view after, std::size_t passwordLength) {
    const std::size_t start = CommonStart(before, after);
    before.remove_prefix(start);
    after.remove_prefix(start);
    const std::size_t end = CommonStart(before | std::views::reverse, after | std::views::reverse);
    before.remove_suffix(end);
    after.remove_suffix(end);
    // The password has none of these.
    if (std::ranges::all_of(before, IsTabOrLineBreak) && std::ranges::all_of(after, IsTabOrLineBreak)) {
        return std::nullopt;
    }
    return Splice{.range = TextRange{start, before.size()}.CutAt(passwordLength),
                  .text = WithoutTabsAndLineBreaks(after)};
}

} // namespace vextrel
