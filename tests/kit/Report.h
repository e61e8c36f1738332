#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace vextrel::kit {

struct Result {
    std::string suite;
    std::string name;
    std::string outcome; ///< "passed", "failed" or "not here"
    std::string text;    ///< of the failures, or why it is not here
    std::string seen;    ///< what a test of a claim has noted
    double seconds = 0;
    int attempts = 1;
};

/// The cases in an XML file of googletest's.
[[nodiscard]] std::vector<Result> ReadResults(const std::string& xml);

/// Without what could tell whose machine it was: paths, and whatever the environment calls user and machine.
[[nodiscard]] std::string Impersonal(const std::string& text);

using Facts = std::vector<std::pair<std::string, std::string>>;
/// What of this machine bears on the results.
[[nodiscard]] Facts SystemFacts();

enum class End { Finished, Stopped };

struct Report {
    Facts facts;
    std::vector<Result> results;
    End end = End::Stopped; ///< until it is said otherwise
    double seconds = 0;

    [[nodiscard]] std::size_t Count(const std::string& outcome) const;
    /// The closing line.
    [[nodiscard]] std::string Summary() const;
    [[nodiscard]] std::string AsText() const;
    [[nodiscard]] std::string AsJson() const;
};

} // namespace vextrel::kit
