// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// Replaces a frame by the strength of the edges in it: in both directions a quarter of the Sobel sum over
// 3 by 3 pixels, truncated toward zero, then the length of the two together, truncated.
//
// pixels     width * height pixels; the low 16 bits of the length are kept
// Edges      pixels on the border become 0, so all of a frame narrower or lower than 3
// Rounding   squares in doubles, which hold them exactly; the root is the nearest double, then truncated
void SobelMagnitudeInPlace(uint16_t* pixels, int32_t width, int32_t height);

// One row of magnitudes.
struct SobelRowCall {
    const uint16_t* above;  // count + 2 pixels each: place i sees i, i + 1 and i + 2
    const uint16_t* centre;
    const uint16_t* below;
    int32_t count;
    uint16_t* magnitudes;  // count; apart from the rows
};

// A form of the row.
using SobelRowVariant = Variant<void (*)(const SobelRowCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const SobelRowVariant> SobelRowVariants();

// SobelMagnitudeInPlace with a form of choice.
void SobelMagnitudeWith(const SobelRowVariant& variant, uint16_t* pixels, int32_t width, int32_t height);

// The definition.
void SobelRowScalar(const SobelRowCall& call);

#if VASTRELLINE_VECTOR_FORMS
void SobelRowBaseline(const SobelRowCall& call);
void SobelRowAvx2(const SobelRowCall& call);
void SobelRowAvx512(const SobelRowCall& call);
#endif

}  // namespace vastrelline
