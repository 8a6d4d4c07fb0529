// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "commands/CompareOptions.h"
#include "comparison/PairOutcome.h"

namespace vastrelline {

// What compare prints of two frames.
std::string FormatPair(const PairOutcome& outcome, const CompareOptions& options);

// What compare prints of two folders: a line for all, then, the worst first, one for each pair that is not
// equal.
//
// outcomes   sorted: SortWorstFirst
std::string FormatPairs(const std::vector<PairOutcome>& outcomes, const CompareOptions& options);

// The same for programs: docs/tool-json.md.
nlohmann::ordered_json PairToJson(const PairOutcome& outcome, const CompareOptions& options);
nlohmann::ordered_json PairsToJson(const std::vector<PairOutcome>& outcomes, const CompareOptions& options);

}  // namespace vastrelline
