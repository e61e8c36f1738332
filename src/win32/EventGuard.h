#pragma once

#include "core/Pinned.h"
#include "win32/Windows.h"

#include <cstdint>
#include <string_view>

namespace vextrel {

/// Shows unexpected errors to the user for as long as it lives. Implemented by the program's error reporting; there is
/// at most one.
class ErrorSink : private Pinned {
  public:
    /// @param source the failing handler's name. @param owner the window whose handler failed.
    virtual void Report(std::wstring_view source, std::int32_t number, std::wstring_view description,
                        HWND owner) noexcept = 0;
    /// Tells the one that lives, if any, the exception that is being handled.
    static void ReportCurrentException(HWND owner, const wchar_t* handler) noexcept;

  protected:
    ErrorSink() noexcept { current_ = this; }
    ~ErrorSink() { current_ = nullptr; }

  private:
    /// Not an argument: the guard is called from window procedures, which get no context that could carry it.
    static inline ErrorSink* current_ = nullptr;
};

namespace detail {
/// Does nothing. A test build links its own in place of it, which throws in place of the named handler's body when the
/// test asked for it.
void ThrowInjectedFault(const wchar_t* handler);
} // namespace detail

/// Runs an event handler's body. Nothing escapes into Windows: what the body throws is reported under the handler's
/// name, and the program carries on.
template <typename Body>
void GuardEvent(HWND owner, const wchar_t* handler, Body&& body) noexcept {
    try {
        detail::ThrowInjectedFault(handler);
        body();
    } catch (...) {
        ErrorSink::ReportCurrentException(owner, handler);
    }
}

} // namespace vextrel
