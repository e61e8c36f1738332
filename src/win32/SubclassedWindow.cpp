#include "win32/SubclassedWindow.h"

#include "win32/Gate.h"
#include "win32/Text.h"

#include <unordered_map>
#include <utility>

namespace vextrel {

namespace {

struct Entry {
    GatedWindow kind = GatedWindow::Control;
    WNDPROC own = nullptr;              ///< the window's own procedure
    SubclassedWindow* object = nullptr; ///< null: nobody but the gate stands before it
};

/// By window: a window procedure gets no other context.
std::unordered_map<HWND, Entry> gated;

} // namespace

LRESULT CALLBACK GatedProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto found = gated.find(window);
    if (found == gated.end()) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    const Entry entry = found->second;
    if (!Gate::LetsThrough(entry.kind, message, wParam)) {
        // The buffer is the system's, and it goes back as far as the answer says, with the terminator behind it.
        if (message == WM_GETTEXT && wParam > 0) {
            *reinterpret_cast<wchar_t*>(lParam) = L'\0';
        }
        return 0;
    }
    if (message == WM_NCDESTROY) {
        if (entry.object != nullptr) {
            entry.object->handle_ = nullptr;
        }
        gated.erase(window);
        Gate::Forget(window);
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(entry.own));
    } else if (entry.object != nullptr) {
        return entry.object->OnWindowMessage(message, wParam, lParam);
    }
    return ::CallWindowProcW(entry.own, window, message, wParam, lParam);
}

void GateWindow(HWND window, GatedWindow kind) {
    Gate::Admit(window);
    const auto entry = gated.emplace(window, Entry{.kind = kind}).first;
    entry->second.own = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&GatedProcedure)));
    if (entry->second.own == nullptr) {
        gated.erase(entry);
        ThrowLastError();
    }
}

LRESULT Tell(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto found = gated.find(window);
    return found == gated.end() ? ::SendMessageW(window, message, wParam, lParam)
                                : ::CallWindowProcW(found->second.own, window, message, wParam, lParam);
}

void SubclassedWindow::Attach(HWND window) {
    gated.at(window).object = this;
    handle_ = window;
}

void SubclassedWindow::Detach() noexcept {
    if (const auto found = gated.find(std::exchange(handle_, nullptr)); found != gated.end()) {
        found->second.object = nullptr;
    }
}

} // namespace vextrel
