#include "keyboard/HoverEntry.h"

#include "keyboard/KeyTable.h"

#include <gtest/gtest.h>

#include <map>

namespace vextrel {
namespace {

using Order = HoverEntry::TimerOrder;

/// Keys with captions, and the hover entry that watches them.
class HoverEntryTest : public testing::Test {
  protected:
    static constexpr int a = 31;
    static constexpr int b = 48;
    static constexpr int deadKey = 1;

    Order Move(int button) { return hover_.MoveOverKey(button, captions_[button], Current()); }

    /// A tick and, if it enters a key, what the entry does to the captions.
    std::optional<int> Tick(const std::map<int, std::wstring>& refreshed = {}) {
        const std::optional<int> entered = hover_.Tick(Current());
        if (entered) {
            Refresh(refreshed);
            hover_.Entered(Current());
        }
        return entered;
    }

    void Refresh(const std::map<int, std::wstring>& refreshed) {
        const std::wstring before = Current();
        for (const auto& [button, caption] : refreshed) {
            captions_[button] = caption;
        }
        hover_.CaptionRefreshed(before, Current());
    }

    std::wstring Current() { return hover_.CurrentButton() ? captions_[*hover_.CurrentButton()] : std::wstring(); }

    HoverEntry hover_;
    std::map<int, std::wstring> captions_{
        {a, L"a"}, {b, L"b"}, {deadKey, L""}, {keys::leftShift, L"shft"}, {keys::rightShift, L"shft"}};
};

TEST_F(HoverEntryTest, SwitchedOffItOnlyRemembersTheKey) {
    EXPECT_EQ(Tick(), std::nullopt);
    EXPECT_EQ(Move(a), Order::Leave);
    EXPECT_EQ(hover_.CurrentButton(), a);
    EXPECT_EQ(Tick(), std::nullopt);
    EXPECT_EQ(hover_.SetEnabled(true), Order::Run);
    EXPECT_EQ(Tick(), a);
    EXPECT_EQ(hover_.SetEnabled(false), Order::Stop);
}

TEST_F(HoverEntryTest, AKeyIsEnteredOncePerArrival) {
    static_cast<void>(hover_.SetEnabled(true));
    EXPECT_EQ(Tick(), std::nullopt) << "no key yet";
    EXPECT_EQ(Move(a), Order::Restart);
    EXPECT_EQ(Move(a), Order::Run) << "a trembling hand delays nothing";
    EXPECT_EQ(Tick(), a);
    EXPECT_EQ(Move(a), Order::Run);
    EXPECT_EQ(Tick(), std::nullopt);

    EXPECT_EQ(Move(b), Order::Restart);
    EXPECT_EQ(Move(a), Order::Restart);
    EXPECT_EQ(Tick(), a);

    EXPECT_EQ(hover_.LeaveKeys(), Order::Stop);
    EXPECT_TRUE(hover_.IsEnabled()) << "paused, not off";
    EXPECT_EQ(Move(a), Order::Run);
    EXPECT_EQ(Tick(), std::nullopt) << "the background is no other key";

    hover_.ClearCurrentButton();
    EXPECT_EQ(Tick(), std::nullopt);
    EXPECT_EQ(Move(a), Order::Restart);
    EXPECT_EQ(Tick(), std::nullopt);
}

TEST_F(HoverEntryTest, KeysAreToldApartByTheirCaption) {
    static_cast<void>(hover_.SetEnabled(true));
    EXPECT_EQ(Move(keys::leftShift), Order::Restart);
    EXPECT_EQ(Tick({{a, L"A"}, {b, L"B"}}), keys::leftShift);
    EXPECT_EQ(Move(keys::rightShift), Order::Run);
    EXPECT_EQ(Tick(), std::nullopt) << "the other Shift key counts as the same";

    EXPECT_EQ(Move(a), Order::Restart);
    EXPECT_EQ(Tick({{a, L"a"}, {b, L"b"}}), a) << "the entry releases Shift";
    EXPECT_EQ(Move(a), Order::Run);
    EXPECT_EQ(Tick(), std::nullopt);

    EXPECT_EQ(Move(deadKey), Order::Restart);
    EXPECT_EQ(Tick(), std::nullopt) << "no caption, no entry";
}

TEST_F(HoverEntryTest, ACaptionThatChangesUnderARestingPointerIsNoArrival) {
    static_cast<void>(hover_.SetEnabled(true));
    static_cast<void>(Move(a));
    Refresh({{a, L"A"}});
    EXPECT_EQ(Tick(), a) << "not entered before the change, so entered after it";
    for (const wchar_t* caption : {L"a", L"", L"A"}) {
        Refresh({{a, caption}});
        EXPECT_EQ(Tick(), std::nullopt);
        EXPECT_EQ(Move(a), Order::Run);
        EXPECT_EQ(Tick(), std::nullopt);
    }
    static_cast<void>(Move(deadKey));
    Refresh({{deadKey, L"~"}});
    EXPECT_EQ(Tick(), deadKey);
}

} // namespace
} // namespace vextrel
