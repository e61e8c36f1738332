// How long the rules take that run on a click, a hover, a start or a long input. Run by tests/bench/core/run.

#include "core/Captions.h"
#include "core/KeyGrid.h"
#include "core/LayoutFile.h"
#include "core/RandomPlacement.h"
#include "core/SendKeysParser.h"
#include "core/TextEdit.h"
#include "core/WindowGeometry.h"

#include "HeapText.h"

#include <benchmark/benchmark.h>

#include <map>
#include <random>
#include <string>

namespace vextrel {
namespace {

void HitTest(benchmark::State& state) {
    constexpr double widthTwips = 9000;
    constexpr double heightTwips = 3000;
    constexpr std::size_t pointCount = 4096; // all over the layer, in no order that could be learnt
    std::mt19937 random(1);
    std::uniform_real_distribution<double> x(0, widthTwips);
    std::uniform_real_distribution<double> y(0, heightTwips);
    std::vector<std::pair<double, double>> points(pointCount);
    for (auto& point : points) {
        point = {x(random), y(random)};
    }
    std::size_t i = 0;
    for (auto step : state) {
        const auto& point = points[++i % pointCount];
        benchmark::DoNotOptimize(KeyUnderPoint(point.first, point.second, widthTwips, heightTwips));
    }
}
BENCHMARK(HitTest);

/// A character appended to a password of the given length, which is then taken back by Backspace.
void KeyPressAndBackspace(benchmark::State& state) {
    HeapText password;
    password.Assign(std::wstring(static_cast<std::size_t>(state.range(0)), L'x'));
    BoxState box;
    const auto press = [&](int button) {
        box.length = box.passwordLength = password.Size();
        box.selection.start = static_cast<std::int16_t>(password.Size());
        box.characterBeforeCaret = L'*';
        const KeyPressOutcome outcome = PressKey(button, L"a", box, {});
        ApplyToPassword(*outcome.edit, password);
    };
    for (auto step : state) {
        press(1);
        press(keys::backspace);
    }
    benchmark::DoNotOptimize(password.View().data());
}
BENCHMARK(KeyPressAndBackspace)->Arg(16)->Arg(1000);

/// A command of the given size in KB that holds everything that the language has.
void SendKeys(benchmark::State& state) {
    const std::wstring part = L"some plain text, {ENTER 3}{TAB}+(group ~{DEL}%(inner)) +~a{b 12} ";
    const auto size = static_cast<std::size_t>(state.range(0)) * 1000;
    std::wstring command;
    while (command.size() < size) {
        command += part;
    }
    for (auto step : state) {
        const SendKeysProgram program = ParseSendKeys(command);
        benchmark::DoNotOptimize(program.strokes.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(command.size()));
}
BENCHMARK(SendKeys)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// As many KB of what parses worst, should any of it be read twice: brackets and braces that never close, modifiers
/// that never find their key.
void SendKeysHostile(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0)) * 1000;
    std::wstring commands[3];
    for (std::size_t i = 0; i < size; ++i) {
        commands[0] += i % 2 == 0 ? L'+' : L'(';
        commands[1] += i % 3 == 0 ? L'{' : i % 3 == 1 ? L'{' : L'}';
        commands[2] += L'~';
    }
    for (auto step : state) {
        for (const std::wstring& command : commands) {
            const SendKeysProgram program = ParseSendKeys(command);
            benchmark::DoNotOptimize(program.strokes.data());
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(3 * size));
}
BENCHMARK(SendKeysHostile)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// A whole layout read, without the file.
void LayoutMapping(benchmark::State& state) {
    std::map<std::wstring, std::wstring, std::less<>> values;
    Layout layout;
    for (const LayoutEntry& entry : LayoutEntries(layout)) {
        values[entry.section + L"/" + entry.key] = entry.value;
    }
    const LayoutReader read = [&values](std::wstring_view section, std::wstring_view key) {
        return values.find(std::wstring(section) + L"/" + std::wstring(key))->second;
    };
    for (auto step : state) {
        ReadLayoutEntries(read, layout);
        benchmark::DoNotOptimize(layout);
    }
}
BENCHMARK(LayoutMapping)->Unit(benchmark::kMicrosecond);

/// The captions of all keys, as Shift has them shown anew.
void CaptionRefresh(benchmark::State& state) {
    const Layout layout;
    const KeySlotTable slots;
    for (auto step : state) {
        const auto captions = RefreshedCaptions(layout.captions, layout.actionCaptions, {.shiftIsDown = true}, slots);
        benchmark::DoNotOptimize(captions.data());
    }
}
BENCHMARK(CaptionRefresh)->Unit(benchmark::kMicrosecond);

void WindowLayoutAtNewSize(benchmark::State& state) {
    WindowGeometryInput input{
        .clientHeightTwips = 5400, .frameWidthTwips = 240, .toolbarHeightPx = 40, .statusBarHeightPx = 22};
    for (auto step : state) {
        input.clientWidthTwips = input.clientWidthTwips < 15000 ? input.clientWidthTwips + 15 : 6000;
        benchmark::DoNotOptimize(GeometryOfWindow(input));
    }
}
BENCHMARK(WindowLayoutAtNewSize);

} // namespace
} // namespace vextrel

BENCHMARK_MAIN();
