#pragma once

#include "core/Pinned.h"
#include "win32/Windows.h"

#include <memory>
#include <type_traits>
#include <utility>

namespace vextrel {

/// Move-only owner of a Windows handle. Reading (`Get`) and giving up (`Release`) are explicit.
/// @tparam Close what ends the handle's life; its result is not interesting any more.
template <typename Handle, auto Close>
class UniqueHandle {
  public:
    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Handle handle) noexcept
        : handle_(handle) {}

    [[nodiscard]] Handle Get() const noexcept { return handle_.get(); }
    [[nodiscard]] explicit operator bool() const noexcept { return handle_ != nullptr; }
    [[nodiscard]] Handle Release() noexcept { return handle_.release(); }
    void Reset(Handle handle = nullptr) noexcept { handle_.reset(handle); }

  private:
    struct Closer {
        void operator()(Handle handle) const noexcept { Close(handle); }
    };
    std::unique_ptr<std::remove_pointer_t<Handle>, Closer> handle_;
};

/// What ends a handle's life; the system's own functions are no constants.
struct Close {
    static void Kernel(HANDLE handle) noexcept { ::CloseHandle(handle); }
    static void Graphics(HGDIOBJ object) noexcept { ::DeleteObject(object); }
    static void Context(HDC context) noexcept { ::DeleteDC(context); }
    static void Images(HIMAGELIST images) noexcept { ::ImageList_Destroy(images); }
    static void Hook(HHOOK hook) noexcept { ::UnhookWindowsHookEx(hook); }
    static void Menu(HMENU menu) noexcept { ::DestroyMenu(menu); }
    static void Icon(HICON icon) noexcept { ::DestroyIcon(icon); }
    static void Library(HMODULE library) noexcept { ::FreeLibrary(library); }
};

using UniqueKernelHandle = UniqueHandle<HANDLE, &Close::Kernel>;
using UniqueFont = UniqueHandle<HFONT, &Close::Graphics>;
using UniquePen = UniqueHandle<HPEN, &Close::Graphics>;
using UniqueBitmap = UniqueHandle<HBITMAP, &Close::Graphics>;
using UniqueMemoryContext = UniqueHandle<HDC, &Close::Context>;
using UniqueImageList = UniqueHandle<HIMAGELIST, &Close::Images>;
using UniqueHook = UniqueHandle<HHOOK, &Close::Hook>;
using UniqueMenu = UniqueHandle<HMENU, &Close::Menu>;
using UniqueIcon = UniqueHandle<HICON, &Close::Icon>;
using UniqueLibrary = UniqueHandle<HMODULE, &Close::Library>;

/// BeginPaint and EndPaint.
class PaintScope : private Pinned {
  public:
    explicit PaintScope(HWND window) noexcept
        : window_(window) {
        ::BeginPaint(window, &paint_);
    }
    ~PaintScope() { ::EndPaint(window_, &paint_); }
    [[nodiscard]] HDC Context() const noexcept { return paint_.hdc; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
};

/// SelectObject, undone on the way out.
class SelectScope : private Pinned {
  public:
    SelectScope(HDC context, HGDIOBJ object) noexcept
        : context_(context)
        , previous_(::SelectObject(context, object)) {}
    ~SelectScope() { ::SelectObject(context_, previous_); }

  private:
    HDC context_;
    HGDIOBJ previous_;
};

/// Holds a lock, alone.
class LockScope : private Pinned {
  public:
    explicit LockScope(SRWLOCK& lock) noexcept
        : lock_(lock) {
        ::AcquireSRWLockExclusive(&lock_);
    }
    ~LockScope() { ::ReleaseSRWLockExclusive(&lock_); }

  private:
    SRWLOCK& lock_;
};

/// Sets a flag for as long as it lives; scopes may nest.
class FlagScope : private Pinned {
  public:
    explicit FlagScope(bool& flag) noexcept
        : flag_(flag)
        , previous_(std::exchange(flag, true)) {}
    ~FlagScope() { flag_ = previous_; }

  private:
    bool& flag_;
    bool previous_;
};

} // namespace vextrel
