// Takes the place of the guard's empty hook in the faulty build: event handlers throw when a test wants them to.

#include "core/Error.h"
#include "faults/FaultOrder.h"
#include "win32/EventGuard.h"
#include "win32/Text.h"

#include <cwchar>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace vextrel::detail {

namespace {

faults::FaultOrder* MapOrder() {
    // Open for as long as the program runs; the test opens it by its name.
    const HANDLE mapping =
        ::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(faults::FaultOrder),
                             faults::NameOfOrder(::GetCurrentProcessId()).c_str());
    auto* order = static_cast<faults::FaultOrder*>(::MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));
    if (::GetEnvironmentVariableW(faults::faultAtStart, order->handler,
                                  DWORD{std::extent_v<decltype(order->handler)>}) != 0) {
        order->times = 1;
    }
    return order;
}

void TakeAllGraphics(bool take) {
    static std::vector<HBRUSH> taken;
    while (take) {
        const HBRUSH one = ::CreateSolidBrush(static_cast<COLORREF>(taken.size()));
        if (one == nullptr) {
            return;
        }
        taken.push_back(one);
    }
    for (const HBRUSH one : taken) {
        ::DeleteObject(one);
    }
    taken.clear();
}

void CarryOut(faults::FaultOrder::Kind kind) {
    using Kind = faults::FaultOrder::Kind;
    switch (kind) {
    case Kind::OurError: throw Error(ErrorNumber::TypeMismatch);
    case Kind::SystemError: throw Error(ERROR_ACCESS_DENIED, L"Access denied.");
    case Kind::OutOfMemory: throw std::bad_alloc();
    case Kind::RefuseGraphics:
    case Kind::NoGraphics:
    case Kind::GraphicsAgain:
        faults::refusesGraphics = kind == Kind::RefuseGraphics;
        TakeAllGraphics(kind == Kind::NoGraphics);
        return;
    case Kind::StandardError: throw std::runtime_error("broken");
    default: throw 1;
    }
}

} // namespace

void ThrowInjectedFault(const wchar_t* handler) {
    static faults::FaultOrder* const order = MapOrder();
    if (order != nullptr && order->times > 0 && std::wcscmp(order->handler, handler) == 0) {
        ::InterlockedDecrement(&order->times);
        CarryOut(order->kind);
    }
}

} // namespace vextrel::detail
