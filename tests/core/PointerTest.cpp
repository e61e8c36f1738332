#include "core/DragGesture.h"
#include "core/HoverEntry.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace vextrel {
namespace {

using enum DragGesture::Verdict;

/// In a box of 200 x 20 with a threshold of 4: the press's own verdict, then that of a move.
DragGesture Pressed(bool onSelection, Point move, DragGesture::Verdict verdict) {
    DragGesture gesture;
    EXPECT_EQ(gesture.Press({100, 10}, onSelection, {200, 20}, {4, 4}), onSelection ? Hold : Box);
    EXPECT_EQ(gesture.Move(move), verdict) << move.x << ',' << move.y;
    return gesture;
}

TEST(DragGesture, DragsPastTheThresholdFromTheSelectionAndFromFarOutElse) {
    const struct {
        bool onSelection;
        Point move;
        DragGesture::Verdict verdict;
    } rows[] = {{true, {104, 6}, Hold},        {true, {105, 10}, StartDrag},   {true, {100, 15}, StartDrag},
                {false, {199, 19}, Box},       {false, {100, 39}, Box},        {false, {100, 40}, StartDrag},
                {false, {100, -20}, Box},      {false, {100, -21}, StartDrag}, {false, {-20, 10}, Box},
                {false, {-21, 10}, StartDrag}, {false, {219, 10}, Box},        {false, {220, 10}, StartDrag}};
    for (const auto& row : rows) {
        DragGesture gesture = Pressed(row.onSelection, row.move, row.verdict);
        if (row.verdict == StartDrag) {
            EXPECT_EQ(gesture.Move({80, 10}), Box) << "a drag starts once";
        }
        // A click on the selection reaches the box after all; what has just been selected stays so.
        EXPECT_EQ(gesture.Release(), row.verdict == Hold ? Click : Box) << row.move.x << ',' << row.move.y;
        EXPECT_EQ(gesture.Release(), Box);
    }
}

TEST(DragGesture, NothingStartsWithoutAPressOrAfterACancel) {
    EXPECT_EQ(DragGesture().Move({500, 500}), Box);
    DragGesture gesture = Pressed(false, {100, 10}, Box);
    gesture.Cancel();
    EXPECT_EQ(gesture.Move({500, 500}), Box);
}

/// A session with hover entry, told in words: the letter of a key for the pointer's move onto it, "tick", "on", "off",
/// "leave" for the background, "forget" for the key it was on; "=a" for a coming under the resting pointer, "!a" for a
/// click on it; "aA" for a's caption becoming A, "tick:aA,bB" where the entry of a key changes captions. Answers with
/// the timer's order or the key that a tick enters.
std::string Play(const std::string& script) {
    std::map<char, std::wstring> captions{{'a', L"a"}, {'b', L"b"}, {'d', L""}, {'l', L"shft"}, {'r', L"shft"}};
    HoverEntry hover;
    const auto current = [&] { return captions[static_cast<char>(hover.CurrentButton().value_or(0))]; };
    const auto refresh = [&](const std::string& changes) {
        const std::wstring before = current();
        for (std::size_t i = 0; i + 1 < changes.size(); i += 3) {
            const auto caption = static_cast<wchar_t>(changes[i + 1]);
            captions[changes[i]] = std::wstring(caption == L'_' ? 0 : 1, caption);
        }
        hover.CaptionRefreshed(before, current());
    };
    std::string answers;
    const auto order = [&](HoverEntry::TimerOrder given) {
        using enum HoverEntry::TimerOrder;
        answers += given == Leave ? " leave" : given == Run ? " run" : given == Restart ? " restart" : " stop";
    };
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        if (word.starts_with("tick")) {
            const std::optional<int> entered = hover.Tick(current());
            answers.append(" ").push_back(static_cast<char>(entered.value_or('-')));
            if (entered) {
                refresh(word.substr(std::min<std::size_t>(word.size(), 5)));
                hover.Entered(*entered, current());
            }
        } else if (word == "on" || word == "off") {
            order(hover.SetEnabled(word == "on"));
        } else if (word == "leave") {
            order(hover.LeaveKeys());
            EXPECT_TRUE(hover.IsEnabled()) << "paused, not off";
        } else if (word == "forget") {
            hover.ClearCurrentButton();
        } else if (word[0] == '!') {
            refresh(word.substr(std::min<std::size_t>(word.size(), 3)));
            hover.Entered(word[1], captions[word[1]]);
        } else if (word.size() == 1 || word[0] == '=') {
            order(hover.MoveOverKey(word.back(), captions[word.back()], current(), word[0] == '='));
        } else {
            refresh(word);
        }
    }
    return answers;
}

