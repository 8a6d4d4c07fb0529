// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// What does not depend on the single pixel.
struct SpotPowerTables {
    int32_t peak;
    std::vector<float> exponents;   // one for each mean
    std::vector<float> logarithms;  // to the base 2, of each level up to the peak as a share of it
};

// peak        2 or more
// exponents   above 0; not above 1.5
SpotPowerTables MakeSpotPowerTables(int32_t peak, std::vector<float> exponents);

// Raises every pixel, as a share of the peak, to an exponent of its own, in place.
struct SpotPowerCall {
    uint16_t* pixels;       // `count`, none above the peak
    const uint16_t* means;  // `count`: which exponent a pixel takes
    size_t count;
};

// A form of it.
using SpotPowerVariant = Variant<void (*)(const SpotPowerCall& call, const SpotPowerTables& tables)>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const SpotPowerVariant> SpotPowerVariants();

}  // namespace vastrelline
