// Takes the place of some of the system's calls in the faulty build. Those that keep windows out of screen captures:
// Wine has none, so a window remembers in a property, which other programs can read, what it was asked for. Those that
// make graphics objects and windows, which fail when a test wants them to. And the one that shows windows.

#include "faults/FaultOrder.h"

#include <cwchar>
#include <utility>

namespace vextrel {

namespace {

bool IsAskedFor(const wchar_t* what) noexcept {
    wchar_t fault[32] = {};
    ::GetEnvironmentVariableW(faults::faultAtStart, fault, DWORD{std::size(fault)});
    return std::wcscmp(fault, what) == 0;
}

BOOL WINAPI SetAffinity(HWND window, DWORD affinity) noexcept {
    if (affinity != WDA_MONITOR && IsAskedFor(faults::olderCapture)) {
        return FALSE;
    }
    const DWORD seen = ::IsWindowVisible(window) != FALSE ? faults::tooLate : 0;
    return ::SetPropW(window, faults::affinityProperty,
                      reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(affinity | seen)));
}

BOOL WINAPI GetAffinity(HWND window, DWORD* affinity) noexcept {
    const auto kept = reinterpret_cast<UINT_PTR>(::GetPropW(window, faults::affinityProperty));
    *affinity = static_cast<DWORD>(kept) & ~faults::tooLate;
    return TRUE;
}

template <typename Function>
Function Real(const wchar_t* library, const char* name) noexcept {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(library), name)));
}

HFONT WINAPI MakeFont(const LOGFONTW* font) noexcept {
    static const auto real = Real<decltype(&MakeFont)>(L"gdi32.dll", "CreateFontIndirectW");
    return faults::refusesGraphics ? nullptr : real(font);
}
HPEN WINAPI MakePen(int style, int width, COLORREF colour) noexcept {
    static const auto real = Real<decltype(&MakePen)>(L"gdi32.dll", "CreatePen");
    return faults::refusesGraphics ? nullptr : real(style, width, colour);
}
HBITMAP WINAPI MakeBitmap(HDC context, int width, int height) noexcept {
    static const auto real = Real<decltype(&MakeBitmap)>(L"gdi32.dll", "CreateCompatibleBitmap");
    return faults::refusesGraphics ? nullptr : real(context, width, height);
}
HANDLE WINAPI LoadPicture(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) noexcept {
    static const auto real = Real<decltype(&LoadPicture)>(L"user32.dll", "LoadImageW");
    return faults::refusesGraphics ? nullptr : real(module, name, type, width, height, flags);
}
HWND WINAPI MakeWindow(DWORD exStyle, LPCWSTR windowClass, LPCWSTR name, DWORD style, int x, int y, int width,
                       int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID creation) noexcept {
    static const auto real = Real<decltype(&MakeWindow)>(L"user32.dll", "CreateWindowExW");
    if (!IS_INTRESOURCE(windowClass) && IsAskedFor(windowClass)) {
        ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return real(exStyle, windowClass, name, style, x, y, width, height, parent, menu, instance, creation);
}

/// As Windows does, but not Wine: the first main window that is shown so gets what the program's starter asked for.
BOOL WINAPI Show(HWND window, int command) noexcept {
    static const auto real = Real<decltype(&Show)>(L"user32.dll", "ShowWindow");
    static bool isFirst = true;
    const bool isMain = (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    STARTUPINFOW startup{};
    ::GetStartupInfoW(&startup);
    const bool isAsked = isMain && command == SW_SHOW && (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    return real(window, isAsked && std::exchange(isFirst, false) ? startup.wShowWindow : command);
}

} // namespace

// What the program's calls go through, under the names that the import library would give them.
auto* setAffinityImport asm("__imp_SetWindowDisplayAffinity") = &SetAffinity;
auto* getAffinityImport asm("__imp_GetWindowDisplayAffinity") = &GetAffinity;
auto* fontImport asm("__imp_CreateFontIndirectW") = &MakeFont;
auto* penImport asm("__imp_CreatePen") = &MakePen;
auto* bitmapImport asm("__imp_CreateCompatibleBitmap") = &MakeBitmap;
auto* windowImport asm("__imp_CreateWindowExW") = &MakeWindow;
auto* pictureImport asm("__imp_LoadImageW") = &LoadPicture;
auto* showImport asm("__imp_ShowWindow") = &Show;

} // namespace vextrel
