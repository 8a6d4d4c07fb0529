// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline::digest {

// A line of the digest: what the runs of one group gave.
struct GroupHash {
    std::string name;
    std::string hash;
    size_t runCount = 0;

    friend bool operator==(const GroupHash&, const GroupHash&) = default;
};

// The lines "NAME  HASH  RUNS" of a list.
std::string WriteList(const std::vector<GroupHash>& groups);

// Reads such lines; blank ones and those that begin with '#' are passed over. A line of another form throws.
std::vector<GroupHash> ReadList(std::string_view text);

// The line "all" of a list.
GroupHash HashOfAll(const std::vector<GroupHash>& groups);

// What is not as expected, a line for each group: "NAME differs", "NAME is missing", "NAME is not expected".
// Nothing for equal lists, whatever their order.
std::vector<std::string> CompareLists(const std::vector<GroupHash>& expected,
                                      const std::vector<GroupHash>& actual);

}  // namespace vastrelline::digest
