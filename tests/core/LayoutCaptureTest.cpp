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

TEST(LayoutCapture, EveryKeyGetsItsTwoCaptionsUntilTheFocusIsLostAndNothingStaysPressed) {
    const KeyCaptions english;
    // How many presses end Caps Lock; then there are, per slot: the key, Shift, the key again.
    const std::tuple<bool, bool, int> rows[] = {{false, false, 0}, {false, true, 0}, {true, false, 1}, {true, true, 2}};
    for (const auto& [capsLock, shiftEndsCapsLock, before] : rows) {
        for (int until = 0; until <= before + 47 * 3; ++until) {
            SCOPED_TRACE(testing::Message() << before << ", then " << until - before);
            FakeKeyboard keyboard(
                {.capsLock = capsLock, .shiftEndsCapsLock = shiftEndsCapsLock, .keysUntilFocusIsLost = until});
            KeyCaptions captions;
            EXPECT_EQ(CaptureAllKeys(keyboard, captions),
                      until < before + 47 * 3 ? CaptureResult::LostFocus : CaptureResult::Done);
            for (std::size_t slot = 0; slot < KeyCaptions::slotCount; ++slot) {
                const bool isCaptured = static_cast<int>(slot) < (until - before) / 3;
                const std::wstring code = isCaptured ? std::to_wstring(captureKeyCodes[slot]) : L"";
                const KeyCaption own =
                    code == std::to_wstring(deadKey) ? KeyCaption{} : KeyCaption{code, L"^" + code, {}};
                EXPECT_EQ(captions.At(slot), isCaptured ? own : english.At(slot)) << slot;
            }
            EXPECT_TRUE(keyboard.down.empty() && keyboard.s.capsLock == capsLock);
            EXPECT_EQ(keyboard.pressedWithoutFocus, capsLock && until >= before ? 1 : 0) << "Caps Lock's way back";
        }
    }
}

TEST(LayoutCapture, WhatStandsInTheWayIsNamed) {
    using enum CaptureResult;
    const std::tuple<const char*, FakeKeyboard::Setup, CaptureResult, int> rows[] = {
        {"Shift", {.keysUntilUserHoldsShift = 0}, ModifierHeld, 0},
        {"Shift, before Caps Lock", {.capsLock = true, .keysUntilUserHoldsShift = 0}, ModifierHeld, 0},
        {"Shift at slot 2, the next", {.keysUntilUserHoldsShift = 4}, ModifierHeld, 6},
        {"slot 1's plain press", {.silentKey = 49}, NoAnswer, 4},
        {"slot 0's shifted press", {.silentKey = shiftKey}, NoAnswer, 3},
        {"Caps Lock off, and on again", {.capsLock = true, .silentKey = capsLockKey}, NoAnswer, 2}};
    for (const auto& [what, setup, result, presses] : rows) {
        SCOPED_TRACE(what);
        FakeKeyboard keyboard(setup);
        KeyCaptions captions;
        EXPECT_EQ(CaptureAllKeys(keyboard, captions), result);
        EXPECT_EQ(keyboard.presses, presses);
        EXPECT_TRUE(keyboard.s.capsLock == setup.capsLock && keyboard.down.empty());
    }
}

TEST(LayoutCapture, OneModifierInvertsWhatAPressGives) {
    KeyCaptions captions;
    for (unsigned bits = 0; bits < 8; ++bits) { // Caps Lock held, Shift held, Caps Lock toggled
        FakeKeyboard keyboard({.capsLock = (bits & 4) != 0, .held = {(bits & 1) != 0, (bits & 2) != 0}});
        keyboard.text = keyboard.mark = L"";
        ASSERT_EQ(GetCommandButtonCaptions(keyboard, 81, 13, captions), CaptureResult::Done);
        const bool inverts = ((bits ^ bits >> 1 ^ bits >> 2) & 1) != 0;
        EXPECT_EQ(captions.At(13), inverts ? (KeyCaption{L"^81", L"81", {}}) : (KeyCaption{L"81", L"^81", {}})) << bits;
        EXPECT_EQ(keyboard.timesGivenFocus, bits % 4 == 0 ? 3 : 2) << "once a press, and once more with nothing held";
    }
    FakeKeyboard keyboard({});
    EXPECT_THROW(static_cast<void>(GetCommandButtonCaptions(keyboard, 81, KeyCaptions::slotCount, captions)), Error);
    EXPECT_EQ(keyboard.presses, 0) << "none for a slot that there is not";
}

TEST(LayoutCapture, EachSlotHasTheKeyThatCarriesItsEnglishCharacter) {
    // Letters and digits have their capital's code; the rest are the OEM keys of a US keyboard.
    constexpr std::wstring_view oem = L"`-=[]\\;',./";
    constexpr std::uint8_t oemCodes[] = {192, 189, 187, 219, 221, 220, 186, 222, 188, 190, 191};
    const KeyCaptions english;
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        const std::size_t place = oem.find(english.At(slot).lower);
        const int capital = std::toupper(english.At(slot).lower.at(0));
        EXPECT_EQ(captureKeyCodes.at(slot), place < oem.size() ? oemCodes[place] : capital) << slot;
    }
}

} // namespace
