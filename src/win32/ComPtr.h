#pragma once

#include <utility>

namespace vextrel {

/// Owns one reference to a COM object.
template <typename Interface>
class ComPtr {
  public:
    ComPtr() noexcept = default;
    /// Takes over the caller's reference.
    explicit ComPtr(Interface* object) noexcept
        : object_(object) {}
    ComPtr(ComPtr&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;
    ~ComPtr() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }

    [[nodiscard]] Interface* Get() const noexcept { return object_; }
    [[nodiscard]] Interface* operator->() const noexcept { return object_; }
    [[nodiscard]] Interface& operator*() const noexcept { return *object_; }
    [[nodiscard]] explicit operator bool() const noexcept { return object_ != nullptr; }
    /// For calls that give back an object; what was held before is released.
    [[nodiscard]] Interface** Out() noexcept {
        *this = ComPtr();
        return &object_;
    }

  private:
    Interface* object_ = nullptr;
};

} // namespace vextrel
