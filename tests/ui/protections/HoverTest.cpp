// Resting the pointer on keys, and the pointer as a grey dot.

#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

#include <chrono>

namespace vextrel::driver {
namespace {

using Clock = std::chrono::steady_clock;

/// Long enough for an entry that must not come, at a delay of half a second.
constexpr Milliseconds overHalfSecond{800};

POINT Near(HWND key, int by) {
    const POINT centre = CentreOf(key);
    return {centre.x + by, centre.y};
}

/// A tenth of a second of silence.
std::string ShortSound() {
    const auto number = [](unsigned value, int bytes) {
        std::string text;
        for (; bytes > 0; --bytes, value >>= 8) {
            text += static_cast<char>(value & 0xFF);
        }
        return text;
    };
    return "RIFF" + number(36 + 800, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) + number(8000, 4) +
           number(8000, 4) + number(1, 2) + number(8, 2) + "data" + number(800, 4) + std::string(800, '\x80');
}

TEST(HoverByPointer, EntersOncePerArrival) {
    const Sandbox sandbox;
    sandbox.Write("[Settings]\r\nBeep on Hover=True\r\n[Row 2 Lower Case]\r\nKey 1=x\r\n");
    const App app(sandbox);
    const HWND keys[] = {app.FindKey(L"q"), app.FindKey(L"w"), app.FindKey(L"e"), app.FindKey(L"r")};
    const POINT background = CentreOf(app.PasswordBox());
    const POINT offTheKeys{BoundsOf(app.Layer()).left + 3, BoundsOf(app.Layer()).bottom - 3}; // left of the space bar
    Pointer pointer;
    app.Mask(false);
    app.Command(ids::hoverDelayHalfSecond);
    Await("hover entry is on", [&] { return app.Checked(ids::mnuModeHover); });

    // Once, not sooner than the delay, and not again: not by resting, not by Shift or another layout under the resting
    // pointer, not after a visit to the background.
    const auto start = Clock::now();
    pointer.MoveTo(CentreOf(keys[0]));
    app.AwaitShown(L"q");
    EXPECT_GE(Clock::now() - start, Milliseconds(450));
    Keys::Down(VK_SHIFT);
    Await("the caption changes", [&] { return TextOf(keys[0]) == L"Q"; });
    EXPECT_FALSE(WaitFor([&] { return app.Shown() != L"q"; }, overHalfSecond));
    Keys::Up(VK_SHIFT);
    app.Command(ids::mnuKeyboardLayoutLastSaved);
    Await("the caption changes", [&] { return TextOf(keys[0]) == L"x"; });
    EXPECT_FALSE(WaitFor([&] { return app.Shown() != L"q"; }, overHalfSecond));
    app.Command(ids::mnuKeyboardLayoutEnglish);
    Await("the caption changes back", [&] { return TextOf(keys[0]) == L"q"; });
    pointer.MoveTo(offTheKeys);
    pointer.MoveTo(CentreOf(keys[0]));
    EXPECT_FALSE(WaitFor([&] { return app.Shown() != L"q"; }, overHalfSecond));

    // Leaving before the delay is over pauses; coming back counts the delay again; by way of another key, too.
    for (const POINT away : {offTheKeys, background}) {
        pointer.MoveTo(CentreOf(keys[1]));
        pointer.MoveTo(away);
        EXPECT_FALSE(WaitFor([&] { return app.Shown() != L"q"; }, overHalfSecond));
    }
    pointer.MoveTo(CentreOf(keys[1]));
    app.AwaitShown(L"qw");
    pointer.MoveTo(CentreOf(keys[2]));
    pointer.MoveTo(CentreOf(keys[1]));
    app.AwaitShown(L"qww");

    // A hand that trembles for longer than the delay enters all the same. A beep that is no sound, or one without a
    // sound device, holds nothing up.
    sandbox.Write(ShortSound(), L"beep.wav");
    pointer.MoveTo(CentreOf(keys[2]));
    const bool entered = WaitFor([&, by = 0]() mutable {
        pointer.MoveTo(Near(keys[2], ++by % 3));
        return app.Shown() == L"qwwe";
    });
    EXPECT_TRUE(entered);
    sandbox.Write("no sound", L"beep.wav");

    // A changed delay holds from the next key on.
    app.Command(ids::hoverDelayOneAndAHalfSeconds);
    const auto later = Clock::now();
    pointer.MoveTo(CentreOf(keys[3]));
    app.AwaitShown(L"qwwer");
    EXPECT_GE(Clock::now() - later, Milliseconds(1400));

    // Shift by hover, once per arrival, and both Shift keys are one; off again, resting enters nothing.
    app.Command(ids::hoverDelayHalfSecond);
    pointer.MoveTo(CentreOf(app.Key(42)));
    Await("Shift is down", [&] { return app.FindKey(L"Q") != nullptr; });
    pointer.MoveTo(CentreOf(keys[0]));
    app.AwaitShown(L"qwwerQ");
    app.Command(ids::mnuModeStandard);
    pointer.MoveTo(CentreOf(keys[1]));
    EXPECT_FALSE(WaitFor([&] { return app.Shown() != L"qwwerQ"; }, overHalfSecond));
}

TEST(HoverByPointer, TakesAnArrivalToEnterAKeyAndAClickForTheEntry) {
    const Sandbox sandbox;
    sandbox.Write("[Settings]\r\nMouseMode=Hover Entry Mode\r\nHover Timer Interval=500\r\n");
    const App app(sandbox);
    const Target target;
    Pointer pointer;
    app.Mask(false);
    const auto check = [&](const char* name, const std::wstring& resting, const std::wstring& moved) {
        EXPECT_FALSE(WaitFor([&] { return app.Shown() != resting; }, overHalfSecond)) << name;
        pointer.MoveTo({Pointer::Place().x + 3, Pointer::Place().y});
        EXPECT_EQ(WaitFor([&] { return app.Shown() != resting; }, overHalfSecond), moved != resting) << name;
    };
    // At a hand's pace: the program looks every 50 ms where the pointer is.
    const auto rest = [&](POINT place) {
        pointer.MoveTo(place);
        EXPECT_FALSE(WaitFor([&, before = app.Shown()] { return app.Shown() != before; }, Milliseconds(300)));
    };
    const auto comesUnderThePointer = [&](const wchar_t* key, HWND inFront, int alpha) {
        app.MoveTo({40, 40});
        rest({900, 500});
        BringToFront(inFront);
        app.AwaitLayerAlpha(alpha);
        const POINT centre = CentreOf(app.FindKey(key));
        const RECT now = BoundsOf(app.Main());
        app.MoveTo({now.left + Pointer::Place().x - centre.x, now.top + Pointer::Place().y - centre.y});
    };
    comesUnderThePointer(L"q", app.Main(), 5);
    check("the window moves", L"", L"q");

    comesUnderThePointer(L"e", target.Window(), 0);
    check("the layer is invisible", L"q", L"qe");

    BringToFront(app.Main());
    app.AwaitLayerAlpha(5);
    pointer.Click(app.FindKey(L"t"));
    app.AwaitShown(L"qet");
    check("a click", L"qet", L"qet");
}

TEST(DotPointer, IsAskedForAndShownOverTheKeysOnly) {
    const Sandbox sandbox;
    const App app(sandbox);
    Pointer pointer;
    const POINT key = CentreOf(app.FindKey(L"g"));
    const POINT space{BoundsOf(app.Layer()).left + 3, BoundsOf(app.Layer()).bottom - 3};
    pointer.MoveTo(key);
    const HCURSOR arrow = SettledPointer();
    const auto answer = [&](int button) {
        app.Command(ids::mnuModeHiddenMouseAndHover);
        const HWND question = app.AwaitDialog(L"Hide mouse - turn it into grey dot?");
        // Answerable where it lies over the layer, which then lets clicks through.
        EXPECT_NE(GetWindowLongPtrW(app.Layer(), GWL_EXSTYLE) & WS_EX_TRANSPARENT, 0);
        App::Answer(pointer, question, button);
        Await("the layer takes clicks again",
              [&] { return (GetWindowLongPtrW(app.Layer(), GWL_EXSTYLE) & WS_EX_TRANSPARENT) == 0; });
    };

    answer(IDCANCEL);
    EXPECT_TRUE(app.Checked(ids::mnuModeStandard));
    pointer.MoveTo(key);
    EXPECT_EQ(SettledPointer(), arrow);

    answer(IDOK);
    Await("the mode is in force", [&] { return app.Checked(ids::mnuModeHiddenMouseAndHover); });
    pointer.MoveTo(key);
    Await("the dot is shown", [&] { return ShownPointer() != arrow; });
    const HCURSOR dot = SettledPointer();
    const POINT toolbar = app.ToolPlace(ids::toolClear);
    const POINT box = CentreOf(app.PasswordBox());
    for (const POINT place : {toolbar, space, box}) {
        pointer.MoveTo(key);
        Await("the dot is back", [&] { return ShownPointer() == dot; });
        pointer.MoveTo(place);
        Await("no dot off the keys", [&] { return ShownPointer() != dot; });
        EXPECT_TRUE(SettledPointer() == arrow || place.y == box.y);
    }
    pointer.MoveTo(key);
    Await("the dot is back", [&] { return ShownPointer() == dot; });
    app.Command(ids::mnuModeStandard);
    Await("the arrow is back at once", [&] { return ShownPointer() == arrow; });
}

} // namespace
} // namespace vextrel::driver
