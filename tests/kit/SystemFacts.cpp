#include "kit/Report.h"

#include "driver/Process.h"

#include <shellscalingapi.h>

#include <array>
#include <cstddef>

namespace vextrel::kit {

namespace {

using driver::Narrow;

template <typename Function>
Function Find(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(module ? GetProcAddress(module, name) : nullptr));
}

std::string WindowsVersion() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    // GetVersionEx tells an old version to a program without a manifest.
    if (const auto ask = Find<LONG(WINAPI*)(OSVERSIONINFOW*)>(L"ntdll.dll", "RtlGetVersion"))
        ask(&version);
    constexpr const wchar_t* key = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    std::array<wchar_t, 32> release{};
    DWORD bytes = sizeof release - sizeof(wchar_t);
    RegGetValueW(HKEY_LOCAL_MACHINE, key, L"DisplayVersion", RRF_RT_REG_SZ, nullptr, release.data(), &bytes);
    DWORD revision = 0;
    bytes = sizeof revision;
    RegGetValueW(HKEY_LOCAL_MACHINE, key, L"UBR", RRF_RT_REG_DWORD, nullptr, &revision, &bytes);
    return std::string(version.dwBuildNumber >= 22000 ? "11" : std::to_string(version.dwMajorVersion)) + ' ' +
           Narrow(release.data()) + " (" + std::to_string(version.dwBuildNumber) + '.' + std::to_string(revision) + ')';
}

std::string Monitors() {
    std::string all;
    EnumDisplayMonitors(
        nullptr, nullptr,
        [](HMONITOR monitor, HDC, RECT* bounds, LPARAM list) -> BOOL {
            UINT dpi = 0;
            UINT vertical = 0;
            if (const auto ask = Find<decltype(&GetDpiForMonitor)>(L"shcore.dll", "GetDpiForMonitor"))
                ask(monitor, MDT_EFFECTIVE_DPI, &dpi, &vertical);
            auto& text = *reinterpret_cast<std::string*>(list);
            text += (text.empty() ? "" : ", ") + std::to_string(bounds->right - bounds->left) + " x " +
                    std::to_string(bounds->bottom - bounds->top) + " at " + std::to_string(dpi) + " dpi";
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&all));
    return all;
}

std::string IntegrityLevel() {
    alignas(TOKEN_MANDATORY_LABEL) std::array<std::byte, 128> memory{};
    DWORD size = 0;
    HANDLE token = nullptr;
    OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token);
    const bool told = GetTokenInformation(token, TokenIntegrityLevel, memory.data(), memory.size(), &size) != FALSE;
    CloseHandle(token);
    if (!told)
        return "unknown";
    const PSID sid = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(memory.data())->Label.Sid;
    const DWORD level = *GetSidSubAuthority(sid, static_cast<DWORD>(*GetSidSubAuthorityCount(sid) - 1));
    return level >= SECURITY_MANDATORY_HIGH_RID     ? "high (as administrator)"
           : level >= SECURITY_MANDATORY_MEDIUM_RID ? "medium"
                                                    : "low";
}

} // namespace

Facts SystemFacts() {
    Facts facts{{"Windows", WindowsVersion()}};
    if (const auto wine = Find<const char*(CDECL*)()>(L"ntdll.dll", "wine_get_version"))
        facts.emplace_back("Wine", wine());
    SYSTEMTIME now{};
    GetSystemTime(&now);
    std::array<char, 16> date{};
    std::snprintf(date.data(), date.size(), "%04u-%02u-%02u", unsigned{now.wYear}, unsigned{now.wMonth},
                  unsigned{now.wDay});
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> locale{};
    GetUserDefaultLocaleName(locale.data(), static_cast<int>(locale.size()));
    std::array<wchar_t, KL_NAMELENGTH> keyboard{};
    GetKeyboardLayoutNameW(keyboard.data());
    facts.emplace_back("Date", date.data());
    facts.emplace_back("Monitors", Monitors());
    facts.emplace_back("Remote session", GetSystemMetrics(SM_REMOTESESSION) != 0 ? "yes" : "no");
    facts.emplace_back("Language", Narrow(locale.data()));
    facts.emplace_back("Keyboard", Narrow(keyboard.data()));
    facts.emplace_back("Code page", std::to_string(GetACP()));
    facts.emplace_back("Integrity level", IntegrityLevel());
    return facts;
}

} // namespace vextrel::kit
