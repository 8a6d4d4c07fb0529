// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Random numbers that are the same on every machine for the same seed. The generator and the distributions
// are our own, for those of the standard library may differ from one library to the next.
class PhantomRandom {
public:
    explicit PhantomRandom(uint64_t seed) : state_(seed) {}

    uint64_t NextBits();

    // 0 or more, below 1
    double Uniform();

    // between -reach and reach
    double Symmetric(double reach) { return (2.0 * Uniform() - 1.0) * reach; }

    // Mean 0, deviation 1, never beyond 6: the sum of twelve uniform numbers, which needs no logarithm.
    double Normal();

    // A count of events of which `mean` are expected; 0 for a mean of 0 or less. Exact for small means, a
    // rounded normal number where the difference is no longer seen.
    double Poisson(double mean);

private:
    uint64_t state_;
};

// A well stirred number made of three, the same for the same three.
uint64_t StirBits(uint64_t seed, int64_t x, int64_t y);

}  // namespace vastrelline
