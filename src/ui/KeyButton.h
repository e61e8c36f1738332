#pragma once

#include "ui/Events.h"
#include "win32/SubclassedWindow.h"
#include "win32/SystemLook.h"

#include <span>
#include <string>
#include <utility>

namespace vextrel {

class KeyButton;

/// The mouse while a key is held. The keys' window takes it, not the key: the system tells every accessibility listener
/// which window takes the mouse, and a key's text is the character that is being entered.
class KeyCapture {
  public:
    void Take(KeyButton& key) noexcept;
    [[nodiscard]] bool IsFor(const KeyButton& key) const noexcept;

    /// Passes on what the keys' window gets for the held key, the loss of the mouse as well; over another of the keys,
    /// that one is held. @return whether the message was one for it.
    bool Route(HWND window, std::span<KeyButton> keys, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  private:
    KeyButton* key_ = nullptr;
};

/// One key. A push button to the outside (text, BM_GETSTATE, BM_SETSTATE, button role), but it never takes the focus,
/// draws itself, and tells nobody when it is pushed: the system's own button would raise an accessibility event that
/// names the key just entered.
class KeyButton final : public SubclassedWindow {
  public:
    /// @param number 1 to 65. @throws Error with the system's code.
    void Create(HWND parent, int number, KeyEvents& events, FontCache& fonts, KeyCapture& capture);

    [[nodiscard]] const std::wstring& Caption() const noexcept { return caption_; }
    void SetCaption(const std::wstring& caption);
    void SetPushed(bool pushed) noexcept { Change(pushed_, pushed); }
    /// Marks a modifier key that is in effect.
    void SetLit(bool lit) noexcept;
    /// What the key draws in from then on.
    void SetDpi(int dpi) noexcept { dpi_ = dpi; }
    void SetCharacterHeight(int heightPx) noexcept { Change(characterHeightPx_, heightPx); }

  private:
    friend KeyCapture; // passes on beneath the gate, for which a message that is sent has no origin
    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) noexcept override;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// Tells assistive programs how to say the key.
    void Name() noexcept;
    /// Gives what the key shows another value.
    template <typename Value>
    void Change(Value& shown, Value value) noexcept {
        if (std::exchange(shown, value) != value) {
            ::InvalidateRect(Handle(), nullptr, FALSE);
        }
    }
    void OnMouseMove(POINT point) noexcept;
    void OnButtonUp(POINT point) noexcept;
    void Paint(HDC context);

    int number_ = 0;
    int dpi_ = USER_DEFAULT_SCREEN_DPI;
    int characterHeightPx_ = 0;
    KeyEvents* events_ = nullptr;
    FontCache* fonts_ = nullptr;
    KeyCapture* capture_ = nullptr;
    std::wstring caption_;
    const wchar_t* spokenName_ = nullptr; ///< null: its caption
    bool pushed_ = false;
    bool lit_ = false;
};

} // namespace vextrel
