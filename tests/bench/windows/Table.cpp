#include "windows/Table.h"

#include <algorithm>
#include <cstdio>

namespace vextrel::bench {

namespace {

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, value < 10 ? "%.2f" : value < 1000 ? "%.1f" : "%.0f", value);
    return text;
}

std::string Spread(const std::vector<double>& values) {
    const auto [least, most] = std::ranges::minmax(values);
    return Number(Median(values)) + " (" + Number(least) + " .. " + Number(most) + ")";
}

} // namespace

double Median(std::vector<double> values) {
    if (values.empty())
        return 0;
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void WriteHeading() {
    std::puts("| measured | unit | Vextrel: median (min .. max) | floor: median (min .. max) | "
              "ratio: median (quartiles) | target | met |\n"
              "|---|---|---|---|---|---|---|");
}

void Write(const Row& row) {
    const double program = Median(row.program);
    const double floor = Median(row.floor);
    // Of each pair: what disturbed the one has disturbed the other, too.
    std::vector<double> ratios(std::min(row.program.size(), row.floor.size()));
    for (std::size_t n = 0; n < ratios.size(); ++n)
        ratios[n] = row.isRate ? row.floor[n] / row.program[n] : row.program[n] / row.floor[n];
    std::ranges::sort(ratios);
    const double ratio = Median(ratios);
    bool met = true;
    std::string target;
    const auto demand = [&](bool holds, const std::string& text) {
        met = met && holds;
        target += (target.empty() ? "" : ", ") + text;
    };
    if (row.maxRatio)
        demand(ratio <= *row.maxRatio, "at most " + Number(*row.maxRatio) + " x");
    if (row.maxMore)
        demand(program - floor < *row.maxMore, "under " + Number(*row.maxMore) + " more");
    if (row.maxValue)
        demand(program < *row.maxValue, "under " + Number(*row.maxValue));
    std::printf("| %s | %s | %s | %s | %s | %s | %s |\n", row.name.c_str(), row.unit.c_str(),
                Spread(row.program).c_str(), Spread(row.floor).c_str(),
                (Number(ratio) + " (" + Number(ratios[ratios.size() / 4]) + " .. " +
                 Number(ratios[ratios.size() * 3 / 4]) + ")")
                    .c_str(),
                target.c_str(), met ? "yes" : "no");
    std::fflush(stdout);
}

} // namespace vextrel::bench
