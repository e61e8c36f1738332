// How long the rules take that run on a hover or a long input. Run by tests/bench/core/run.

#include "core/KeyGrid.h"
#include "core/SendKeysParser.h"

#include <benchmark/benchmark.h>

#include <array>

namespace vextrel {
namespace {

void HitTest(benchmark::State& state) {
    std::uint32_t place = 0; // all over the layer, in no order that could be learnt
    for (auto step : state) {
        place = place * 1664525 + 1013904223;
        benchmark::DoNotOptimize(KeyUnderPoint((place >> 8) % 9000, (place >> 12) % 3000, 9000, 3000));
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
