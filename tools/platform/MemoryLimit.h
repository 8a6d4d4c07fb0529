// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// From here on this process gets no more memory of its own than so much, what it has included: allocations
// fail. A limit that is lower already stays. Builds that watch memory, and need much of it, go without.
void LimitMemory(uint64_t bytes);

// Whether this build can be limited.
bool CanLimitMemory();

}  // namespace vastrelline