TEST(HoverEntry, AKeyIsEnteredOncePerArrival) {
    EXPECT_EQ(Play("tick a tick on tick a tick off"), " - leave - run - restart a stop") << "nothing is armed when off";
    EXPECT_EQ(Play("on tick a a tick a tick b a tick"), " run - restart run a run - restart restart a")
        << "a trembling hand delays nothing";
    EXPECT_EQ(Play("on a tick leave a tick forget tick a tick"), " run restart a stop run - - restart -")
        << "the background is no other key";
}

TEST(HoverEntry, WhatComesUnderARestingPointerIsNoArrival) {
    EXPECT_EQ(Play("on =a tick a tick"), " run leave - restart a") << "not before the pointer moves";
    EXPECT_EQ(Play("on a =a tick b =a tick b tick"), " run restart leave a restart leave - restart b")
        << "the key that was armed there is gone";
    EXPECT_EQ(Play("on a tick =b =a a tick"), " run restart a leave leave restart -") << "entered once, all the same";
    EXPECT_EQ(Play("on a leave =a"), " run restart stop leave") << "the pause goes on";

    const struct {
        std::uint32_t place, timeMs;
        bool bySystem, stood;
    } sights[] = {{7, 0xFFFFFFF0, true, false}, {7, 0xFFFFFFF0, false, false}, {7, 0xFFFFFFE0, false, false},
                  {7, 0xFFFFFFE0, true, true},  {7, 0xFFFFFFF1, false, true},  {7, 5, false, true},
                  {8, 6, true, false},          {8, 6, false, false},          {8, 7, false, true},
                  {7, 8, false, false}};
    PointerRest pointer;
    for (const auto& sight : sights) {
        EXPECT_EQ(pointer.Seen(sight.place, sight.timeMs, sight.bySystem), sight.stood)
            << sight.place << " at " << sight.timeMs << ", by the system " << sight.bySystem;
    }
}

TEST(HoverEntry, AClickIsTheEntry) {
    EXPECT_EQ(Play("on a !a tick a tick b a tick"), " run restart - run - restart restart a");
    EXPECT_EQ(Play("on !a tick a tick b tick"), " run - run - restart b") << "a tap that told of no move";
    EXPECT_EQ(Play("on a !a:aA,bB tick a tick b tick"), " run restart - run - restart b") << "its caption after it";
    EXPECT_EQ(Play("a !a on a tick"), " leave run restart a") << "in the standard mode it is none";
}

TEST(HoverEntry, KeysAreToldApartByTheirCaption) {
    EXPECT_EQ(Play("on l tick:aA,bB r tick"), " run restart l run -") << "the other Shift key counts as the same";
    EXPECT_EQ(Play("on l tick:aA,bB a tick:aa,bb a tick"), " run restart l restart a run -") << "Shift is released";
    EXPECT_EQ(Play("on d tick d~ tick"), " run restart - d") << "no caption, no entry";
    EXPECT_EQ(Play("on a aA tick aa tick a tick a_ tick a tick aA tick a tick"),
              " run restart a - run - - run - - run -")
        << "a caption that changes under a resting pointer is no arrival";
}

} // namespace
} // namespace vextrel
