#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace vastrelline {

using Pixels = std::vector<uint16_t>;

// As long as a vector or two, so that what a vector makes is among what is compared.
inline Pixels Repeated(const Pixels& pixels) {
    Pixels repeated;
    for (int32_t i = 0; i < 8; ++i) repeated.insert(repeated.end(), pixels.begin(), pixels.end());
    return repeated;
}

// Expects of every form of a loop these pixels, repeated.
//
// variants   a list of forms of several loops
// loop       runs a form over copies of `in`: it is given the loops, what it changes, and the count
template <typename Variants, typename Loop>
void ExpectOfForms(const Variants& variants, const Pixels& in, const Pixels& expected, const Loop& loop) {
    for (const auto& variant : variants) {
        Pixels pixels = Repeated(in);
        loop(*variant.run, pixels.data(), pixels.size());
        EXPECT_EQ(pixels, Repeated(expected)) << variant.name;
    }
}

}  // namespace vastrelline
