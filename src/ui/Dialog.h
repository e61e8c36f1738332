#pragma once

#include "base/Geometry.h"
#include "ui/FontCache.h"
#include "ui/Operations.h"
#include "win32/Form.h"

namespace vextrel {

/// A small modal window of our own: title, controls, an own message loop. Shown over its owner, which is disabled
/// meanwhile, as is the protective layer.
class Dialog : public Form {
  public:
    Dialog() = default;
    ~Dialog() override { Unload(); }

    /// Shows the dialog and returns when it has been ended. An owner that is no window stands for none.
    /// @return what End was given; IDCANCEL when the window was closed or went with its owner.
    int RunModal(Operations& operations, HWND owner);

  protected:
    struct Look {
        const wchar_t* title = L"";
        Size clientSize96; ///< at 96 DPI
    };

    [[nodiscard]] virtual Look LookOf() const = 0;
    /// Creates the controls; the window exists and is hidden.
    virtual void CreateControls() = 0;
    /// A command of a control. OK and Cancel are ended by default.
    virtual void OnCommand(int id, int notification);
    virtual LRESULT OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam);

    void End(int result) noexcept;
    /// Creates a control at a place given for 96 DPI, in the message font.
    HWND AddControl(const wchar_t* controlClass, const wchar_t* text, DWORD style, DWORD exStyle, const Rect& place96,
                    int id);
    /// Creates a field of lines to read, with a scroll bar if they need one.
    void AddLines(const wchar_t* lines, const Rect& place96, int id);
    [[nodiscard]] int Scaled(int at96) const noexcept { return ::MulDiv(at96, Dpi(), USER_DEFAULT_SCREEN_DPI); }
    [[nodiscard]] FontCache& Fonts() noexcept { return fonts_; }

  private:
    void ServeUntilEnded(const Operations& operations);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) final;
    LRESULT OnActivate(WPARAM wParam, LPARAM lParam);
    void LoadOver(HWND owner);
    void OnUnload() noexcept override;

    FontCache fonts_;
    HWND owner_ = nullptr;
    HWND lastFocus_ = nullptr; ///< the control that had it when the dialog was last left
    int result_ = IDCANCEL;
    bool ended_ = false;
};

} // namespace vextrel
