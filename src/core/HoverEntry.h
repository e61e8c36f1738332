#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vextrel {

/// Where the pointer is, and since when. Where windows appear or move under it, the system tells of moves that nobody
/// made. A place is packed into one number; times are in milliseconds and wrap.
class PointerRest {
  public:
    /// @return whether it stood there: it may have been seen before its move was told of. @param bySystem whether the
    /// system says that it made the move itself.
    bool Seen(std::uint32_t place, std::uint32_t timeMs, bool bySystem) noexcept {
        if (std::exchange(place_, place) == place) {
            return bySystem || static_cast<std::int32_t>(timeMs - sinceMs_) > 0;
        }
        sinceMs_ = timeMs;
        return false;
    }

  private:
    std::optional<std::uint32_t> place_;
    std::uint32_t sinceMs_ = 0;
};

/// Hover entry: resting the pointer on a key for the delay enters it, once per arrival. Keys are told apart by their
/// caption, so the two Shift keys count as one. Decides; the shell owns the timer and obeys.
class HoverEntry {
  public:
    /// What the shell does with the hover timer.
    enum class TimerOrder {
        Leave,   ///< as it is
        Run,     ///< start it when it is stopped or its interval changed; a running countdown goes on
        Restart, ///< count the full delay from now
        Stop,
    };

    /// Whether hover entry is switched on (TimerEnabled). Switching it on or off orders the timer likewise.
    [[nodiscard]] bool IsEnabled() const noexcept { return enabled_; }
    [[nodiscard]] TimerOrder SetEnabled(bool enabled) noexcept {
        enabled_ = enabled;
        currentButton_.reset(); // in the standard mode it is the key that was pressed last
        return enabled ? TimerOrder::Run : TimerOrder::Stop;
    }

    /// The key under the pointer, armed for entry (CurrentButton); none at the start and after it was cleared.
    [[nodiscard]] std::optional<int> CurrentButton() const noexcept { return currentButton_; }
    void ClearCurrentButton() noexcept { currentButton_.reset(); }

    /// The pointer moved over a key. @param current the caption that CurrentButton shows now, empty if none.
    /// @param stood whether it is the key that came under the pointer: no arrival, and what was armed there is gone.
    [[nodiscard]] TimerOrder MoveOverKey(int button, std::wstring_view caption, std::wstring_view current, bool stood) {
        if (stood) {
            currentButton_ = current == caption ? currentButton_ : std::nullopt;
            return TimerOrder::Leave;
        }
        if (lastCaption_ && *lastCaption_ != caption) {
            lastCaption_.reset();
        }
        const bool arrived = !currentButton_ || current != caption;
        if (arrived) {
            currentButton_ = button;
        }
        if (!enabled_) {
            return TimerOrder::Leave;
        }
        // Running on within a key is what lets a trembling hand enter it.
        return arrived ? TimerOrder::Restart : TimerOrder::Run;
    }

    /// The pointer moved over the background: hover entry pauses until the next move over a key, without being
    /// switched off.
    [[nodiscard]] TimerOrder LeaveKeys() noexcept { return TimerOrder::Stop; }

    /// A tick of the timer. @return the key to enter, if it has not been entered since the pointer came to it.
    /// @param captionOfCurrent the caption that CurrentButton shows now.
    [[nodiscard]] std::optional<int> Tick(std::wstring_view captionOfCurrent) const {
        // With nothing entered yet, a key without a caption counts as entered: hover entry never enters such a key.
        const std::wstring_view last = lastCaption_ ? std::wstring_view(*lastCaption_) : std::wstring_view();
        if (!enabled_ || captionOfCurrent == last) {
            return std::nullopt;
        }
        return currentButton_;
    }

    /// A key was entered, by a tick or a click. @param caption what it shows after that.
    void Entered(int button, std::wstring_view caption) {
        if (enabled_) {
            currentButton_ = button;
            lastCaption_ = caption;
        }
    }

    /// After any caption refresh that is no arrival (physical Shift under a resting pointer): if the current key was
    /// the one entered last, its new caption is remembered in place of the old one.
    /// @param before, after the caption of CurrentButton before and after the refresh.
    void CaptionRefreshed(std::wstring_view before, std::wstring_view after) {
        if (currentButton_ && lastCaption_ && *lastCaption_ == before) {
            lastCaption_ = after;
        }
    }

  private:
    bool enabled_ = false;
    std::optional<int> currentButton_;
    /// LastHoverCaption: the caption of the key last entered, none from the arrival on another key on. Apart from none,
    /// it may be empty: a key whose caption Shift has just emptied is not to be entered again when Shift goes up.
    std::optional<std::wstring> lastCaption_;
};

} // namespace vextrel
