#include "driver/Machine.h"

#include <windows.h>

#include <string_view>

namespace vextrel::driver {

bool UnderWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

bool HasAmericanKeyboard() {
    wchar_t layout[KL_NAMELENGTH] = {};
    return GetKeyboardLayoutNameW(layout) != FALSE && std::wstring_view(layout) == L"00000409";
}

bool SpeaksEnglish() {
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_ENGLISH;
}

} // namespace vextrel::driver
