#pragma once

#include "core/Pinned.h"
#include "win32/Windows.h"

#include <unknwn.h>

#include <atomic>

namespace vextrel {

/// A COM object of one interface. Born with one reference, its maker's; the last one that is released destroys it.
template <typename Interface>
class ComObject : public Interface, private Pinned {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept final {
        if (object == nullptr) {
            return E_POINTER;
        }
        if (id != __uuidof(IUnknown) && id != __uuidof(Interface)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept final { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept final {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

  protected:
    ComObject() = default;
    virtual ~ComObject() = default;

  private:
    std::atomic<ULONG> references_{1};
};

/// Owns one reference to a COM object.
template <typename Interface>
class ComPtr : private Pinned {
  public:
    ComPtr() noexcept = default;
    /// Takes over the caller's reference.
    explicit ComPtr(Interface* object) noexcept
        : object_(object) {}
    ~ComPtr() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }

    [[nodiscard]] Interface* Get() const noexcept { return object_; }
    [[nodiscard]] Interface* operator->() const noexcept { return object_; }
    [[nodiscard]] Interface& operator*() const noexcept { return *object_; }
    /// For a call that gives back an object; only while none is held.
    [[nodiscard]] Interface** Out() noexcept { return &object_; }

  private:
    Interface* object_ = nullptr;
};

} // namespace vextrel
