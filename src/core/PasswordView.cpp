#include "core/PasswordView.h"

#include "core/Error.h"

namespace vextrel {

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
