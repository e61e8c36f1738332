#include "driver/Machine.h"
#include "driver/Process.h"
#include "kit/Report.h"

#include <shellscalingapi.h>

#include <array>
#include <cstddef>
#include <cstdio>

// As the headers for drivers have it.
extern "C" DECLSPEC_IMPORT LONG WINAPI RtlGetVersion(OSVERSIONINFOW* version);

namespace vextrel::kit {

namespace {

using driver::Narrow;

std::string WindowsVersion() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    RtlGetVersion(&version); // the others tell an old version to a program without a manifest
    constexpr const wchar_t* key = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    std::array<wchar_t, 32> release{};
    DWORD bytes = sizeof release;
    RegGetValueW(HKEY_LOCAL_MACHINE, key, L"DisplayVersion", RRF_RT_REG_SZ, nullptr, release.data(), &bytes);
    DWORD revision = 0;
    bytes = sizeof revision;
    RegGetValueW(HKEY_LOCAL_MACHINE, key, L"UBR", RRF_RT_REG_DWORD, nullptr, &revision, &bytes);
    return std::to_string(version.dwBuildNumber >= 22000 ? 11 : version.dwMajorVersion) + ' ' + Narrow(release.data()) +
           " (" + std::to_string(version.dwBuildNumber) + '.' + std::to_string(revision) + ')';
}

std::string Monitors() {
    std::string all;
    const auto add = [](HMONITOR monitor, HDC, RECT* bounds, LPARAM list) -> BOOL {
        UINT dpi = 0;
        UINT vertical = 0;
        GetDpiForMonitor(monitor, MDT_EFFECTIVE_DPI, &dpi, &vertical);
        auto& text = *reinterpret_cast<std::string*>(list);
        text += (text.empty() ? "" : ", ") + std::to_string(bounds->right - bounds->left) + " x " +
                std::to_string(bounds->bottom - bounds->top) + " at " + std::to_string(dpi) + " dpi";
        return TRUE;
    };
    EnumDisplayMonitors(nullptr, nullptr, add, reinterpret_cast<LPARAM>(&all));
    return all;
}

std::string IntegrityLevel() {
    alignas(TOKEN_MANDATORY_LABEL) std::array<std::byte, 128> memory{};
    DWORD size = 0;
    if (!GetTokenInformation(GetCurrentProcessToken(), TokenIntegrityLevel, memory.data(), DWORD{128}, &size))
        return "unknown";
    const PSID sid = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(memory.data())->Label.Sid;
    const DWORD level = *GetSidSubAuthority(sid, static_cast<DWORD>(*GetSidSubAuthorityCount(sid) - 1));
    return level >= SECURITY_MANDATORY_HIGH_RID     ? "high (as administrator)"
           : level >= SECURITY_MANDATORY_MEDIUM_RID ? "medium"
                                                    : "low";
}

} // namespace

Facts SystemFacts() {
    SYSTEMTIME now{};
    GetSystemTime(&now);
    std::array<char, 16> date{};
    std::snprintf(date.data(), date.size(), "%04hu-%02hu-%02hu", now.wYear, now.wMonth, now.wDay);
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> locale{};
    GetUserDefaultLocaleName(locale.data(), static_cast<int>(locale.size()));
    std::array<wchar_t, KL_NAMELENGTH> keyboard{};
    GetKeyboardLayoutNameW(keyboard.data());
    return {{"Windows", WindowsVersion()},
            {"Wine", driver::UnderWine() ? "yes" : "no"},
            {"Date", date.data()},
            {"Monitors", Monitors()},
            {"Remote session", GetSystemMetrics(SM_REMOTESESSION) != 0 ? "yes" : "no"},
            {"Language", Narrow(locale.data())},
            {"Keyboard", Narrow(keyboard.data())},
            {"Code page", std::to_string(GetACP())},
            {"Integrity level", IntegrityLevel()}};
}

} // namespace vextrel::kit
