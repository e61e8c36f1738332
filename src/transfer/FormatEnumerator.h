#pragma once

#include "win32/ComObject.h"

#include <objidl.h>

#include <span>

namespace vextrel {

/// Lists the formats that a data object offers.
class FormatEnumerator final : public ComObject<IEnumFORMATETC> {
  public:
    /// @param formats must stay for as long as the program runs.
    explicit FormatEnumerator(std::span<const FORMATETC> formats, std::size_t position = 0) noexcept
        : formats_(formats)
        , position_(position) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, FORMATETC* formats, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumFORMATETC** copy) noexcept override;

  private:
    ~FormatEnumerator() override = default;

    std::span<const FORMATETC> formats_;
    std::size_t position_;
};

} // namespace vextrel
