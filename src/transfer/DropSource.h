#pragma once

#include "transfer/TextDataObject.h"
#include "win32/ComPtr.h"

#include <oleidl.h>

#include <atomic>

namespace vextrel {

/// Steers a drag of the password: it ends when the button that it began with goes up, which opens the data for the
/// target; Escape cancels it.
class DropSource final : public IDropSource {
  public:
    /// Born with one reference, the caller's.
    explicit DropSource(TextDataObject& data) noexcept
        : data_(&data) {
        data.AddRef();
    }
    DropSource(const DropSource&) = delete;
    DropSource& operator=(const DropSource&) = delete;

    /// Whether the user pressed Escape.
    [[nodiscard]] bool WasEscaped() const noexcept { return escaped_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escapePressed, DWORD keyState) noexcept override;
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) noexcept override { return DRAGDROP_S_USEDEFAULTCURSORS; }

  private:
    ~DropSource() = default;

    std::atomic<ULONG> references_{1};
    ComPtr<TextDataObject> data_;
    bool escaped_ = false;
};

} // namespace vextrel
