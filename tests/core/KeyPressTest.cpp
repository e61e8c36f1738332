#include "core/TextEdit.h"

#include "Throws.h"
#include "core/KeyTable.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

constexpr auto masked = PasswordBoxView::Masked;
constexpr auto plain = PasswordBoxView::Plain;
constexpr int letterKey = 31;

// What a key does to box and password the random walk compares with a model.

TEST(KeyPress, ModifiersChangeAsTheKeysSay) {
    using M = Modifiers; // shift, caps, AltGr, latched, physical
    const struct {
        const char* name;
        int button;
        M before;
        M after;
        bool leftover = false;
    } rows[] = {
        {"first Shift", keys::leftShift, {false, false, false, false}, {true, false, false, true}},
        {"second Shift", keys::rightShift, {true, false, false, true}, {false, false, false, true}},
        {"over the physical one", keys::rightShift, {true, false, false, false, true}, {false, false, false, true}},
        {"character, Shift held", letterKey, {true, false, false, true, true}, {false, false, false, true, true}},
        {"Caps Lock on", keys::capsLock, {true, false, false, true}, {true, true, false, true}},
        {"Caps Lock off", keys::capsLock, {false, true, false, false}, {false, false, false, false}},
        {"character, never latched", letterKey, {true, false, false, false}, {true, false, false, false}},
        {"character releases Shift", letterKey, {true, true, false, true}, {false, true, false, true}},
        {"space releases Shift", keys::space, {true, false, false, true}, {false, false, false, true}},
        {"character, Shift up", letterKey, {false, true, false, true}, {false, true, false, true}},
        {"Backspace keeps Shift", keys::backspace, {true, false, false, true}, {true, false, false, true}},
        {"Tab keeps Shift", keys::tab, {true, false, false, true}, {true, false, false, true}},
        {"Enter keeps Shift", keys::enter, {true, false, false, true}, {true, false, false, true}},
        {"inert key", 54, {true, false, false, true}, {true, false, false, true}},
        {"leftover", keys::messageLeftover, {true, false, false, true}, {true, false, false, true}, true},
    };
    for (const auto& row : rows) {
        const KeyPressOutcome outcome = PressKey(row.button, L"x", BoxState{}, row.before);
        EXPECT_EQ(outcome.modifiers, row.after) << row.name;
        EXPECT_EQ(outcome.showLeftover, row.leftover) << row.name;
    }
}

TEST(KeyPress, SixteenBitSumsOverflowBeforeAnythingChanges) {
    constexpr std::size_t full = SecretText::capacity;
    const struct {
        const char* name;
        const wchar_t* caption;
        BoxState box;
        bool overflows;
    } rows[] = {
        {"last caret that has a next one", L"x", {plain, {32766, 0}, full - 1, L'a', 5}, false},
        {"caret at the last position", L"x", {plain, {32767, 0}, full, L'a', 5}, true},
        {"selection to the last position", L"x", {plain, {32000, 767}, full, L'a', 5}, true},
        {"selection to the one before", L"x", {plain, {32000, 766}, full, L'a', 5}, false},
        {"new caret", L"xy", {masked, {32766, 0}, full - 1, L'*', full - 1}, true},
        {"new length of the box", L"x", {plain, {0, 0}, full, 0, 5}, true},
        {"new length of the password", L"x", {masked, {0, 0}, 5, 0, full}, true},
        {"full, but one is replaced", L"x", {masked, {0, 1}, full, 0, full}, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(
            Throws(ErrorNumber::Overflow, [&] { static_cast<void>(PressKey(letterKey, row.caption, row.box, {})); }),
            row.overflows)
            << row.name;
    }
    for (int button = 1; button <= keyButtonCount; ++button) {
        EXPECT_TRUE(Throws(ErrorNumber::Overflow, [&] {
            static_cast<void>(PressKey(button, L"x", {plain, {32767, 0}, full, L'a', full}, {}));
        })) << button;
    }
}

} // namespace
} // namespace vextrel
