#include "kit/Report.h"

#include "kit/Claims.h"
#include "win32/version.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string_view>

namespace vextrel::kit {

namespace {

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
}

/// An attribute's value in a part of an XML file; empty if there is none.
std::string Attribute(std::string_view part, const std::string& name) {
    const std::string begin = ' ' + name + "=\"";
    const auto at = part.find(begin);
    if (at == std::string_view::npos)
        return {};
    const auto from = at + begin.size();
    std::string value(part.substr(from, part.find('"', from) - from));
    for (const auto& [written, meant] : {std::pair{"&lt;", "<"},
                                         {"&gt;", ">"},
                                         {"&quot;", "\""},
                                         {"&apos;", "'"},
                                         {"&#x0A;", "\n"},
                                         {"&#x0D;", "\r"},
                                         {"&#x09;", "\t"},
                                         {"&amp;", "&"}})
        ReplaceAll(value, written, meant);
    return value;
}

bool IsWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        std::array<char, 8> escape{};
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
            quoted += escape.data();
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

std::string Pair(const std::string& name, const std::string& text) {
    return Quoted(name) + ": " + Quoted(text);
}

std::string Version() {
    constexpr std::wstring_view version = VEXTREL_VERSION_TEXT;
    return {version.begin(), version.end()};
}

std::string Seconds(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f", seconds);
    return text.data();
}

struct Verdict {
    std::string outcome; ///< "as claimed", "otherwise", "not here", "not run" or "by hand"
    std::string seen;
};

Verdict VerdictOn(const Claim& claim, const std::vector<Result>& results) {
    if (claim.byHand)
        return {"by hand", claim.byHand};
    std::map<std::string, int> count;
    std::string seen;
    for (const Result& result : results) {
        if (!(result.suite + "." + result.name).starts_with(claim.tests))
            continue;
        ++count[result.outcome];
        const std::string& told = result.seen.empty() ? result.text : result.seen;
        seen += (seen.empty() || told.empty() ? "" : "; ") + told;
    }
    if (seen.empty() && count["passed"] != 0)
        seen = std::to_string(count["passed"]) + " tests passed";
    return {count["failed"] != 0     ? "otherwise"
            : count["passed"] != 0   ? "as claimed"
            : count["not here"] != 0 ? "not here"
                                     : "not run",
            seen};
}

} // namespace

std::vector<Result> ReadResults(const std::string& xml) {
    constexpr std::string_view begin = "<testcase ";
    std::vector<Result> results;
    for (std::size_t at = xml.find(begin); at != std::string::npos;) {
        const auto next = xml.find(begin, at + 1);
        const std::string part = xml.substr(at, next - at);
        at = next;
        Result result{Attribute(part, "classname"), Attribute(part, "name"), "passed", "", "", 0, 1};
        result.seconds = std::strtod(Attribute(part, "time").c_str(), nullptr);
        if (const auto seen = part.find("<property name=\"seen\""); seen != std::string::npos)
            result.seen = Impersonal(Attribute(part.substr(seen), "value"));
        for (const auto& [tag, outcome] : {std::pair{"<skipped ", "not here"}, {"<failure ", "failed"}}) {
            for (auto found = part.find(tag); found != std::string::npos; found = part.find(tag, found + 1)) {
                result.outcome = outcome;
                result.text += (result.text.empty() ? "" : "\n") + Attribute(part.substr(found), "message");
            }
        }
        result.text = Impersonal(result.text.substr(0, 4000));
        results.push_back(result);
    }
    return results;
}

std::string Impersonal(const std::string& text) {
    std::string kept;
    // A path may have blanks, and quotation marks where a tool has escaped it: it ends with the line, or at the next
    // colon, which no name may have.
    for (std::size_t at = 0; at < text.size();) {
        const bool starts = at == 0 || !IsWordCharacter(text[at - 1]);
        const bool drive = at + 2 < text.size() && std::isalpha(static_cast<unsigned char>(text[at])) != 0 &&
                           text[at + 1] == ':' && (text[at + 2] == '\\' || text[at + 2] == '/');
        const bool share = text.compare(at, 2, "\\\\") == 0 && text.compare(at, 3, "\\\\\"") != 0;
        if (starts && (drive || share)) {
            kept += "<path>";
            at = std::min(text.find_first_of(":\n", at + 2), text.size());
        } else {
            kept += text[at++];
        }
    }
    for (const auto& [variable, instead] : {std::pair{"USERNAME", "<user>"}, {"COMPUTERNAME", "<machine>"}}) {
        const char* const name = std::getenv(variable);
        if (name && std::string_view(name).size() > 2) // a shorter one would be found in many a word, and names nobody
            ReplaceAll(kept, name, instead);
    }
    return kept;
}

std::size_t Report::Count(const std::string& outcome) const {
    return static_cast<std::size_t>(std::ranges::count(results, outcome, &Result::outcome));
}

std::string Report::Summary() const {
    std::ostringstream line;
    line << (end == End::Stopped    ? "STOPPED"
             : Count("failed") != 0 ? "FAILED"
                                    : "PASSED")
         << ": " << results.size() << " tests, " << Count("passed") << " passed, " << Count("failed") << " failed, "
         << Count("not here") << " not here, in " << Seconds(seconds) << " s";
    return line.str();
}

std::string Report::AsText() const {
    std::ostringstream text;
    text << "Vextrel " << Version() << ", tried out\n\n";
    for (const auto& [name, value] : facts)
        text << name << ": " << value << '\n';
    text << "\nClaims that docs/security.md marks untested\n\n";
    for (const Claim& claim : claims) {
        const Verdict verdict = VerdictOn(claim, results);
        text << claim.name << ": " << verdict.outcome << ". " << verdict.seen << '\n';
    }
    text << "\nTests\n\n";
    for (const Result& result : results) {
        text << result.outcome << "  " << result.suite << '.' << result.name << "  " << Seconds(result.seconds) << " s";
        if (result.attempts > 1)
            text << ", at attempt " << result.attempts;
        text << '\n' << result.text << (result.text.empty() ? "" : "\n");
    }
    text << '\n' << Summary() << '\n';
    std::string lines = text.str();
    ReplaceAll(lines, "\n", "\r\n");
    return lines;
}

std::string Report::AsJson() const {
    std::ostringstream json;
    const char* separator = "";
    const auto begin = [&](const char* name, char bracket) {
        json << ",\n  " << Quoted(name) << ": " << bracket;
        separator = "\n    ";
    };
    const auto next = [&] { return std::exchange(separator, ",\n    "); };
    json << "{\n  " << Pair("version", Version()) << ",\n  "
         << Pair("end", end == End::Finished ? "finished" : "stopped") << ",\n  \"seconds\": " << Seconds(seconds);
    begin("system", '{');
    for (const auto& [name, value] : facts)
        json << next() << Pair(name, value);
    json << "\n  }";
    begin("claims", '[');
    for (const Claim& claim : claims) {
        const auto [outcome, seen] = VerdictOn(claim, results);
        json << next() << '{' << Pair("name", claim.name) << ", " << Pair("outcome", outcome) << ", "
             << Pair("seen", seen) << '}';
    }
    json << "\n  ]";
    begin("tests", '[');
    for (const Result& result : results)
        json << next() << '{' << Pair("name", result.suite + "." + result.name) << ", "
             << Pair("outcome", result.outcome) << ", \"seconds\": " << Seconds(result.seconds)
             << ", \"attempts\": " << result.attempts << ", " << Pair("text", result.text) << '}';
    json << "\n  ]\n}\n";
    return json.str();
}

} // namespace vextrel::kit
