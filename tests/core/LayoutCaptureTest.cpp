#include "core/LayoutCapture.h"
#include "core/Error.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

using namespace vextrel;

namespace {

constexpr std::uint8_t shiftKey = 16, capsLockKey = 20, deadKey = 50; // of slot 2
constexpr int never = 1000000;

/// A keyboard whose keys write their code in decimal, "^" before it with Shift; letters follow Caps Lock, too. Before
/// the capture a dead key waits, and the box holds a text.
struct FakeKeyboard final : CaptureDevice {
    struct Setup {
        bool capsLock = false, shiftEndsCapsLock = false;
        std::uint8_t silentKey = 0; ///< its release never comes
        int keysUntilFocusIsLost = never, keysUntilUserHoldsShift = never;
        PhysicalModifiers held = {};
    };
    explicit FakeKeyboard(const Setup& setup)
        : s(setup) {}
    Setup s;
    std::set<std::uint8_t> down;
    int presses = 0, timesGivenFocus = 0;
    int pressedWithoutFocus = 0; ///< or before the focus had come
    bool focusIsComing = false;
    std::wstring text = L"left over", mark = L"~";

    void GiveFocus() noexcept override {
        ++timesGivenFocus;
        focusIsComing = true;
    }
    void ProcessMessages() noexcept override { focusIsComing = false; }
    CaptureResult Readiness() noexcept override {
        return presses < s.keysUntilFocusIsLost ? CaptureResult::Done : CaptureResult::LostFocus;
    }
    void PressDown(std::uint8_t virtualKey) noexcept override {
        pressedWithoutFocus += presses++ < s.keysUntilFocusIsLost && !focusIsComing ? 0 : 1;
        down.insert(virtualKey);
        if (virtualKey == capsLockKey) {
            s.capsLock = !s.capsLock || s.shiftEndsCapsLock;
        } else if (virtualKey == shiftKey) {
            s.capsLock = s.capsLock && !s.shiftEndsCapsLock;
        } else if (virtualKey == deadKey) {
            mark = L"~";
        } else {
            const bool isLetter = virtualKey >= 65 && virtualKey <= 90;
            const bool upper = down.contains(shiftKey) != (isLetter && s.capsLock);
            text += std::exchange(mark, L"") + (upper ? L"^" : L"") + std::to_wstring(virtualKey);
        }
    }
    void LetGo(std::uint8_t virtualKey) noexcept override { down.erase(virtualKey); }
    CaptureResult AwaitRelease(std::uint8_t virtualKey) noexcept override {
        return virtualKey == s.silentKey ? CaptureResult::NoAnswer : CaptureResult::Done;
    }
    void ForgetDeadKey() noexcept override { mark.clear(); }
    PhysicalModifiers Held() noexcept override {
        return {s.held.capsLock, s.held.shift || presses >= s.keysUntilUserHoldsShift};
    }
    /// A tap whose release never comes is not seen either.
    bool IsCapsLockToggled() noexcept override { return s.capsLock || s.silentKey == capsLockKey; }
    std::wstring TakeText() override { return std::exchange(text, {}); }
};

/// Captures, which finds as many captions as there are, leaves the others alone, and nothing pressed or switched.
CaptureResult Captured(FakeKeyboard& keyboard, int captions) {
    const bool capsLock = keyboard.s.capsLock;
    KeyCaptions read, expected;
    for (std::size_t slot = 0; slot < static_cast<std::size_t>(captions); ++slot) {
        const std::wstring code = std::to_wstring(captureKeyCodes[slot]);
        expected.At(slot) = captureKeyCodes[slot] == deadKey ? KeyCaption{} : KeyCaption{code, L"^" + code, {}};
    }
    const CaptureResult result = CaptureAllKeys(keyboard, read);
    EXPECT_EQ(read, expected);
    EXPECT_TRUE(keyboard.down.empty() && keyboard.s.capsLock == capsLock);
    return result;
}

TEST(LayoutCapture, EveryKeyGetsItsTwoCaptionsUntilTheFocusIsLostAndNothingStaysPressed) {
    // How many presses end Caps Lock; then there are, per slot: the key, Shift, the key again.
    const std::tuple<bool, bool, int> rows[] = {{false, false, 0}, {false, true, 0}, {true, false, 1}, {true, true, 2}};
    for (const auto& [capsLock, shiftEndsCapsLock, before] : rows) {
        for (int until = 0; until <= before + 47 * 3; ++until) {
            SCOPED_TRACE(testing::Message() << before << ", then " << until - before);
            FakeKeyboard keyboard(
                {.capsLock = capsLock, .shiftEndsCapsLock = shiftEndsCapsLock, .keysUntilFocusIsLost = until});
            EXPECT_EQ(Captured(keyboard, std::max(0, until - before) / 3),
                      until < before + 47 * 3 ? CaptureResult::LostFocus : CaptureResult::Done);
            EXPECT_EQ(keyboard.pressedWithoutFocus, capsLock && until >= before ? 1 : 0) << "Caps Lock's way back";
        }
    }
}

TEST(LayoutCapture, WhatStandsInTheWayIsNamed) {
    using enum CaptureResult;
    // What it is; how far the capture comes: captions, presses.
    const std::tuple<const char*, FakeKeyboard::Setup, CaptureResult, int, int> rows[] = {
        {"Shift", {.capsLock = true, .keysUntilUserHoldsShift = 0}, ModifierHeld, 0, 0},
        {"Shift at slot 2, the next", {.keysUntilUserHoldsShift = 4}, ModifierHeld, 2, 6},
        {"slot 1's plain press", {.silentKey = 49}, NoAnswer, 1, 4},
        {"slot 0's shifted press", {.silentKey = shiftKey}, NoAnswer, 0, 3},
        {"Caps Lock off, and on again", {.capsLock = true, .silentKey = capsLockKey}, NoAnswer, 0, 2}};
    for (const auto& [what, setup, result, captions, presses] : rows) {
        FakeKeyboard keyboard(setup);
        EXPECT_EQ(Captured(keyboard, captions), result) << what;
        EXPECT_EQ(keyboard.presses, presses) << what;
    }
}

TEST(LayoutCapture, OneModifierInvertsWhatAPressGives) {
    KeyCaptions captions;
    for (unsigned bits = 0; bits < 8; ++bits) { // Caps Lock held, Shift held, Caps Lock toggled
        FakeKeyboard keyboard({.capsLock = (bits & 4) != 0, .held = {(bits & 1) != 0, (bits & 2) != 0}});
        keyboard.text = keyboard.mark = L"";
        ASSERT_EQ(GetCommandButtonCaptions(keyboard, 81, 13, captions), CaptureResult::Done);
        const bool inverts = ((bits ^ bits >> 1 ^ bits >> 2) & 1) != 0;
        EXPECT_EQ(captions.At(13).lower + L" " + captions.At(13).upper, inverts ? L"^81 81" : L"81 ^81") << bits;
        EXPECT_EQ(keyboard.timesGivenFocus, bits % 4 == 0 ? 3 : 2) << "once a press, and once more with nothing held";
    }
}

} // namespace
