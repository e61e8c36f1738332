#include "win32/WebLinks.h"

#include "win32/SystemLibrary.h"
#include "win32/Text.h"

#include <shellapi.h>

namespace vextrel {

const wchar_t* AddressOf(WebPage page) noexcept {
    return page == WebPage::Homepage ? L"https://vextrel.example/vextrel-v3/" : L"https://vextrel.example/donate/";
}

void OpenWebPage(HWND owner, WebPage page) {
    const SystemLibrary shell(L"shell32.dll");
    if (const auto execute = shell.Find<decltype(&::ShellExecuteA)>("ShellExecuteA")) {
        execute(owner, "open", Narrow(AddressOf(page)).c_str(), nullptr, nullptr, SW_HIDE);
    }
}

} // namespace vextrel
