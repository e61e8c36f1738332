#include "core/DragGesture.h"
#include "core/HoverEntry.h"

#include "Each.h"

#include <array>
#include <map>
#include <sstream>

using namespace vextrel;

TEST(DragGesture, DragsPastTheThresholdFromTheSelectionAndFromFarOutElse) {
    using enum DragGesture::Verdict;
    // Pressed in the middle of a box of 200 x 20, with a threshold of 4: what a move leads to.
    const std::tuple<bool, Point, DragGesture::Verdict> rows[] = {
        {true, {104, 6}, Hold},   {true, {105, 10}, StartDrag},   {true, {100, 15}, StartDrag},
        {false, {219, 39}, Box},  {false, {100, 40}, StartDrag},  {false, {220, 10}, StartDrag},
        {false, {-20, -20}, Box}, {false, {100, -21}, StartDrag}, {false, {-21, 10}, StartDrag}};
    EXPECT_EQ(DragGesture().Move({500, 500}), Box) << "nothing is pressed";
    for (const auto& [onSelection, move, verdict] : rows) {
        SCOPED_TRACE(testing::Message() << move.x << ',' << move.y);
        DragGesture gesture;
        EXPECT_EQ(gesture.Press({100, 10}, onSelection, {200, 20}, {4, 4}), onSelection ? Hold : Box);
        EXPECT_EQ(gesture.Move(move), verdict);
        EXPECT_TRUE(verdict != StartDrag || gesture.Move({80, 10}) == Box) << "a drag starts once";
        // A click on the selection reaches the box after all; what has just been selected stays so.
        EXPECT_EQ(gesture.Release(), verdict == Hold ? Click : Box);
        EXPECT_EQ(gesture.Release(), Box);
        static_cast<void>(gesture.Press({100, 10}, onSelection, {200, 20}, {4, 4}));
        gesture.Cancel();
        EXPECT_EQ(gesture.Move({500, 500}), Box);
    }
}

/// A session with hover entry, told in words: the letter of a key for the pointer's move onto it, "tick", "on", "off",
/// "leave" for the background; "=a" for a coming under the resting pointer, "!a" for a click on it. What stands behind
/// a colon comes with it: of ":aAbB", a's caption becomes A, and b's B. Answers with the timer's order or the key that
/// a tick enters.
static std::string Play(const std::string& script) {
    std::map<char, std::wstring> captions{{'a', L"a"}, {'b', L"b"}, {'d', L""}, {'l', L"shft"}, {'r', L"shft"}};
    HoverEntry hover;
    std::string answers;
    const auto current = [&] { return captions[static_cast<char>(hover.CurrentButton().value_or(0))]; };
    const auto order = [&](HoverEntry::TimerOrder given) {
        answers += std::array{" leave", " run", " restart", " stop"}.at(static_cast<std::size_t>(given));
    };
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        const std::string what = word.substr(0, word.find(':'));
        std::optional<int> entered;
        if (what == "tick") {
            entered = hover.Tick(current());
            answers += {' ', static_cast<char>(entered.value_or('-'))};
        } else if (what == "on" || what == "off") {
            order(hover.SetEnabled(what == "on"));
        } else if (what == "leave") {
            order(hover.LeaveKeys());
        } else if (what.starts_with('!')) {
            entered = what[1];
        } else if (!what.empty()) {
            order(hover.MoveOverKey(what.back(), captions[what.back()], current(), what[0] == '='));
        }
        const std::wstring before = current();
        for (std::size_t i = what.size() + 1; i < word.size(); i += 2) {
            captions[word[i]] = std::wstring(word[i + 1] == '_' ? 0 : 1, static_cast<wchar_t>(word[i + 1]));
        }
        hover.CaptionRefreshed(before, current());
        if (entered) {
            hover.Entered(*entered, captions[static_cast<char>(*entered)]);
        }
    }
    return answers;
}

TEST(HoverEntry, AKeyIsEnteredOncePerArrivalAndToldByItsCaption) {
    const std::pair<const char*, const char*> rows[] = {
        {"tick a tick on tick a tick off", " - leave - run - restart a stop"}, // nothing is armed when off
        // A trembling hand delays nothing.
        {"on tick a a tick a tick b a tick", " run - restart run a run - restart restart a"},
        {"on a tick leave a tick", " run restart a stop run -"}, // the background is no other key
        // A click is the entry, also that of a tap that told of no move; in the standard mode it is none.
        {"on a !a tick a tick b a tick", " run restart - run - restart restart a"},
        {"on !a tick a tick b tick", " run - run - restart b"},
        {"a !a on a tick", " leave run restart a"},
        // What comes under a resting pointer is no arrival. The key that was armed there is gone; the pause goes on.
        {"on =a tick a tick", " run leave - restart a"},
        {"on a =a tick b =a tick b tick", " run restart leave a restart leave - restart b"},
        {"on a tick =b =a a tick", " run restart a leave leave restart -"},
        {"on a leave =a", " run restart stop leave"},
        // A caption may change with the entry, and be that of the other Shift key, too. None is no entry.
        {"on !a:aAbB tick a tick b tick", " run - run - restart b"},
        {"on l tick:aAbB r tick", " run restart l run -"},
        {"on l tick:aAbB a tick:aabb a tick", " run restart l restart a run -"},
        {"on d tick :d~ tick", " run restart - d"},
        // One that changes under a resting pointer is no arrival.
        {"on a :aA tick :aa tick a tick :a_ tick a tick :aA tick a tick", " run restart a - run - - run - - run -"}};
    ExpectEach(rows, Play);
}

TEST(PointerRest, AMoveIsNoneWhereThePointerWasSeenAndTheSystemMadeItOrTimePassed) {
    const std::tuple<std::uint32_t, std::uint32_t, bool, bool> sights[] = {
        {7, 0xFFFFFFF0, true, false}, {7, 0xFFFFFFF0, false, false}, {7, 0xFFFFFFE0, true, true},
        {7, 0xFFFFFFF1, false, true}, {7, 5, false, true},           {8, 6, true, false},
        {8, 7, false, true}};
    PointerRest pointer;
    for (const auto& [place, timeMs, bySystem, stood] : sights) {
        EXPECT_EQ(pointer.Seen(place, timeMs, bySystem), stood) << place << " at " << timeMs << ", " << bySystem;
    }
}
