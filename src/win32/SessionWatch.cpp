#include "win32/SessionWatch.h"

#include "win32/SystemLibrary.h"

#include <wtsapi32.h>

namespace vextrel {

void WatchSession(HWND window, bool watch) noexcept {
    // Not a static import: wtsapi32.dll is none of those that the system always takes from its own folder.
    static const SystemLibrary library(L"wtsapi32.dll");
    if (!watch) {
        if (const auto end =
                library.Find<decltype(&::WTSUnRegisterSessionNotification)>("WTSUnRegisterSessionNotification")) {
            end(window);
        }
    } else if (const auto begin =
                   library.Find<decltype(&::WTSRegisterSessionNotification)>("WTSRegisterSessionNotification")) {
        begin(window, NOTIFY_FOR_THIS_SESSION);
    }
}

} // namespace vextrel
