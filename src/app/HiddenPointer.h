#pragma once

#include "ui/MainWindow.h"
#include "ui/Operations.h"

namespace vextrel {

/// The pointer as a grey dot.
class HiddenPointer {
  public:
    HiddenPointer(MainWindow& form, Operations& operations)
        : form_(form)
        , operations_(operations) {}

    /// Asks the user, except while the stored settings are being applied. @return whether the dot is in force now.
    bool HideMouse();
    void ShowMouse() noexcept { SetHidden(false); }
    /// From now on a question may be asked: the program has started.
    void AllowQuestions() noexcept { mayAsk_ = true; }
    [[nodiscard]] bool MouseHidden() const noexcept { return mouseHidden_; }

    void SetOverKeys(bool over) noexcept;
    /// Whether the dot is what the pointer shows: in force, and the pointer came over the keys last.
    [[nodiscard]] bool ShowsDot() const noexcept { return mouseHidden_ && overKeys_; }

  private:
    void SetHidden(bool hidden) noexcept;

    MainWindow& form_;
    Operations& operations_;
    bool mouseHidden_ = false;
    bool overKeys_ = true;
    bool mayAsk_ = false;
};

} // namespace vextrel
