// SPDX-License-Identifier: Apache-2.0

// The frames of a benchmark come from the arena, as those of a call do.

#include "pixels/ScratchArena.h"
#include "support/BenchSize.h"

namespace vastrelline {
namespace {

const ScratchCall kCallOfAllBenches(FrameSizeOfBench().width, FrameSizeOfBench().height);

}  // namespace
}  // namespace vastrelline
