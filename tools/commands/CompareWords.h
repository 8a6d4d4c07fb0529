// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "comparison/PairOutcome.h"

namespace vastrelline {

// "equal", "within tolerance", "only in A", "only in B", "different", "different sizes", "unreadable"
std::string_view StateWords(PairState state);

// What came of a pair, without its state: "1 of 2 pixels (50.0000 %), largest difference 253".
std::string DescribePair(const PairOutcome& outcome, int32_t tolerance);

// How many pairs there are of each state that occurs: "24 names: 23 equal, 1 different".
std::string DescribePairs(const std::vector<PairOutcome>& outcomes);

// "equal", "within tolerance", "different" or "unreadable": of a pair or of all pairs of a folder.
std::string_view HeadlineOf(const std::vector<PairOutcome>& outcomes);

// "27.19 dB at peak 4095"; "infinite" for equal frames
std::string DescribeNoise(const PairFigures& figures);

// "3 to 4"; "1" if it is one difference
std::string DescribeClass(const DifferenceClass& differences);

}  // namespace vastrelline
