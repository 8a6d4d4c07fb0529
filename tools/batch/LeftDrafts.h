// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace vastrelline {

// Removes the drafts of output files that processes left in a folder, and in those below it, because they
// were killed. Those of processes that live stay.
//
// Returns   how many were removed; what cannot be read or removed is passed over
size_t RemoveLeftDrafts(const std::string& folder);

}  // namespace vastrelline
