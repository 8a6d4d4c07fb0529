// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/InstructionSet.h"
#include "support/FuzzInput.h"

namespace vastrelline {

// Requires of code that picks its kernels' forms itself the same result under every limit on them, and gives
// that result. Sets that this machine lacks act as the best that it has.
//
// run   returns a result of its own that can be compared
template <typename Run>
auto RequireEqualUnderEverySet(Run run) {
    const auto runWithin = [&](InstructionSet set) {
        const ScopedInstructionSet limit(set);
        return run();
    };
    const auto expected = runWithin(InstructionSet::Reference);
    for (const InstructionSet set : {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512})
        Require(runWithin(set) == expected, "every set of instructions gives the bits of the plain forms");
    return expected;
}

// A frame's pixels from the last to the first. What goes by the levels of a frame alone treats both alike.
inline std::vector<uint16_t> Backwards(std::vector<uint16_t> pixels) {
    std::reverse(pixels.begin(), pixels.end());
    return pixels;
}

}  // namespace vastrelline
