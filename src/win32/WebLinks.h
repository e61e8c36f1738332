#pragma once

#include "win32/SystemLibrary.h"

#include <shellapi.h>

namespace vextrel {

/// The pages of the maker's site that the program can open.
enum class WebPage { Homepage, Donate };

/// Opens a page in the user's browser. Whether that works is not looked at.
/// @param owner the main window, for messages that the system may show.
inline void OpenWebPage(HWND owner, WebPage page) noexcept {
    const char* address =
        page == WebPage::Homepage ? "https://vextrel.example/vextrel-v3/" : "https://vextrel.example/donate/";
    const SystemLibrary shell(L"shell32.dll");
    if (const auto execute = shell.Find<decltype(&::ShellExecuteA)>("ShellExecuteA")) {
        execute(owner, "open", address, nullptr, nullptr, SW_HIDE);
    }
}

} // namespace vextrel
