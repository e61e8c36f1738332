#pragma once

#include <windows.h>

#include <string_view>

// What tests have to know of the machine: on somebody's Windows they leave alone what is not theirs, and a test that
// types as on one keyboard, or reads Windows' own words, is not for all of them.
namespace vextrel::driver {

[[nodiscard]] inline bool UnderWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

[[nodiscard]] inline bool HasAmericanKeyboard() {
    wchar_t layout[KL_NAMELENGTH] = {};
    return GetKeyboardLayoutNameW(layout) != FALSE && std::wstring_view(layout) == L"00000409";
}

[[nodiscard]] inline bool SpeaksEnglish() {
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_ENGLISH;
}

} // namespace vextrel::driver
