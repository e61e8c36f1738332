#include "win32/Text.h"

#include "core/Error.h"

#include <algorithm>

namespace vextrel {

std::string Narrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, result.data(), size, nullptr, nullptr);
    return result;
}

std::wstring Widen(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int size = ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, result.data(), size);
    return result;
}

bool CodePageExpresses(std::wstring_view text) {
    return Widen(Narrow(text)) == text;
}

std::optional<std::string> NarrowPath(const std::wstring& path) {
    if (CodePageExpresses(path)) {
        return Narrow(path);
    }
    // Where no short names are kept, this is the path unchanged.
    std::wstring shortPath(::GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
    shortPath.resize(::GetShortPathNameW(path.c_str(), shortPath.data(), static_cast<DWORD>(shortPath.size())));
    if (shortPath.empty() || !CodePageExpresses(shortPath)) {
        return std::nullopt;
    }
    return Narrow(shortPath);
}

void ThrowLastError() {
    const DWORD code = ::GetLastError();
    wchar_t* buffer = nullptr;
    const DWORD size =
        ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                         nullptr, code, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::wstring text(buffer == nullptr ? L"" : buffer, size);
    ::LocalFree(buffer);
    text.erase(text.find_last_not_of(L"\r\n ") + 1); // the line break at its end
    throw Error(static_cast<std::int32_t>(code), text);
}

void ReadClipboardText(HWND owner, SecretText& text) {
    text.Clear();
    if (::OpenClipboard(owner) == FALSE) {
        return;
    }
    const HANDLE data = ::GetClipboardData(CF_UNICODETEXT);
    if (const auto* characters = static_cast<const wchar_t*>(data != nullptr ? ::GlobalLock(data) : nullptr)) {
        const std::size_t room = std::min(SecretText::capacity, ::GlobalSize(data) / sizeof(wchar_t));
        const std::wstring_view all(characters, room);
        text.Assign(all.substr(0, all.find(L'\0')));
        ::GlobalUnlock(data);
    }
    ::CloseClipboard();
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

AnsiCharacter::AnsiCharacter(std::wstring_view text) noexcept {
    if (text.empty()) {
        return;
    }
    unitCount_ = text.size() > 1 && IS_SURROGATE_PAIR(text[0], text[1]) ? 2 : 1;
    byteCount_ = static_cast<std::size_t>(::WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(unitCount_),
                                                                reinterpret_cast<char*>(bytes_.data()),
                                                                static_cast<int>(bytes_.size()), nullptr, nullptr));
}

AnsiCharacter::~AnsiCharacter() {
    WipeMemory(bytes_.data(), bytes_.size());
}

} // namespace vextrel
