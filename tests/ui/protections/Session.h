#pragma once

#include "core/ids.h"
#include "driver/App.h"

namespace vextrel::driver {

/// Until it stays there: a window manager may change its mind, and the mouse is let go of whenever the front changes.
inline void BringToFront(HWND window) {
    Await("the window stays in front", [window, seen = 0]() mutable {
        seen = GetForegroundWindow() == window ? seen + 1 : 0;
        if (seen == 0) {
            SetForegroundWindow(window);
        }
        return seen == 15;
    });
}

/// What the tests of the protections ask of the running program.
class Session : public App {
  public:
    explicit Session(const Sandbox& sandbox)
        : App(sandbox) {
        Await("the layer is shown", [this] { return Layer() != nullptr; });
        BringToFront(Main());
        AwaitLayerAlpha(5); // it has noticed: until then clicks fall through to the keys
        Await("the layer lies above the keys", [this] { return WindowFromPoint(CentreOf(Key(1))) == Layer(); });
    }

    [[nodiscard]] HWND Key(int number) const { return Control(ids::firstKey + number - 1); }
    [[nodiscard]] bool IsPushed(int number) const { return (Ask(Key(number), BM_GETSTATE) & BST_PUSHED) != 0; }
    [[nodiscard]] bool IsMasked() const { return Visible(ids::txtPassword); }
    [[nodiscard]] std::wstring Shown() const { return TextOf(PasswordBox()); }

    void AwaitText(const std::wstring& text) const {
        if (!WaitFor([&] { return Shown() == text; }, Milliseconds(5000))) {
            throw Failure("the box shows " + Narrow(Shown()) + ", not " + Narrow(text));
        }
    }
    void AwaitLength(std::size_t length) const {
        Await(
            "the box holds " + std::to_string(length), [&] { return Shown().size() == length; }, Milliseconds(5000));
    }
    void Mask(bool masked) const {
        if (IsMasked() != masked) {
            Command(ids::mnuViewPasswordMask);
            Await("the other box is shown", [&] { return IsMasked() == masked; });
        }
    }
    /// Empties the password and shows one of the views.
    void Restart(bool masked) const {
        Command(ids::toolClear);
        AwaitLength(0);
        Mask(masked);
    }
    /// What the program holds: unmasking shows it.
    [[nodiscard]] std::wstring Password() const {
        Mask(true);
        Mask(false);
        return Shown();
    }
    void Select(int start, int end) const { Ask(PasswordBox(), EM_SETSEL, static_cast<WPARAM>(start), end); }
    /// Which of its windows has the focus, the mouse and the like.
    [[nodiscard]] GUITHREADINFO Windows() const {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(Main(), nullptr), &info);
        return info;
    }
    [[nodiscard]] HWND Focus() const { return Windows().hwndFocus; }

    /// The layer's opacity; -1 when it has none.
    [[nodiscard]] int LayerAlpha() const {
        BYTE alpha = 0;
        DWORD flags = 0;
        return GetLayeredWindowAttributes(Layer(), nullptr, &alpha, &flags) != FALSE ? alpha : -1;
    }
    void AwaitLayerAlpha(int alpha) const {
        Await("the layer's opacity is " + std::to_string(alpha), [&] { return LayerAlpha() == alpha; });
    }
};

/// A press or a release of any mouse button where the pointer stands.
inline void SendButton(DWORD flags, DWORD data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    Check(SendInput(1, &input, sizeof input) == 1, "SendInput");
}

} // namespace vextrel::driver
