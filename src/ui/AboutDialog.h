#pragma once

#include "ui/Dialog.h"
#include "win32/handles.h"

#include <string>
#include <utility>
#include <vector>

namespace vextrel {

/// What the program is, where its maker's pages are, and which protections are in force at the moment.
class AboutDialog final : public Dialog {
  public:
    /// @param protections one line each, in the order in which they are to be read.
    explicit AboutDialog(std::vector<std::wstring> protections)
        : protections_(std::move(protections)) {}

  private:
    [[nodiscard]] Look LookOf() const override { return {L"About Vextrel", {440, 344}}; }
    void CreateControls() override;
    void FitControls() override;
    LRESULT OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void AddLink(const wchar_t* text, const Rect& place96, int id);

    std::vector<std::wstring> protections_;
    UniqueIcon icon_;
    HWND picture_ = nullptr;
    HWND name_ = nullptr;
};

} // namespace vextrel
