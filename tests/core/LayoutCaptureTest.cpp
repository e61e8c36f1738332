#include "core/LayoutCapture.h"

#include "core/Error.h"

#include <gtest/gtest.h>

#include <map>

#include <set>

namespace vextrel {
namespace {

constexpr std::uint8_t shiftKey = 16;
constexpr std::uint8_t capsLockKey = 20;
constexpr std::uint8_t deadKey = 192; // slot 0

/// A keyboard whose keys write their code in decimal, "^" before it with Shift; letters follow Caps Lock, too.
class FakeKeyboard final : public CaptureDevice {
  public:
    int keysUntilFocusIsLost = 1000000;
    int keysUntilUserHoldsShift = 1000000;
    std::uint8_t silentKey = 0; ///< its release never comes
    bool capsLock = false;
    bool shiftEndsCapsLock = false;
    bool ctrlIsHeld = false;
    PhysicalModifiers held;
    std::set<std::uint8_t> down;
    int pressedWithoutFocus = 0;
    int presses = 0;
    int timesGivenFocus = 0;

    void GiveFocus() noexcept override { ++timesGivenFocus; }
    void ProcessMessages() noexcept override {}
    CaptureResult Readiness() noexcept override {
        if (ctrlIsHeld) {
            return CaptureResult::ModifierHeld;
        }
        return HasFocus() ? CaptureResult::Done : CaptureResult::LostFocus;
    }
    void PressDown(std::uint8_t virtualKey) noexcept override {
        ++presses;
        pressedWithoutFocus += HasFocus() ? 0 : 1;
        --keysUntilFocusIsLost;
        --keysUntilUserHoldsShift;
        down.insert(virtualKey);
        if (virtualKey == capsLockKey) {
            capsLock = !capsLock || shiftEndsCapsLock;
        } else if (virtualKey == shiftKey) {
            capsLock = capsLock && !shiftEndsCapsLock;
        } else if (virtualKey == deadKey) {
            mark_ = true;
        } else {
            const bool isLetter = virtualKey >= 65 && virtualKey <= 90;
            const bool upper = down.contains(shiftKey) != (isLetter && capsLock);
            text_ += std::wstring(mark_ ? L"~" : L"") + (upper ? L"^" : L"") + std::to_wstring(virtualKey);
            mark_ = false;
        }
    }
    void LetGo(std::uint8_t virtualKey) noexcept override { down.erase(virtualKey); }
    CaptureResult AwaitRelease(std::uint8_t virtualKey) noexcept override {
        return virtualKey == silentKey ? CaptureResult::NoAnswer : CaptureResult::Done;
    }
    void ForgetDeadKey() noexcept override { mark_ = false; }
    PhysicalModifiers Held() noexcept override {
        return {.capsLock = held.capsLock, .shift = held.shift || keysUntilUserHoldsShift <= 0};
    }
    /// A tap whose release never comes is not seen either.
    bool IsCapsLockToggled() noexcept override { return capsLock || silentKey == capsLockKey; }
    std::wstring TakeText() override { return std::exchange(text_, {}); }

