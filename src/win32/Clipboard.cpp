#include "win32/Clipboard.h"

#include <algorithm>
#include <string_view>

namespace vextrel {

void ReadClipboardText(HWND owner, SecretText& text) {
    text.Clear();
    if (::OpenClipboard(owner) == FALSE) {
        return;
    }
    if (const HANDLE data = ::GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        const auto* characters = static_cast<const wchar_t*>(::GlobalLock(data));
        if (characters != nullptr) {
            const std::size_t room = std::min(SecretText::capacity, ::GlobalSize(data) / sizeof(wchar_t));
            const std::wstring_view all(characters, room);
            text.Assign(all.substr(0, all.find(L'\0')));
            ::GlobalUnlock(data);
        }
    }
    ::CloseClipboard();
}

} // namespace vextrel
