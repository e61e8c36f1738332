#include "win32/EventGuard.h"

#include "core/Error.h"
#include "win32/Text.h"

#include <exception>
#include <new>

namespace vextrel {

void ErrorSink::ReportCurrentException(HWND owner, const wchar_t* handler) noexcept {
    const auto report = [&](const Error& error) {
        if (current_ != nullptr) {
            current_->Report(handler, error.Number(), error.Description(), owner);
        }
    };
    try {
        try {
            throw;
        } catch (const Error& error) {
            report(error);
        } catch (const std::bad_alloc&) {
            report(Error(ErrorNumber::OutOfMemory));
        } catch (const std::exception& error) {
            report(Error(ErrorNumber::InvalidCall, Widen(error.what())));
        } catch (...) {
            report(Error(ErrorNumber::InvalidCall));
        }
    } catch (...) {
        return; // an error inside the reporting is not reported
    }
}

} // namespace vextrel
