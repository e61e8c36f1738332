#include "transfer/DropSource.h"

namespace vextrel {

HRESULT DropSource::QueryInterface(REFIID id, void** object) noexcept {
    if (object == nullptr) {
        return E_POINTER;
    }
    if (id != IID_IUnknown && id != IID_IDropSource) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IDropSource*>(this);
    AddRef();
    return S_OK;
}

ULONG DropSource::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT DropSource::QueryContinueDrag(BOOL escapePressed, DWORD keyState) noexcept {
    if (escapePressed != FALSE) {
        escaped_ = true;
        return DRAGDROP_S_CANCEL;
    }
    if ((keyState & MK_LBUTTON) != 0) {
        return S_OK;
    }
    data_->Open();
    return DRAGDROP_S_DROP;
}

} // namespace vextrel
