#pragma once

#include "driver/App.h"
#include "faults/FaultOrder.h"

#include <cwchar>

namespace vextrel::driver {

using Fault = faults::FaultOrder::Kind;

/// The build whose event handlers fail when they are told to; its sandbox has to hold "vextrel_faults.exe".
class FaultyApp : public App {
  public:
    explicit FaultyApp(const Sandbox& sandbox)
        : App(sandbox)
        , mapping_(OpenFileMappingW(FILE_MAP_WRITE, FALSE, faults::NameOfOrder(Running().Id()).c_str())) {
        Check(mapping_ != nullptr, "opening the order");
        order_ = static_cast<faults::FaultOrder*>(MapViewOfFile(mapping_, FILE_MAP_WRITE, 0, 0, 0));
    }
    ~FaultyApp() {
        UnmapViewOfFile(order_);
        CloseHandle(mapping_);
    }
    FaultyApp(const FaultyApp&) = delete;
    FaultyApp& operator=(const FaultyApp&) = delete;

    void Order(const wchar_t* handler, LONG times = 1, Fault fault = Fault::OurError) const {
        order_->times = 0;
        order_->kind = fault;
        std::wcscpy(order_->handler, handler);
        order_->times = times;
    }
    [[nodiscard]] LONG TimesLeft() const { return order_->times; }
    [[nodiscard]] std::string Ordered() const { return Narrow(order_->handler); }

  private:
    HANDLE mapping_;
    faults::FaultOrder* order_;
};

} // namespace vextrel::driver
