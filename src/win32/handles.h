#pragma once

#include "win32/Windows.h"

#include <utility>

namespace vextrel {

/// Move-only owner of a Windows handle. Reading (`Get`) and giving up (`Release`) are explicit.
/// @tparam Close what ends the handle's life; its result is not interesting any more.
template <typename Handle, auto Close, Handle invalid = Handle{}>
class UniqueHandle {
  public:
    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Handle handle) noexcept
        : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept
        : handle_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        Reset(other.Release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    [[nodiscard]] Handle Get() const noexcept { return handle_; }
    [[nodiscard]] explicit operator bool() const noexcept { return handle_ != invalid; }
    [[nodiscard]] Handle Release() noexcept { return std::exchange(handle_, invalid); }
    void Reset(Handle handle = invalid) noexcept {
        const Handle old = std::exchange(handle_, handle);
        if (old != invalid) {
            static_cast<void>(Close(old));
        }
    }

  private:
    Handle handle_ = invalid;
};

namespace detail {
inline void DeleteGdiObject(HGDIOBJ object) noexcept {
    ::DeleteObject(object);
}
inline void DestroyImages(HIMAGELIST images) noexcept {
    ::ImageList_Destroy(images);
}
inline void DeleteContext(HDC context) noexcept {
    ::DeleteDC(context);
}
inline void UnhookHook(HHOOK hook) noexcept {
    ::UnhookWindowsHookEx(hook);
}
inline void DestroyMenuHandle(HMENU menu) noexcept {
    ::DestroyMenu(menu);
}
inline void DestroyIconHandle(HICON icon) noexcept {
    ::DestroyIcon(icon);
}
inline void CloseKernelHandle(HANDLE handle) noexcept {
    ::CloseHandle(handle);
}
} // namespace detail

using UniqueKernelHandle = UniqueHandle<HANDLE, &detail::CloseKernelHandle>;
using UniqueFont = UniqueHandle<HFONT, &detail::DeleteGdiObject>;
using UniquePen = UniqueHandle<HPEN, &detail::DeleteGdiObject>;
using UniqueBitmap = UniqueHandle<HBITMAP, &detail::DeleteGdiObject>;
using UniqueMemoryContext = UniqueHandle<HDC, &detail::DeleteContext>;
using UniqueImageList = UniqueHandle<HIMAGELIST, &detail::DestroyImages>;
using UniqueHook = UniqueHandle<HHOOK, &detail::UnhookHook>;
using UniqueMenu = UniqueHandle<HMENU, &detail::DestroyMenuHandle>;
using UniqueIcon = UniqueHandle<HICON, &detail::DestroyIconHandle>;

/// BeginPaint and EndPaint.
class PaintScope {
  public:
    explicit PaintScope(HWND window) noexcept
        : window_(window) {
        ::BeginPaint(window, &paint_);
    }
    ~PaintScope() { ::EndPaint(window_, &paint_); }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    [[nodiscard]] HDC Context() const noexcept { return paint_.hdc; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
};

/// SelectObject, undone on the way out.
class SelectScope {
  public:
    SelectScope(HDC context, HGDIOBJ object) noexcept
        : context_(context)
        , previous_(::SelectObject(context, object)) {}
    ~SelectScope() { ::SelectObject(context_, previous_); }
    SelectScope(const SelectScope&) = delete;
    SelectScope& operator=(const SelectScope&) = delete;

  private:
    HDC context_;
    HGDIOBJ previous_;
};

/// Sets a flag for as long as it lives; scopes may nest.
class FlagScope {
  public:
    explicit FlagScope(bool& flag) noexcept
        : flag_(flag)
        , previous_(std::exchange(flag, true)) {}
    ~FlagScope() { flag_ = previous_; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

  private:
    bool& flag_;
    bool previous_;
};

} // namespace vextrel
