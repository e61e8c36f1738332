#pragma once

#include "driver/App.h"

#include <cwchar>

namespace vextrel::faults {

/// Names, for a program that is about to be started, the handler that throws first, the class of which there are no
/// windows, or a system that keeps windows out of captures in the older way only, or whose clock is so much faster.
inline constexpr const wchar_t* faultAtStart = L"VEXTREL_FAULT";
inline constexpr const wchar_t* olderCapture = L"older capture";
inline constexpr const wchar_t* fastClock = L"fast clock";
inline constexpr ULONGLONG clockRate = 20;

/// In place of the system, which may have no such thing, windows remember in this property how far they were kept out
/// of captures; if they were seen before that, with one bit more.
inline constexpr const wchar_t* affinityProperty = L"VextrelAffinity";

/// What a test asks for in memory that it shares with the program: the named handler throws the next `times` times.
struct Order {
    volatile LONG times;
    enum class Kind : LONG { OurError, SystemError, OutOfMemory, StandardError, Unknown } kind;
    wchar_t handler[64];

    static Order& To(DWORD processId) {
        const std::wstring name = L"Local\\VextrelFault" + std::to_wstring(processId);
        const HANDLE shared =
            CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Order), name.c_str());
        return *static_cast<Order*>(MapViewOfFile(shared, FILE_MAP_WRITE, 0, 0, 0));
    }
};

} // namespace vextrel::faults

namespace vextrel::driver {

using Fault = faults::Order::Kind;

/// The build whose event handlers fail when they are told to; its sandbox has to hold "vextrel_faults.exe".
class FaultyApp : public App {
  public:
    using App::App;

    void Order(const wchar_t* handler, LONG times = 1, Fault fault = Fault::OurError) const {
        order_.times = 0;
        order_.kind = fault;
        std::wcscpy(order_.handler, handler);
        order_.times = times;
    }
    [[nodiscard]] LONG TimesLeft() const { return order_.times; }

  private:
    faults::Order& order_ = faults::Order::To(Running().Id());
};

} // namespace vextrel::driver
