#pragma once

#include "transfer/TextDataObject.h"
#include "win32/InputState.h"

#include <oleidl.h>

namespace vextrel {

/// Steers a drag of the password: it ends when the button that it began with goes up, which opens the data for the
/// program whose window is under the pointer then; Escape cancels it, and so does a button that was never seen down.
///
/// OLE asks every window that the pointer comes to, and would wait without an end for one that hangs. A drag that hands
/// nothing over by dropping is therefore kept away from such a window: it rests while the pointer is there, and ends
/// when the button goes up.
class DropSource final : public ComObject<IDropSource> {
  public:
    /// @param keepFromHung the drag is kept away from windows that hang.
    DropSource(TextDataObject& data, bool keepFromHung) noexcept
        : data_(data)
        , keepFromHung_(keepFromHung) {}

    /// Whether the user has let go of the button. A drag may end without: by Escape, or by itself.
    [[nodiscard]] bool WasReleased() const noexcept { return released_; }

    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escapePressed, DWORD keyState) noexcept override;
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) noexcept override { return DRAGDROP_S_USEDEFAULTCURSORS; }

  private:
    ~DropSource() override = default;
    [[nodiscard]] HRESULT RestOverHungWindow() noexcept;

    TextDataObject& data_; ///< outlives the drag
    bool keepFromHung_;
    bool seenDown_ = IsPrimaryButtonHeld();
    bool released_ = false;
    HWND answering_ = nullptr; ///< the window that the pointer was over last and that answered
};

} // namespace vextrel
