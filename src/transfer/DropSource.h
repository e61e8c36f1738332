#pragma once

#include "transfer/TextDataObject.h"
#include "win32/Com.h"

#include <oleidl.h>

namespace vextrel {

/// Steers a drag of the password: it ends when the button that it began with goes up, which opens the data for the
/// target; Escape cancels it.
///
/// OLE asks every window that the pointer comes to, and would wait without an end for one that hangs. A drag that hands
/// nothing over by dropping is therefore kept away from such a window: it rests while the pointer is there, and ends
/// when the button goes up.
class DropSource final : public ComObject<IDropSource> {
  public:
    /// @param keepFromHung the drag is kept away from windows that hang.
    DropSource(TextDataObject& data, bool keepFromHung) noexcept
        : data_(&data)
        , keepFromHung_(keepFromHung) {
        data.AddRef();
    }

    /// Whether the user has let go of the button. A drag may end without: by Escape, or by itself.
    [[nodiscard]] bool WasReleased() const noexcept { return released_; }

    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escapePressed, DWORD keyState) noexcept override;
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) noexcept override { return DRAGDROP_S_USEDEFAULTCURSORS; }

  private:
    ~DropSource() override = default;
    [[nodiscard]] HRESULT RestOverHungWindow() noexcept;

    ComPtr<TextDataObject> data_;
    bool keepFromHung_;
    bool released_ = false;
    HWND answering_ = nullptr; ///< the window that the pointer was over last and that answered
};

} // namespace vextrel
