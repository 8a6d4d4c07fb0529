// SPDX-License-Identifier: Apache-2.0
#include "runs/RunLog.h"

#include <charconv>
#include <cstddef>

namespace vastrelline {
namespace {

constexpr std::string_view kMark = "#### ";
constexpr std::string_view kEnd = "End Post-Processing";

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The text between two others; the last `after` counts, for what a profile says may hold anything.
std::optional<std::string_view> Between(std::string_view line, std::string_view before,
                                        std::string_view after) {
    const size_t start = line.find(before);
    if (start == std::string_view::npos) return std::nullopt;
    const size_t end = line.rfind(after);
    if (end == std::string_view::npos || end < start + before.size()) return std::nullopt;
    return line.substr(start + before.size(), end - start - before.size());
}

// " 0.012 sec " and " 12 ms ".
std::optional<double> ParseTime(std::string_view text) {
    text = Trim(text);
    double value = 0.0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    const std::string_view unit = Trim(text.substr(static_cast<size_t>(rest - text.data())));
    if (unit == "sec") return value * 1000.0;
    if (unit == "ms") return value;
    return std::nullopt;
}

// Reads one line after the other and keeps the last run.
class LogReader {
public:
    void Read(std::string_view line) {
        const std::string_view content = Trim(line);
        if (content.starts_with(kMark))
            ReadMarked(content);
        else if (run_)
            ReadDetail(content);
    }

    std::optional<RunLog> Run() && { return std::move(run_); }

private:
    void ReadMarked(std::string_view line) {
        const size_t colon = line.find("\t: ");
        if (colon == std::string_view::npos) return;
        const std::string_view text = line.substr(colon + 3);
        if (Start(text, "Start Quorla.dll [CR Mode v", LoggedChain::Cr)) return;
        if (Start(text, "Start Quorla.dll [v", LoggedChain::Fixed)) return;
        if (Start(text, "Start Vastrelline.dll [v", LoggedChain::Configured)) return;
        if (run_) ReadTimed(text);
    }

    bool Start(std::string_view text, std::string_view head, LoggedChain chain) {
        if (!text.starts_with(head)) return false;
        const std::string_view version = text.substr(head.size());
        run_ = RunLog{chain, std::string(version.substr(0, version.rfind(']'))), {}, {}, {}};
        return true;
    }

    void ReadTimed(std::string_view text) {
        const size_t open = text.rfind('(');
        const std::optional<std::string_view> inside = Between(text, "(", ")");
        if (open == std::string_view::npos || !inside) return;
        const std::optional<double> elapsedMs = ParseTime(text.substr(open + 1, text.rfind(')') - open - 1));
        if (!elapsedMs) return;
        const std::string_view name = Trim(text.substr(0, open));
        if (name == kEnd)
            run_->totalMs = elapsedMs;
        else
            run_->stages.push_back({std::string(name), *elapsedMs, {}});
    }

    void ReadDetail(std::string_view line) {
        if (run_->stages.empty()) {
            const std::optional<std::string_view> section = Between(line, "Section Name [", "]");
            if (section && !run_->totalMs) run_->section = *section;
            return;
        }
        const size_t colon = line.find(':');
        if (colon == std::string_view::npos || run_->totalMs) return;
        run_->stages.back().values.emplace_back(Trim(line.substr(0, colon)), Trim(line.substr(colon + 1)));
    }

    std::optional<RunLog> run_;
};

}  // namespace

std::optional<RunLog> ReadLastRun(std::string_view text) {
    LogReader reader;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        reader.Read(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return std::move(reader).Run();
}

}  // namespace vastrelline
