// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frames/FrameSize.h"

namespace vastrelline {

// The sizes that a raw frame of so many bytes may have, by width: those whose long side is at most one and a
// half times the short one, as with dental sensors; if there are none up to twice, and then up to four times.
// Not more than six: those nearest to the shape of a large sensor, 1300 x 1668.
std::vector<FrameSize> GuessFrameSizes(uint64_t byteCount);

// Those sizes in words: "1300x1668, 1390x1560, 1560x1390 or 1668x1300"; empty if there are none.
std::string ListGuessedSizes(uint64_t byteCount);

// What can be said of so many bytes, behind the name of a file: "4336800 bytes fit 1300x1668, 1390x1560,
// 1560x1390 or 1668x1300 at 16 bits".
std::string DescribeByteCount(uint64_t byteCount);

}  // namespace vastrelline
