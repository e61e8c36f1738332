#pragma once

#include "core/Geometry.h"
#include "ui/Operations.h"
#include "win32/Form.h"
#include "win32/SystemLook.h"

#include <cmath>
#include <string>

namespace vextrel {

/// A small modal window of our own: title, controls, an own message loop. Shown over its owner, which is disabled
/// meanwhile, as is the protective layer.
class Dialog : public Form {
  public:
    ~Dialog() override { Unload(); }

    /// Shows the dialog, once, and returns when it has been ended. An owner that is no window stands for none.
    /// @return what End was given; IDCANCEL when the window was closed or went with its owner.
    int RunModal(Operations& operations, HWND owner);

  protected:
    /// @param clientSize96 at 96 DPI, in the usual message font.
    Dialog(std::wstring title, Size clientSize96)
        : title_(std::move(title))
        , clientSize96_(clientSize96) {}

    /// Creates the controls; the window exists and is hidden.
    virtual void CreateControls() = 0;
    /// What depends on the size beside the places and the message font; after CreateControls and on every new DPI.
    virtual void FitControls() {}
    /// A command of a control. OK and Cancel end the dialog by default.
    virtual void OnCommand(int id);
    virtual void OnNotify(const NMHDR&) {}

    void End(int result) noexcept;
    /// Creates a control at a place given for 96 DPI and the usual message font, in the message font.
    HWND AddControl(const wchar_t* controlClass, const wchar_t* text, DWORD style, const Rect& place96, int id = -1,
                    DWORD exStyle = 0);
    HWND AddLabel(const wchar_t* text, const Rect& place96, DWORD style = SS_LEFT) {
        return AddControl(WC_STATICW, text, style, place96);
    }
    /// Creates a field of lines to read, with a scroll bar if they need one.
    void AddLines(const wchar_t* lines, const Rect& place96, int id);
    /// In pixels, as large as the DPI and the user's font ask.
    [[nodiscard]] int Scaled(int at96) const noexcept { return static_cast<int>(std::lround(at96 * scale_)); }
    [[nodiscard]] FontCache& Fonts() noexcept { return fonts_; }

  private:
    void ServeUntilEnded(HWND owner, HWND mainWindow);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) final;
    LRESULT OnActivate(WPARAM wParam, LPARAM lParam);
    void LoadOver(HWND owner);
    void OnDpiChanged(const RECT& suggested);
    void ChooseScale(int dpi, const RECT& screen);
    [[nodiscard]] Size OuterSize(int dpi) const;
    void FitAll();
    void ShowScrollBarIfNeeded() const noexcept;

    std::wstring title_;
    Size clientSize96_;
    FontCache fonts_;
    HFONT font_ = nullptr;
    double scale_ = 1;                            ///< pixels for one at 96 DPI in the usual message font
    std::vector<std::pair<HWND, Rect>> children_; ///< and their places at 96 DPI
    HWND lines_ = nullptr;                        ///< the field of lines to read, if there is one
    HWND lastFocus_ = nullptr;                    ///< the control that had it when the dialog was last left
    std::optional<int> result_;                   ///< once it has been ended
};

} // namespace vextrel
