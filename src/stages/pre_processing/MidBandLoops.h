// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// The loops of preProcessing over all pixels of a frame.
struct MidBandLoops {
    // The smallest pixel above 0, but `start` at most, which is above 0.
    uint16_t (*findFloor)(const uint16_t* pixels, size_t count, uint16_t start);

    // detail = first - base; each difference keeps its low 16 bits.
    void (*subtract)(const uint16_t* first, const uint16_t* base, size_t count, uint16_t* detail);

    // pixel = smoothed + (pixel - smoothed) * gain in doubles, truncated as TruncateToInt32 does and clamped
    // as ClampToPixel does.
    void (*boost)(uint16_t* pixels, const uint16_t* smoothed, size_t count, int32_t maxValue, double gain);

    // pixel = boosted + (pixel - smoothed), clamped as ClampToPixel does.
    void (*addFine)(uint16_t* pixels, const uint16_t* smoothed, const uint16_t* boosted, size_t count,
                    int32_t maxValue);

    // base + detail, or where that is above maxValue, base alone; raised to the floor. The result takes the
    // detail's place.
    void (*finish)(const uint16_t* base, uint16_t* detail, size_t count, int32_t maxValue, uint16_t floor);
};

// A form of the loops.
using MidBandVariant = Variant<const MidBandLoops*>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const MidBandVariant> MidBandVariants();

// The definition.
extern const MidBandLoops kMidBandLoopsScalar;

#if VASTRELLINE_VECTOR_FORMS
extern const MidBandLoops kMidBandLoopsBaseline;
extern const MidBandLoops kMidBandLoopsAvx2;
extern const MidBandLoops kMidBandLoopsAvx512;
#endif

}  // namespace vastrelline
