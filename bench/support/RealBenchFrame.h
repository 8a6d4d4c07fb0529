// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "BenchFrames.h"
#include "support/BenchSize.h"
#include "support/RealFrames.h"

namespace vastrelline {

// The bitewing, a radiograph as a sensor delivers it; a piece of it where benchmarks get small frames.
inline BenchFrame ReadBitewingForBench() {
    const BenchSize size = FrameSizeOfBench();
    Frame frame = ReadPieceOfBitewing(size.width, size.height);
    return {size.width, size.height, std::move(frame.pixels)};
}

}  // namespace vastrelline
