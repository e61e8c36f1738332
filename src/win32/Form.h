#pragma once

#include "core/Pinned.h"
#include "win32/Windows.h"

#include <vector>

namespace vextrel {

/// Base of every window of the program. All are of the one window class `VextrelForm`; the window procedure finds the
/// C++ object in the list of loaded forms and forwards to OnMessage.
///
/// A form is *loaded* from Load to Unload. Both the object and the window can outlive the other: a destroyed window
/// leaves a form without a handle, a destroyed form takes its window with it.
class Form : private Pinned {
  public:
    static constexpr const wchar_t* className = L"VextrelForm";

    virtual ~Form();

    [[nodiscard]] HWND Handle() const noexcept { return handle_; }
    [[nodiscard]] bool IsLoaded() const noexcept { return handle_ != nullptr; }
    [[nodiscard]] bool IsVisible() const noexcept { return handle_ != nullptr && ::IsWindowVisible(handle_) != FALSE; }
    /// As the last change of it told, else as the system says.
    [[nodiscard]] int Dpi() const noexcept;

    /// Runs the form's unloading and destroys its window. Unloading twice is harmless.
    void Unload() noexcept;

    /// The loaded forms in the order in which they were loaded.
    [[nodiscard]] static const std::vector<Form*>& Loaded() noexcept { return loaded_; }
    /// The form of a window; null for one that is no form of ours.
    [[nodiscard]] static Form* Find(HWND window) noexcept;

  protected:
    struct CreateArgs {
        const wchar_t* title = L"";
        DWORD style = WS_OVERLAPPEDWINDOW;
        DWORD exStyle = 0;
        HWND owner = nullptr;
        HMENU menu = nullptr; ///< goes with the window once there is one
        int leftPx = CW_USEDEFAULT;
        int topPx = CW_USEDEFAULT;
        int widthPx = CW_USEDEFAULT;
        int heightPx = CW_USEDEFAULT;
    };

    Form() = default;

    /// Creates the window, hidden. @throws Error with the system's code.
    void Load(const CreateArgs& args);

    /// Every message of the window. What a form does not handle it gives to DefaultHandler.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    /// Before the window is destroyed, once per loading, however it comes about.
    virtual void OnUnload() noexcept {}

    LRESULT DefaultHandler(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        return ::DefWindowProcW(handle_, message, wParam, lParam);
    }

  private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static ATOM RegisterFormClass() noexcept;
    void Forget() noexcept;
    void RunOnUnload() noexcept;
    [[nodiscard]] bool PassesGate(UINT message, WPARAM wParam, LPARAM lParam) const noexcept;

    /// A window procedure gets no other way to the object: what a window keeps itself, another program can write.
    static inline std::vector<Form*> loaded_;
    HWND handle_ = nullptr;
    UINT toldDpi_ = 0; ///< 0: it has not changed since the form was loaded
    bool unloading_ = false;
};

} // namespace vextrel
