#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vextrel::bench {

/// One line of the table: what was measured of the program and of the floor under the same conditions.
struct Row {
    std::string name;
    std::string unit;
    std::vector<double> program;
    std::vector<double> floor;
    /// Measured in pairs, in this order. Met if the first holds: the median of the pairs' ratios is at most `maxRatio`,
    /// the program's median exceeds the floor's by at most `maxMore`, the program's median is under `maxValue`.
    std::optional<double> maxRatio = {};
    std::optional<double> maxMore = {};
    std::optional<double> maxValue = {};
    /// For rates, more is better: the ratio is the floor's over the program's.
    bool isRate = false;
};

/// Middle value, the mean of the two middle ones for an even number; 0 for none.
[[nodiscard]] double Median(std::vector<double> values);

/// Writes the heading and lines of one table, in Markdown.
void WriteHeading();
void Write(const Row& row);

} // namespace vextrel::bench