  private:
    [[nodiscard]] bool HasFocus() const noexcept { return keysUntilFocusIsLost > 0; }
    std::wstring text_;
    bool mark_ = false;
};

constexpr std::size_t slotOfQ = 13;

TEST(LayoutCapture, EveryKeyGetsItsOwnTwoCaptionsAndADeadKeyNone) {
    for (const bool capsLock : {false, true}) {
        for (const bool shiftEndsCapsLock : {false, true}) {
            FakeKeyboard keyboard;
            keyboard.capsLock = capsLock;
            keyboard.shiftEndsCapsLock = shiftEndsCapsLock;
            KeyCaptions captions;
            ASSERT_EQ(CaptureAllKeys(keyboard, captions), CaptureResult::Done);
            for (std::size_t slot = 0; slot < captureKeyCodes.size(); ++slot) {
                const std::uint8_t key = captureKeyCodes[slot];
                const std::wstring code = key == deadKey ? L"" : std::to_wstring(key);
                EXPECT_EQ(captions.At(slot).lower, code) << "slot " << slot << ", Caps Lock " << capsLock;
                EXPECT_EQ(captions.At(slot).upper, key == deadKey ? L"" : L"^" + code) << "slot " << slot;
            }
            EXPECT_EQ(keyboard.capsLock, capsLock);
            EXPECT_TRUE(keyboard.down.empty());
        }
    }
}

TEST(LayoutCapture, LosingTheFocusAtAnyKeyStopsItThereAndLeavesNothingPressed) {
    // Caps Lock, then per slot: the key, Shift, the key again. After the last, only Caps Lock is left to put back.
    constexpr int allPresses = 1 + 47 * 3;
    for (int until = 0; until < allPresses; ++until) {
        FakeKeyboard keyboard;
        keyboard.keysUntilFocusIsLost = until;
        keyboard.capsLock = true;
        KeyCaptions captions;
        const KeyCaptions before = captions;
        EXPECT_EQ(CaptureAllKeys(keyboard, captions), CaptureResult::LostFocus) << until;
        const auto captured = static_cast<std::size_t>((until > 0 ? until - 1 : 0) / 3);
        for (std::size_t slot = 0; slot < KeyCaptions::slotCount; ++slot) {
            EXPECT_EQ(captions.At(slot) == before.At(slot), slot >= captured) << "slot " << slot << " of " << until;
        }
        EXPECT_TRUE(keyboard.down.empty()) << until;
        EXPECT_TRUE(keyboard.capsLock) << until;
        EXPECT_EQ(keyboard.pressedWithoutFocus, until > 0 ? 1 : 0) << "nothing but Caps Lock's way back; " << until;
    }
}

TEST(LayoutCapture, WhatStandsInTheWayIsNamed) {
    constexpr int never = 1000000;
    const struct {
        bool ctrlIsHeld;
        bool capsLock;
        int keysUntilUserHoldsShift;
        std::uint8_t silentKey;
        CaptureResult expected;
        int presses;
    } rows[] = {
        {true, false, never, 0, CaptureResult::ModifierHeld, 0},
        {false, false, 0, 0, CaptureResult::ModifierHeld, 0},
        {false, true, 0, 0, CaptureResult::ModifierHeld, 0},           // not even Caps Lock
        {false, false, 4, 0, CaptureResult::ModifierHeld, 6},          // at slot 2, the next
        {false, false, never, 49, CaptureResult::NoAnswer, 4},         // slot 1's plain press
        {false, false, never, shiftKey, CaptureResult::NoAnswer, 3},   // slot 0's shifted press
        {false, true, never, capsLockKey, CaptureResult::NoAnswer, 2}, // Caps Lock off, and on again
    };
    for (const auto& row : rows) {
        FakeKeyboard keyboard;
        keyboard.ctrlIsHeld = row.ctrlIsHeld;
        keyboard.keysUntilUserHoldsShift = row.keysUntilUserHoldsShift;
        keyboard.silentKey = row.silentKey;
        keyboard.capsLock = row.capsLock;
        KeyCaptions captions;
        EXPECT_EQ(CaptureAllKeys(keyboard, captions), row.expected);
        EXPECT_EQ(keyboard.presses, row.presses);
        EXPECT_EQ(keyboard.capsLock, row.capsLock);
        EXPECT_TRUE(keyboard.down.empty());
    }
}

TEST(LayoutCapture, AHeldCapsLockSwapsTheCaptionsBack) {
    FakeKeyboard keyboard;
    KeyCaptions captions;
    keyboard.held = {.capsLock = true};
    keyboard.capsLock = true;
    ASSERT_EQ(GetCommandButtonCaptions(keyboard, 81, slotOfQ, captions), CaptureResult::Done);
    EXPECT_EQ(captions.At(slotOfQ).lower, L"81");
    EXPECT_EQ(captions.At(slotOfQ).upper, L"^81");
}

TEST(LayoutCapture, ASlotBeyondTheTableIsAnErrorBeforeAnyKey) {
    FakeKeyboard keyboard;
    KeyCaptions captions;
    EXPECT_THROW(static_cast<void>(GetCommandButtonCaptions(keyboard, 81, KeyCaptions::slotCount, captions)), Error);
    EXPECT_EQ(keyboard.presses, 0);
}

TEST(LayoutCapture, EachSlotHasTheKeyThatCarriesItsEnglishCharacter) {
    // Letters and digits have their capital's code; the rest are the OEM keys of a US keyboard.
    const std::map<wchar_t, int> oemKeys = {{L'`', 192}, {L'-', 189},  {L'=', 187}, {L'[', 219},
                                            {L']', 221}, {L'\\', 220}, {L';', 186}, {L'\'', 222},
                                            {L',', 188}, {L'.', 190},  {L'/', 191}};
    const KeyCaptions english;
    for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
        const KeyCaption& key = english.At(slot);
        const wchar_t lower = key.lower.at(0);
        const wchar_t capital = lower >= L'a' && lower <= L'z' ? key.upper.at(0) : lower;
        const int code = oemKeys.contains(lower) ? oemKeys.at(lower) : static_cast<int>(capital);
        EXPECT_EQ(captureKeyCodes.at(slot), code) << slot;
    }
}

TEST(LayoutCapture, OneModifierInvertsWhatAPressGives) {
    for (unsigned bits = 0; bits < 4; ++bits) {
        const PhysicalModifiers held{(bits & 1) != 0, (bits & 2) != 0};
        FakeKeyboard keyboard;
        keyboard.held = held;
        KeyCaptions captions;
        ASSERT_EQ(GetCommandButtonCaptions(keyboard, 81, slotOfQ, captions), CaptureResult::Done);
        const bool inverts = held.capsLock != held.shift;
        EXPECT_EQ(captions.At(slotOfQ).lower, inverts ? L"^81" : L"81") << bits;
        EXPECT_EQ(captions.At(slotOfQ).upper, inverts ? L"81" : L"^81") << bits;
        EXPECT_EQ(keyboard.timesGivenFocus, bits == 0 ? 3 : 2) << "once a press, and once more with nothing held";
    }
}

} // namespace
} // namespace vextrel
