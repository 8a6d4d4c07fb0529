// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdlib>

namespace vastrelline {

struct BenchSize {
    int32_t width;
    int32_t height;
};

// The size of the frame that a benchmark works on, in pixels: that of a large intra-oral sensor. With the
// environment variable VASTRELLINE_BENCH_SMALL, as the tests set it, a few pixels: enough to run all code.
inline BenchSize FrameSizeOfBench() {
    return std::getenv("VASTRELLINE_BENCH_SMALL") != nullptr ? BenchSize{65, 43} : BenchSize{1300, 1668};
}

}  // namespace vastrelline
