#pragma once

#include "ui/MainWindow.h"
#include "ui/ProtectiveLayer.h"

namespace vextrel {

/// Hover entry in the real windows: the rules of HoverEntry over the layer's timer.
class Hover {
  public:
    Hover(MainWindow& form, ProtectiveLayer& cover)
        : form_(form)
        , cover_(cover) {}

    [[nodiscard]] bool TimerEnabled() const noexcept { return entry_.IsEnabled(); }
    void SetTimerEnabled(bool enabled) { Obey(entry_.SetEnabled(enabled)); }

    [[nodiscard]] std::int32_t TimerInterval() const noexcept { return intervalMs_; }
    /// In milliseconds. Holds from the next key on.
    void SetTimerInterval(std::int32_t intervalMs) noexcept { intervalMs_ = intervalMs; }

    /// Sounds an entry: "beep.wav" in the folder if it is there, and returns when it has been played; else the system's
    /// beep. A machine without a sound device stays silent.
    static void Beep(const std::wstring& folder);

    void MoveOverKey(int button) {
        Obey(entry_.MoveOverKey(button, form_.Key(button).Caption(), CaptionOfCurrent(), SeePointer()));
    }
    /// Looks where the pointer is, whenever a key may come to lie under it. @return whether it stood there already.
    bool SeePointer() noexcept;
    void LeaveKeys() { Obey(entry_.LeaveKeys()); }
    void ClearCurrentButton() noexcept { entry_.ClearCurrentButton(); }

    /// The key that this tick enters, if any.
    [[nodiscard]] std::optional<int> Tick() const { return entry_.Tick(CaptionOfCurrent()); }
    void Entered(int button) { entry_.Entered(button, form_.Key(button).Caption()); }
    /// Around a caption refresh that is no arrival.
    void CaptionRefreshed(std::wstring_view before) { entry_.CaptionRefreshed(before, CaptionOfCurrent()); }
    [[nodiscard]] std::wstring CaptionOfCurrent() const;

  private:
    void Obey(HoverEntry::TimerOrder order) noexcept {
        cover_.Obey(order, static_cast<UINT>(std::max(1, intervalMs_)));
    }

    MainWindow& form_;
    ProtectiveLayer& cover_;
    HoverEntry entry_;
    PointerRest pointer_;
    std::int32_t intervalMs_ = 1000;
};

} // namespace vextrel
