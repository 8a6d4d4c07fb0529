// SPDX-License-Identifier: Apache-2.0
#include "profile/LineDifference.h"

#include <algorithm>
#include <cstdint>

namespace vastrelline {
namespace {

using Lines = std::span<const std::string_view>;

// The rows of the search are kept for the way back: their number squared is the memory.
constexpr int32_t kMostSteps = 2000;

// Walks from both beginnings to both ends: a step down is a line that is gone, one to the right a new line,
// and lines that are the same cost nothing. Of all points that a number of steps leads to, those that are
// farthest on their diagonal are known.
class Search {
public:
    Search(Lines old, Lines now) : old_(old), now_(now) {}

    // Which lines are shared, as pairs in their order; nothing: too many steps.
    std::optional<std::vector<std::pair<size_t, size_t>>> FindShared() {
        const auto height = static_cast<int32_t>(old_.size());
        const auto width = static_cast<int32_t>(now_.size());
        const int32_t most = std::min(height + width, kMostSteps);
        for (int32_t steps = 0; steps <= most; ++steps) {
            std::vector<int32_t> row(static_cast<size_t>(2 * steps + 1));
            for (int32_t diagonal = -steps; diagonal <= steps; diagonal += 2) {
                int32_t y = FirstOn(diagonal, steps);
                while (y < height && y + diagonal < width && y + diagonal >= 0 &&
                       old_[static_cast<size_t>(y)] == now_[static_cast<size_t>(y + diagonal)])
                    ++y;
                row[static_cast<size_t>(diagonal + steps)] = y;
                if (y >= height && y + diagonal >= width) {
                    rows_.push_back(std::move(row));
                    return WalkBack(steps, height, width);
                }
            }
            rows_.push_back(std::move(row));
        }
        return std::nullopt;
    }

private:
    // How far down a diagonal goes (new minus old line number) after so many steps.
    int32_t Reached(int32_t steps, int32_t diagonal) const {
        return rows_[static_cast<size_t>(steps)][static_cast<size_t>(diagonal + steps)];
    }

    // Whether the last of the steps to a diagonal is one down.
    bool ComesFromAbove(int32_t diagonal, int32_t steps) const {
        if (diagonal == -steps) return true;
        return diagonal != steps && Reached(steps - 1, diagonal + 1) + 1 > Reached(steps - 1, diagonal - 1);
    }

    int32_t FirstOn(int32_t diagonal, int32_t steps) const {
        if (steps == 0) return 0;
        return ComesFromAbove(diagonal, steps) ? Reached(steps - 1, diagonal + 1) + 1
                                               : Reached(steps - 1, diagonal - 1);
    }

    std::vector<std::pair<size_t, size_t>> WalkBack(int32_t steps, int32_t y, int32_t x) const {
        std::vector<std::pair<size_t, size_t>> shared;
        for (; steps >= 0; --steps) {
            const int32_t diagonal = x - y;
            const int32_t first = FirstOn(diagonal, steps);
            for (; y > first; --y, --x) shared.emplace_back(y - 1, x - 1);
            if (steps == 0) break;
            if (ComesFromAbove(diagonal, steps))
                --y;
            else
                --x;
        }
        std::reverse(shared.begin(), shared.end());
        return shared;
    }

    Lines old_;
    Lines now_;
    std::vector<std::vector<int32_t>> rows_;
};

void AppendLine(std::string& text, char mark, std::string_view line) {
    text.push_back(mark);
    text.append(line).push_back('\n');
}

// "-3,2": from which line on how many; of none, the line before them.
std::string RangeText(char mark, size_t begin, size_t end) {
    std::string text(1, mark);
    text.append(std::to_string(begin == end ? begin : begin + 1));
    if (end - begin != 1) text.append(",").append(std::to_string(end - begin));
    return text;
}

}  // namespace

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<LineRun> DiffLines(Lines old, Lines now) {
    size_t head = 0;
    while (head < old.size() && head < now.size() && old[head] == now[head]) ++head;
    size_t tail = 0;
    while (tail < old.size() - head && tail < now.size() - head &&
           old[old.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;
    const Lines oldMiddle = old.subspan(head, old.size() - head - tail);
    const Lines nowMiddle = now.subspan(head, now.size() - head - tail);
    std::vector<std::pair<size_t, size_t>> shared =
        Search(oldMiddle, nowMiddle).FindShared().value_or(std::vector<std::pair<size_t, size_t>>());
    shared.emplace_back(oldMiddle.size(), nowMiddle.size());
    std::vector<LineRun> runs;
    LineRun next{head, head, head, head};
    for (const auto& [y, x] : shared) {
        next.oldEnd = head + y;
        next.nowEnd = head + x;
        if (next.oldEnd > next.oldBegin || next.nowEnd > next.nowBegin) runs.push_back(next);
        next.oldBegin = next.oldEnd + 1;
        next.nowBegin = next.nowEnd + 1;
    }
    return runs;
}

std::vector<LineChange> FindLineChanges(std::string_view old, std::string_view now) {
    const std::vector<std::string_view> oldLines = SplitLines(old);
    const std::vector<std::string_view> nowLines = SplitLines(now);
    std::vector<LineChange> changes;
    for (const LineRun& run : DiffLines(oldLines, nowLines)) {
        const size_t gone = run.oldEnd - run.oldBegin;
        const size_t come = run.nowEnd - run.nowBegin;
        for (size_t i = 0; i < std::max(gone, come); ++i) {
            LineChange change{run.nowBegin + std::min(i, come) + 1, std::nullopt, std::nullopt};
            if (i < gone) change.old = std::string(oldLines[run.oldBegin + i]);
            if (i < come) change.now = std::string(nowLines[run.nowBegin + i]);
            changes.push_back(std::move(change));
        }
    }
    return changes;
}

std::string UnifiedDifference(std::string_view old, std::string_view now, std::string_view oldName,
                              std::string_view nowName) {
    constexpr size_t kAround = 3;
    const std::vector<std::string_view> oldLines = SplitLines(old);
    const std::vector<std::string_view> nowLines = SplitLines(now);
    const std::vector<LineRun> runs = DiffLines(oldLines, nowLines);
    std::string text;
    if (runs.empty()) return text;
    text.append("--- ").append(oldName).append("\n+++ ").append(nowName).append("\n");
    for (size_t first = 0; first < runs.size();) {
        size_t last = first;
        while (last + 1 < runs.size() && runs[last + 1].oldBegin - runs[last].oldEnd <= 2 * kAround) ++last;
        const size_t before = std::min(kAround, runs[first].oldBegin);
        const size_t behind = std::min(kAround, oldLines.size() - runs[last].oldEnd);
        text.append("@@ ")
            .append(RangeText('-', runs[first].oldBegin - before, runs[last].oldEnd + behind))
            .append(" ")
            .append(RangeText('+', runs[first].nowBegin - before, runs[last].nowEnd + behind))
            .append(" @@\n");
        size_t at = runs[first].oldBegin - before;
        for (; first <= last; ++first) {
            const LineRun& run = runs[first];
            for (; at < run.oldBegin; ++at) AppendLine(text, ' ', oldLines[at]);
            for (; at < run.oldEnd; ++at) AppendLine(text, '-', oldLines[at]);
            for (size_t i = run.nowBegin; i < run.nowEnd; ++i) AppendLine(text, '+', nowLines[i]);
        }
        for (const size_t end = at + behind; at < end; ++at) AppendLine(text, ' ', oldLines[at]);
    }
    return text;
}

}  // namespace vastrelline
