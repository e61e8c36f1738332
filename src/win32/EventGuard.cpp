#include "win32/EventGuard.h"

#include "core/Error.h"
#include "win32/Text.h"

#include <exception>
#include <new>

namespace vextrel {

namespace {

// Not an argument: the guard is called from window procedures, which get no context that could carry the sink.
ErrorSink* currentSink = nullptr;

void Report(HWND owner, const wchar_t* handler, const Error& error) noexcept {
    if (currentSink != nullptr) {
        currentSink->Report(handler, error.Number(), error.Description(), owner);
    }
}

} // namespace

ErrorSink::ErrorSink() noexcept {
    currentSink = this;
}
ErrorSink::~ErrorSink() {
    currentSink = nullptr;
}

namespace detail {

void ReportCurrentException(HWND owner, const wchar_t* handler) noexcept {
    try {
        try {
            throw;
        } catch (const Error& error) {
            Report(owner, handler, error);
        } catch (const std::bad_alloc&) {
            Report(owner, handler, Error(ErrorNumber::OutOfMemory));
        } catch (const std::exception& error) {
            Report(owner, handler, Error(ErrorNumber::InvalidCall, Widen(error.what())));
        } catch (...) {
            Report(owner, handler, Error(ErrorNumber::InvalidCall));
        }
    } catch (...) {
        return; // an error inside the reporting is not reported
    }
}

} // namespace detail

} // namespace vextrel
