// A library that leaves a file behind when a program loads it, beside itself and named after itself.
#include <windows.h>

#include <cwchar>

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, void* /*reserved*/) {
    wchar_t path[MAX_PATH + 8] = {};
    GetModuleFileNameW(self, path, MAX_PATH);
    if (reason == DLL_PROCESS_ATTACH)
        CloseHandle(CreateFileW(std::wcscat(path, L".loaded"), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    return TRUE;
}
