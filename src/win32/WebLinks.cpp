#include "win32/WebLinks.h"

#include "win32/SystemLibrary.h"

#include <shellapi.h>

namespace vextrel {

void OpenWebPage(HWND owner, WebPage page) {
    const char* address =
        page == WebPage::Homepage ? "https://vextrel.example/vextrel-v3/" : "https://vextrel.example/donate/";
    const SystemLibrary shell(L"shell32.dll");
    if (const auto execute = shell.Find<decltype(&::ShellExecuteA)>("ShellExecuteA")) {
        execute(owner, "open", address, nullptr, nullptr, SW_HIDE);
    }
}

} // namespace vextrel
