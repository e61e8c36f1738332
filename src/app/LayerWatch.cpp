#include "app/LayerWatch.h"

#include "ui/InputBox.h"
#include "win32/InputState.h"
#include "win32/LockedText.h"
#include "win32/TopLevelWindow.h"

namespace vextrel {

namespace {

/// What a control holds, as one text that can be compared: an edit's text, a slider's position, "False" for a button.
/// Anything else matches nothing.
bool HoldsText(HWND control, std::wstring_view text) {
    wchar_t className[64]{};
    ::GetClassNameW(control, className, static_cast<int>(std::size(className)));
    if (::lstrcmpiW(className, WC_EDITW) == 0) {
        LockedText held;
        held.SetSize(static_cast<std::size_t>(
            Tell(control, WM_GETTEXT, SecretText::capacity + 1, reinterpret_cast<LPARAM>(held.Buffer()))));
        return held.View() == text;
    }
    if (::lstrcmpiW(className, TRACKBAR_CLASSW) == 0) {
        return std::to_wstring(Tell(control, TBM_GETPOS, 0, 0)) == text;
    }
    return ::lstrcmpiW(className, WC_BUTTONW) == 0 && text == L"False";
}

} // namespace

void LayerWatch::SetCoverTransparency(std::int16_t value) noexcept {
    coverTransparency_ = value;
    cover_.SetAlpha(AlphaForLayer(value));
}

void LayerWatch::FormMove() noexcept {
    // The system hides and shows what a window owns not in every way in which that can be minimised and restored.
    const bool shown = form_.IsVisible() && !::IsIconic(form_.Handle());
    if (shown) {
        cover_.Place(form_.KeyAreaOnScreen());
    }
    cover_.Show(shown);
}

bool LayerWatch::ToggleOpacity() noexcept {
    const LayerCommandOutcome outcome = RunLayerCommand(command_, coverTransparency_);
    command_ = outcome.state;
    marked_ = outcome.marked;
    SetCoverTransparency(outcome.coverTransparency);
    if (outcome.stuck) {
        form_.ShowNotice(L"The layer keeps its value until the next start");
    }
    return marked_;
}

void LayerWatch::AskOpacity() {
    InputBox question(L"Transparency Value", L"Give a new protective layer transparency value (0-255).", L"100");
    const std::optional<std::wstring> answer = question.Ask(operations_, form_.Handle());
    command_ = TakeLayerAnswer(command_, answer ? ParseLayerAnswer(*answer) : std::nullopt);
    if (const std::optional<std::int16_t> opacity = LayerOpacity(command_)) {
        SetCoverTransparency(*opacity);
    }
}

bool LayerWatch::AreTopmost(bool topmost) const noexcept {
    return IsTopmost(form_.Handle()) == topmost && IsTopmost(cover_.Handle()) == topmost;
}

void LayerWatch::KeepTogether(bool topmost) noexcept {
    const HWND windows[] = {form_.Handle(), cover_.Handle()};
    const auto place = [&] {
        for (const HWND window : windows) {
            SetTopmostAlone(window, topmost);
        }
    };
    place();
    if (!AreTopmost(topmost)) {
        // Wine puts an owner right behind what it owns; behind the only topmost window it is not topmost itself.
        ::SetWindowLongPtrW(cover_.Handle(), GWLP_HWNDPARENT, 0);
        place();
        ::SetWindowLongPtrW(cover_.Handle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(form_.Handle()));
    }
}

void LayerWatch::KeepLayerAbove() noexcept {
    // Windows keeps what a window owns above it. Wine may raise the window alone when it comes to the front, and the
    // clicks would reach the keys without the layer.
    if (cover_.IsVisible() && !IsAbove(cover_.Handle(), form_.Handle())) {
        RaiseAlone(cover_.Handle(), IsTopmost(form_.Handle()));
    }
}

void LayerWatch::CheckForeground() {
    FormMove();
    const HWND front = ::GetForegroundWindow();
    if (front == form_.Handle() || front == cover_.Handle()) {
        KeepLayerAbove();
        if (away_) {
            if (FocusIsWanted()) {
                form_.FocusVisibleBox();
            }
            SetCoverTransparency(marked_ ? visibleCoverTransparency : defaultCoverTransparency);
            away_ = false;
        }
    } else if (front != nullptr && !IsOurs(front) && !std::exchange(away_, true)) {
        // Not while the foreground changes hands, or over a window of our own: that is neither away nor back.
        SetCoverTransparency(coverTransparencyAway);
    }
}

bool LayerWatch::FocusIsWanted() const {
    if (IsAnyMouseButtonDown() || WasPrimaryButtonDown()) {
        return false;
    }
    LockedText masked;
    LockedText plain;
    form_.txtPassword().ReadText(masked);
    form_.txtText().ReadText(plain);
    const HWND active = form_.ActiveControl();
    // Told apart by what they hold, not by which they are.
    return !HoldsText(active, masked.View()) && !HoldsText(active, plain.View());
}

} // namespace vextrel
