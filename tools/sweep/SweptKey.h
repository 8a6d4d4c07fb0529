// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

// A key and the values that it takes one after the other, as they are written into the profile.
struct SweptKey {
    std::string key;
    std::vector<std::string> values;  // at least one, all different
};

// "04_MAX_SLOPE=1:3:0.5": the numbers from 1 to 3 in steps of 0.5, exactly as one would write them.
// "04_MAX_SLOPE=1,2.5,3": these values, taken as they are, without the blanks around them.
//
// most     values that it may be
// Errors   UsageError: neither of both, a step that never comes to the end, a value twice, too many
SweptKey ParseSweptKey(std::string_view text, size_t most);

}  // namespace vastrelline
