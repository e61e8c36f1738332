#include "core/LayoutCapture.h"

#include "core/Pinned.h"

namespace vextrel {

namespace {

constexpr std::uint8_t shiftKey = 16;
constexpr std::uint8_t capsLockKey = 20;

/// A key that is held for as long as this lives, if it could be pressed at all.
class PressedKey : private Pinned {
  public:
    PressedKey(CaptureDevice& device, std::uint8_t virtualKey) noexcept
        : device_(device)
        , virtualKey_(virtualKey)
        , readiness_(device.Readiness()) {
        if (readiness_ == CaptureResult::Done) {
            device_.PressDown(virtualKey_);
        }
    }
    ~PressedKey() { Release(); }

    void Release() noexcept {
        if (std::exchange(readiness_, CaptureResult::LostFocus) == CaptureResult::Done) {
            device_.LetGo(virtualKey_);
        }
    }
    [[nodiscard]] CaptureResult Readiness() const noexcept { return readiness_; }

  private:
    CaptureDevice& device_;
    std::uint8_t virtualKey_;
    CaptureResult readiness_;
};

struct TapOutcome {
    CaptureResult result;
    bool wasPressed; ///< the system has the key, whether or not it arrived
};

/// Presses and releases a key and waits until that has arrived.
TapOutcome Tap(CaptureDevice& device, std::uint8_t virtualKey) noexcept {
    PressedKey key(device, virtualKey);
    if (key.Readiness() != CaptureResult::Done) {
        return {key.Readiness(), false};
    }
    device.ProcessMessages();
    key.Release();
    return {device.AwaitRelease(virtualKey), true};
}

/// Switches a toggled Caps Lock off and, at the end, on again. That one tap goes wherever the focus is by then: it
/// types nothing, and the user's keyboard must be left as it was.
class CapsLockOff : private Pinned {
  public:
    explicit CapsLockOff(CaptureDevice& device) noexcept
        : device_(device) {
        device_.GiveFocus();
        device_.ProcessMessages();
        wasOn_ = device_.IsCapsLockToggled();
        // Layouts with a shift lock in its place, German for one, keep it on until Shift is pressed.
        for (const std::uint8_t key : {capsLockKey, shiftKey}) {
            if (result_ == CaptureResult::Done && device_.IsCapsLockToggled()) {
                const TapOutcome tap = Tap(device_, key);
                result_ = tap.result;
                tapGotLost_ = tap.wasPressed && tap.result != CaptureResult::Done;
            }
        }
    }
    ~CapsLockOff() {
        // A tap that went elsewhere has switched it off, but this thread does not see that. (A hook that kept the tap
        // from the system keeps this one, too.)
        if (wasOn_ && (tapGotLost_ || !device_.IsCapsLockToggled())) {
            device_.PressDown(capsLockKey);
            device_.LetGo(capsLockKey);
            device_.ProcessMessages();
        }
    }

    [[nodiscard]] CaptureResult Result() const noexcept { return result_; }

  private:
    CaptureDevice& device_;
    bool wasOn_ = false;
    bool tapGotLost_ = false;
    CaptureResult result_ = CaptureResult::Done;
};

CaptureResult Press(CaptureDevice& device, std::uint8_t virtualKey, bool withShift, std::wstring& text) {
    device.GiveFocus();
    device.ProcessMessages();
    std::optional<PressedKey> shift;
    if (withShift && shift.emplace(device, shiftKey).Readiness() != CaptureResult::Done) {
        return shift->Readiness();
    }
    const CaptureResult result = Tap(device, virtualKey).result;
    text = device.TakeText();
    device.ForgetDeadKey();
    if (!shift || result != CaptureResult::Done) {
        return result;
    }
    // Waited for, so that no box but this one learns of it.
    shift->Release();
    return device.AwaitRelease(shiftKey);
}

} // namespace

CaptureResult GetCommandButtonCaptions(CaptureDevice& device, std::uint8_t virtualKey, std::size_t slot,
                                       KeyCaptions& captions) {
    KeyCaption& caption = captions.At(slot);
    const PhysicalModifiers held = device.Held();
    std::wstring plain;
    std::wstring shifted;
    if (!held.shift && !held.capsLock) {
        device.GiveFocus();
    }
    CaptureResult result = Press(device, virtualKey, false, plain);
    if (result == CaptureResult::Done) {
        result = Press(device, virtualKey, true, shifted);
    }
    if (result == CaptureResult::Done) {
        // Shift and Caps Lock together cancel each other out.
        caption.lower = std::move(FoldedShift(held) ? shifted : plain);
        caption.upper = std::move(FoldedShift(held) ? plain : shifted);
    }
    return result;
}

CaptureResult CaptureAllKeys(CaptureDevice& device, KeyCaptions& captions) {
    if (device.Held().shift) {
        return CaptureResult::ModifierHeld;
    }
    const CapsLockOff capsLock(device);
    CaptureResult result = capsLock.Result();
    static_cast<void>(device.TakeText());
    device.ForgetDeadKey();
    for (std::size_t slot = 0; slot < captureKeyCodes.size() && result == CaptureResult::Done; ++slot) {
        // Between two keys our own Shift is up: what is held then is the user's, and our next release would end it.
        result = device.Held().shift ? CaptureResult::ModifierHeld
                                     : GetCommandButtonCaptions(device, captureKeyCodes[slot], slot, captions);
    }
    return result;
}

} // namespace vextrel
