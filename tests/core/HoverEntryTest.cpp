#include "core/HoverEntry.h"

#include "core/KeyTable.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace vextrel {
namespace {

/// A session with hover entry, told in words: the letter of a key for the pointer's move onto it, "tick", "on", "off",
/// "leave" for the background, "forget" for the key it was on; "aA" for a's caption becoming A, and "tick:aA,bB" where
/// the entry of a key changes captions. Answers with the timer's order or the key that a tick enters.
std::string Play(const std::string& script) {
    const std::map<char, int> keyOf{{'a', 31}, {'b', 48}, {'d', 1}, {'l', keys::leftShift}, {'r', keys::rightShift}};
    std::map<int, std::wstring> captions{
        {31, L"a"}, {48, L"b"}, {1, L""}, {keys::leftShift, L"shft"}, {keys::rightShift, L"shft"}};
    HoverEntry hover;
    const auto current = [&] { return hover.CurrentButton() ? captions[*hover.CurrentButton()] : std::wstring(); };
    const auto refresh = [&](const std::string& changes) {
        const std::wstring before = current();
        for (std::size_t i = 0; i + 1 < changes.size(); i += 3) {
            const auto caption = static_cast<wchar_t>(changes[i + 1]);
            captions[keyOf.at(changes[i])] = std::wstring(caption == L'_' ? 0 : 1, caption);
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
            answers += " -";
            for (const auto& [letter, key] : keyOf)
                answers.back() = entered == key ? letter : answers.back();
            if (entered) {
                refresh(word.substr(std::min<std::size_t>(word.size(), 5)));
                hover.Entered(current());
            }
        } else if (word == "on" || word == "off") {
            order(hover.SetEnabled(word == "on"));
        } else if (word == "leave") {
            order(hover.LeaveKeys());
            EXPECT_TRUE(hover.IsEnabled()) << "paused, not off";
        } else if (word == "forget") {
            hover.ClearCurrentButton();
        } else if (word.size() == 1) {
            order(hover.MoveOverKey(keyOf.at(word[0]), captions[keyOf.at(word[0])], current()));
        } else {
            refresh(word);
        }
    }
    return answers;
}

TEST(HoverEntry, AKeyIsEnteredOncePerArrival) {
    EXPECT_EQ(Play("tick a tick on tick off"), " - leave - run a stop") << "switched off, it only remembers the key";
    EXPECT_EQ(Play("on tick a a tick a tick b a tick"), " run - restart run a run - restart restart a")
        << "a trembling hand delays nothing";
    EXPECT_EQ(Play("on a tick leave a tick forget tick a tick"), " run restart a stop run - - restart -")
        << "the background is no other key";
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
