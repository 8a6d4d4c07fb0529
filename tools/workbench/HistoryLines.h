// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/RunShelf.h"

namespace vastrelline {

// The lines of a lasting history, a JSON object each.

// A run as the history keeps it.
struct PastRun {
    HistoryRow row;         // its frame's place is that of today's list, once somebody has looked
    std::string frameName;  // as that list had it
};

// How often one run of a pair was found better, the other, or neither, by the numbers of both.
using ChoiceCounts = std::map<std::pair<uint64_t, uint64_t>, std::array<int, 3>>;

// What a history holds.
struct PastRuns {
    std::vector<PastRun> runs;  // the oldest first
    std::optional<uint64_t> pinnedA;
    std::optional<uint64_t> pinnedB;
    ChoiceCounts choices;
};

// Each with a line end.
//
// withProfile   false: an earlier line of the file has the same bytes
std::string RunLine(const PastRun& run, bool withProfile);
std::string NameLine(uint64_t run, const std::string& name);
std::string PinLine(std::optional<uint64_t> run, bool isA);
std::string ChoiceLine(std::pair<uint64_t, uint64_t> pair, const std::array<int, 3>& counts);

// What whole lines say. Passed over: a line that is broken or is none of these, a run whose profile's bytes
// are not there, and what is said of a run that is not there.
PastRuns ReadHistoryLines(std::string_view text);

// All of it as lines, of the runs only the newest. What is said of others goes.
std::string WriteHistoryLines(const PastRuns& past, size_t mostRuns);

}  // namespace vastrelline
