// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "comparison/PairOutcome.h"

namespace vastrelline {

// The outcomes as JUnit XML: a test case for each pair, a failure for what differs, an error for what could
// not be read. Names may hold any bytes.
//
// title   of the test suite
std::string FormatJunit(const std::string& title, const std::vector<PairOutcome>& outcomes,
                        int32_t tolerance);

}  // namespace vastrelline
