#pragma once

#include "win32/Windows.h"

#include <objidl.h>

#include <atomic>
#include <span>

namespace vextrel {

/// Lists the formats that a data object offers.
class FormatEnumerator final : public IEnumFORMATETC {
  public:
    /// Born with one reference, the caller's. @param formats must stay for as long as the program runs.
    explicit FormatEnumerator(std::span<const FORMATETC> formats, std::size_t position = 0) noexcept
        : formats_(formats)
        , position_(position) {}
    FormatEnumerator(const FormatEnumerator&) = delete;
    FormatEnumerator& operator=(const FormatEnumerator&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, FORMATETC* formats, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumFORMATETC** copy) noexcept override;

  private:
    ~FormatEnumerator() = default;

    std::atomic<ULONG> references_{1};
    std::span<const FORMATETC> formats_;
    std::size_t position_;
};

} // namespace vextrel
