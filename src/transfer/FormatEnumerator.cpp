#include "transfer/FormatEnumerator.h"

#include <algorithm>
#include <new>

namespace vextrel {

HRESULT FormatEnumerator::Next(ULONG count, FORMATETC* formats, ULONG* fetched) noexcept {
    if (formats == nullptr || (fetched == nullptr && count != 1)) {
        return E_INVALIDARG;
    }
    const std::size_t given = std::min<std::size_t>(count, formats_.size() - position_);
    std::copy_n(formats_.begin() + static_cast<std::ptrdiff_t>(position_), given, formats);
    position_ += given;
    if (fetched != nullptr) {
        *fetched = static_cast<ULONG>(given);
    }
    return given == count ? S_OK : S_FALSE;
}

HRESULT FormatEnumerator::Skip(ULONG count) noexcept {
    const std::size_t skipped = std::min<std::size_t>(count, formats_.size() - position_);
    position_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
}

HRESULT FormatEnumerator::Reset() noexcept {
    position_ = 0;
    return S_OK;
}

HRESULT FormatEnumerator::Clone(IEnumFORMATETC** copy) noexcept {
    if (copy == nullptr) {
        return E_POINTER;
    }
    *copy = new (std::nothrow) FormatEnumerator(formats_, position_);
    return *copy != nullptr ? S_OK : E_OUTOFMEMORY;
}

} // namespace vextrel
