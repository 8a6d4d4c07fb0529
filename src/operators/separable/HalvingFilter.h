// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "operators/separable/SeparableFilter.h"
#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// A filter of a frame of whose result every second pixel of every second row is kept, from the first on. The
// others are not computed: that spares three quarters of the columns' work and half of the rows'.
struct HalvingCall {
    const uint16_t* source;  // width * height, not changed
    int32_t width;
    int32_t height;
    int32_t maxValue;
    std::span<const double> kernel;  // as in FilterCall
    EdgeRule edges;
    uint16_t* result;  // (width / 2) * (height / 2), apart from the source
};

// Exactly what FilterFrame on a copy of the source, then halving that copy would give. An empty result or
// kernel does nothing.
void FilterAndHalve(const HalvingCall& call);

// Gaussian smoothing and halving: the pixels that GaussFilterReplicate leaves on even columns of even rows.
// Where that leaves the frame as it is, they are the source's own.
//
// result   (width / 2) * (height / 2) pixels, apart from the source
void GaussHalveReplicate(const uint16_t* source, int32_t width, int32_t height, int32_t maxValue,
                         double sigma, uint16_t* result);

// A form of FilterAndHalve.
using HalvingVariant = Variant<void (*)(const HalvingCall& call)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const HalvingVariant> HalvingVariants();

// The definition.
void FilterAndHalveScalar(const HalvingCall& call);

#if VASTRELLINE_VECTOR_FORMS
void FilterAndHalveBaseline(const HalvingCall& call);
void FilterAndHalveAvx2(const HalvingCall& call);
void FilterAndHalveAvx512(const HalvingCall& call);
#endif

}  // namespace vastrelline
