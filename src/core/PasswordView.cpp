#include "core/PasswordView.h"

#include "core/Error.h"

#include <memory>

namespace vextrel {

namespace {

constexpr const wchar_t* notWhole = L"The box does not show the whole password";

constexpr bool IsTabOrLineBreak(wchar_t c) noexcept {
    return c == L'\t' || c == L'\r' || c == L'\n';
}

/// In one allocation, and wiped behind its end: what is kept may become a piece of the password.
std::wstring WithoutTabsAndLineBreaks(std::wstring_view text) {
    std::wstring kept(text);
    const auto end = std::remove_if(kept.begin(), kept.end(), IsTabOrLineBreak);
    WipeMemory(std::to_address(end), static_cast<std::size_t>(kept.end() - end) * sizeof(wchar_t));
    kept.erase(end, kept.end());
    return kept;
}

std::size_t CommonStart(auto begin, auto end, auto otherBegin, auto otherEnd) noexcept {
    return static_cast<std::size_t>(std::mismatch(begin, end, otherBegin, otherEnd).first - begin);
}

} // namespace

void DropControlCharacters(SecretText& text) noexcept {
    wchar_t* const characters = text.Buffer();
    const wchar_t* const end = std::remove_if(characters, characters + text.Size(), IsControlCharacter);
    text.SetSize(static_cast<std::size_t>(end - characters));
}

void ReadPlainBox(std::wstring_view plainText, SecretText& password) {
    const std::wstring_view kept = plainText.substr(0, plainText.find(L"\r\n"));
    const auto tabs = static_cast<std::size_t>(std::ranges::count(kept, L'\t'));
    if (kept.size() + tabs > SecretText::capacity) {
        throw Error(ErrorNumber::Overflow);
    }
    // Straight into the password's own memory: a text built beside it would be one more copy.
    wchar_t* next = password.Buffer();
    for (const wchar_t c : kept) {
        if (c == L'\t') {
            *next++ = L'\r';
            *next++ = L'\n';
        } else {
            *next++ = c;
        }
    }
    password.SetSize(kept.size() + tabs);
}

std::wstring_view RemarkOnMaskedBox(std::size_t boxLength, std::size_t passwordLength) noexcept {
    return boxLength == passwordLength ? L"" : notWhole;
}

std::wstring_view RemarkOnPlainBox(std::wstring_view text, std::wstring_view password) noexcept {
    if (text.find(L"\r\n") != std::wstring_view::npos) {
        return L"Only the first line is kept when masked";
    }
    return text == password ? L"" : notWhole;
}

std::optional<Splice> FollowPlainBox(std::wstring_view before, std::wstring_view after, std::size_t passwordLength) {
    const std::size_t start = CommonStart(before.begin(), before.end(), after.begin(), after.end());
    before.remove_prefix(start);
    after.remove_prefix(start);
    const std::size_t end = CommonStart(before.rbegin(), before.rend(), after.rbegin(), after.rend());
    before.remove_suffix(end);
    after.remove_suffix(end);
    // The password has none of these.
    if (std::ranges::all_of(before, IsTabOrLineBreak) && std::ranges::all_of(after, IsTabOrLineBreak)) {
        return std::nullopt;
    }
    return Splice{.range = TextRange{start, before.size()}.CutAt(passwordLength),
                  .text = WithoutTabsAndLineBreaks(after)};
}

TextRange DetermineSelectedRange(BoxSelection selection, std::size_t passwordLength) {
    CheckSelection(selection);
    if (selection.length < 1) {
        return {0, passwordLength};
    }
    return TextRange{static_cast<std::size_t>(selection.start), static_cast<std::size_t>(selection.length)}.CutAt(
        passwordLength);
}

TransferPlan PlanTransfer(BoxSelection selection, std::size_t passwordLength) {
    return {.carried = DetermineSelectedRange(selection, passwordLength), .savedCaret = selection.start};
}

} // namespace vextrel
