// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// A curve that rises or falls by one level per level between two levels and is flat outside: a clip, an
// inversion, a shift, and what comes of several of them. Arithmetic maps whole vectors of pixels through it,
// where a table takes one pixel after the other.
struct ClippedRamp {
    uint16_t low;    // the levels between which it rises or falls, low at or below high
    uint16_t high;   //
    uint16_t atLow;  // the output at `low` and below
    bool isFalling;  // an output below 0 or above 65535 wraps
};

// The ramp that maps all pixels as the table does, a pixel beyond the table as its last entry; none if the
// table is no such curve, or empty.
std::optional<ClippedRamp> FindClippedRamp(std::span<const uint16_t> table);

// A curve that goes its own way below a level only.
struct RampAbove {
    uint16_t head;     // from this level on it is the ramp
    ClippedRamp ramp;  // whose low is the head
};

// The longest ramp at the upper end of a table; none if it begins above the table's middle, so that many
// pixels are likely to lie below it.
std::optional<RampAbove> FindRampAbove(std::span<const uint16_t> table);

// Maps pixels through the ramp, in place.
void ApplyClippedRamp(std::span<uint16_t> pixels, const ClippedRamp& ramp);

// A form of the mapping.
using ClippedRampVariant = Variant<void (*)(uint16_t* pixels, size_t count, const ClippedRamp& ramp)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const ClippedRampVariant> ClippedRampVariants();

}  // namespace vastrelline
