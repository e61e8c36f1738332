#pragma once

#include "ui/Operations.h"
#include "win32/ProgramState.h"
#include "win32/SystemLibrary.h"

#include <shellapi.h>

namespace vextrel {

/// Opens the manual that lies in the program's own folder, or says that it is not there. @param asker the window in
/// front.
inline void ShowManual(Operations& operations, HWND asker, const ProgramState& program) {
    const std::wstring file = program.folder + L"\\docs\\manual.html";
    if (!FileExists(file)) {
        const std::wstring text = L"The manual is not where it belongs:\r\n" + file;
        ShowMessageBox(operations, text.c_str(), L"Vextrel", MB_OK | MB_ICONINFORMATION, asker);
        return;
    }
    const SystemLibrary shell(L"shell32.dll");
    if (const auto execute = shell.Find<decltype(&::ShellExecuteW)>("ShellExecuteW")) {
        execute(operations.MainWindow(), L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    }
}

} // namespace vextrel
