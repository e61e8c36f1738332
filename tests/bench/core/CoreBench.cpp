// How long the rules take that run on a hover or a long input. Run by tests/bench/core/run.

#include "core/KeyGrid.h"
#include "core/SendKeysParser.h"

#include <benchmark/benchmark.h>

#include <array>
#include <random>

namespace vextrel {
namespace {

void HitTest(benchmark::State& state) {
    std::mt19937 random(1);
    std::array<std::pair<double, double>, 4096> points; // all over the layer, in no order that could be learnt
    for (auto& [x, y] : points) {
        x = static_cast<double>(random() % 9000);
        y = static_cast<double>(random() % 3000);
    }
    std::size_t i = 0;
    for (auto step : state) {
        const auto& [x, y] = points[++i % points.size()];
        benchmark::DoNotOptimize(KeyUnderPoint(x, y, 9000, 3000));
    }
}
BENCHMARK(HitTest);

/// Commands of the given size in KB. The first holds everything that the language has; the others would parse worst,
/// should any of it be read twice: brackets and braces that never close, modifiers that never find their key.
void SendKeys(benchmark::State& state) {
    constexpr std::array parts{L"some plain text, {ENTER 3}{TAB}+(group ~{DEL}%(inner)) +~a{b 12} ", L"+(", L"{{}",
                               L"~"};
    const auto size = static_cast<std::size_t>(state.range(0)) * 1000;
    std::wstring command;
    while (command.size() < size) {
        command += parts.at(static_cast<std::size_t>(state.range(1)));
    }
    for (auto step : state) {
        benchmark::DoNotOptimize(ParseSendKeys(command).strokes.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(command.size()));
}
BENCHMARK(SendKeys)->ArgsProduct({{100, 1000, 10000}, {0, 1, 2, 3}})->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vextrel

BENCHMARK_MAIN();
