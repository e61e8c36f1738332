// A library that leaves a file behind when a program loads it, beside itself and named after itself.
#include <windows.h>

#include <string>

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, void* /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        wchar_t path[MAX_PATH] = {};
        GetModuleFileNameW(self, path, MAX_PATH);
        const HANDLE mark = CreateFileW((std::wstring(path) + L".loaded").c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        CloseHandle(mark);
    }
    return TRUE;
}
