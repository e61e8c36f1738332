// What the faulty build has in place of some of the system's calls, and of the guard's empty hook.
#include "core/Error.h"
#include "faults/FaultyApp.h"
#include "win32/EventGuard.h"

namespace vextrel {
namespace {

using faults::Order;

bool IsAskedFor(const wchar_t* what) noexcept {
    wchar_t fault[32] = {};
    ::GetEnvironmentVariableW(faults::faultAtStart, fault, DWORD{std::size(fault)});
    return std::wcscmp(fault, what) == 0;
}

template <typename Function>
Function* Real(const wchar_t* library, const char* name) noexcept {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(library), name)));
}

BOOL WINAPI SetAffinity(HWND window, DWORD affinity) noexcept {
    if (affinity != WDA_MONITOR && IsAskedFor(faults::olderCapture)) {
        return FALSE;
    }
    const UINT_PTR seen = ::IsWindowVisible(window) != FALSE ? 0x100 : 0;
    return ::SetPropW(window, faults::affinityProperty, reinterpret_cast<HANDLE>(affinity | seen));
}

BOOL WINAPI GetAffinity(HWND window, DWORD* affinity) noexcept {
    *affinity = reinterpret_cast<UINT_PTR>(::GetPropW(window, faults::affinityProperty)) & 0xFF;
    return TRUE;
}

HWND WINAPI MakeWindow(DWORD exStyle, LPCWSTR windowClass, LPCWSTR name, DWORD style, int x, int y, int width,
                       int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID creation) noexcept {
    static const auto real = Real<decltype(MakeWindow)>(L"user32.dll", "CreateWindowExW");
    ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    if (!IS_INTRESOURCE(windowClass) && IsAskedFor(windowClass)) {
        return nullptr;
    }
    return real(exStyle, windowClass, name, style, x, y, width, height, parent, menu, instance, creation);
}

/// As Windows does, but not Wine: the first main window that is shown so gets what the program's starter asked for.
BOOL WINAPI Show(HWND window, int command) noexcept {
    static const auto real = Real<decltype(Show)>(L"user32.dll", "ShowWindow");
    static bool isFirst = true;
    STARTUPINFOW startup{};
    ::GetStartupInfoW(&startup);
    const bool isMain = command == SW_SHOW && (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    const bool isAsked = isMain && (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    return real(window, isAsked && std::exchange(isFirst, false) ? startup.wShowWindow : command);
}

ULONGLONG WINAPI TickCount() noexcept {
    static const auto real = Real<decltype(TickCount)>(L"kernel32.dll", "GetTickCount64");
    static const ULONGLONG rate = IsAskedFor(faults::fastClock) ? faults::clockRate : 1;
    return real() * rate;
}

} // namespace

// What the program's calls go through, under the names that the import library would give them.
auto* setAffinityImport asm("__imp_SetWindowDisplayAffinity") = &SetAffinity;
auto* getAffinityImport asm("__imp_GetWindowDisplayAffinity") = &GetAffinity;
auto* windowImport asm("__imp_CreateWindowExW") = &MakeWindow;
auto* showImport asm("__imp_ShowWindow") = &Show;
auto* clockImport asm("__imp_GetTickCount64") = &TickCount;

void detail::ThrowInjectedFault(const wchar_t* handler) {
    static Order& order = Order::To(::GetCurrentProcessId());
    static bool isStart = true;
    if (std::exchange(isStart, false)) {
        order.times = ::GetEnvironmentVariableW(faults::faultAtStart, order.handler, 64) != 0;
    }
    if (order.times <= 0 || std::wcscmp(order.handler, handler) != 0) {
        return;
    }
    ::InterlockedDecrement(&order.times);
    switch (order.kind) {
    case Order::Kind::OurError: throw Error(ErrorNumber::TypeMismatch);
    case Order::Kind::SystemError: throw Error(ERROR_ACCESS_DENIED, L"Access denied.");
    case Order::Kind::OutOfMemory: throw std::bad_alloc();
    case Order::Kind::StandardError: throw std::runtime_error("broken");
    case Order::Kind::Unknown: throw 1;
    }
}

} // namespace vextrel
