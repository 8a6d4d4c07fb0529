// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// The smallest and the largest value of a band.
struct BandRange {
    int32_t min;
    int32_t max;
};

// The loops of pyramid enhancement over a whole band. A band is the signed 16-bit difference of two levels of
// unsigned pixels. It is made in the place of the finer level, and may be replaced there by what is rebuilt
// from it.
struct BandKernels {
    // level -= coarse; each difference keeps its low 16 bits.
    void (*subtract)(uint16_t* level, const uint16_t* coarse, size_t count);

    // The range of `count` values; `start` holds it before the first of them.
    BandRange (*findRange)(const int16_t* band, size_t count, BandRange start);

    // How often each value occurs. All lie in `range`; the first bin is for its min.
    std::vector<uint32_t> (*countValues)(const int16_t* band, size_t count, BandRange range);

    // Replaces each value v by responses[v], which exists; `responses` points at the one for 0, and those for
    // values below 0 lie before it.
    void (*remap)(int16_t* band, size_t count, const int16_t* responses);

    // sum = coarse + band, clamped to maxValue from above, then to 0 from below; low 16 bits. The sums may
    // take the band's own place.
    void (*add)(const uint16_t* coarse, const int16_t* band, size_t count, int32_t maxValue, uint16_t* sums);
};

// A form of the kernels.
using BandVariant = Variant<const BandKernels*>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const BandVariant> BandVariants();

// The definition.
extern const BandKernels kBandKernelsScalar;

#if VASTRELLINE_VECTOR_FORMS
extern const BandKernels kBandKernelsBaseline;
extern const BandKernels kBandKernelsAvx2;
extern const BandKernels kBandKernelsAvx512;
#endif

}  // namespace vastrelline
