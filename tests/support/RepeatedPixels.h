// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
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

// Expects of every form of a loop what the reference makes of these pixels, and that nothing beside them is
// written.
//
// loop   as for ExpectOfForms, over a copy of `in` between guards
template <typename Variants, typename Loop>
void ExpectReferenceBits(const Variants& variants, const char* what, const Pixels& in, const Loop& loop) {
    constexpr std::ptrdiff_t kGuards = 16;
    constexpr uint16_t kGuard = 0xA5C3;
    const auto run = [&](const auto& variant) {
        Pixels pixels(in.size() + size_t{2 * kGuards}, kGuard);
        std::copy(in.begin(), in.end(), pixels.begin() + kGuards);
        loop(*variant.run, pixels.data() + kGuards, in.size());
        return pixels;
    };
    const Pixels expected = run(variants.front());
    ASSERT_EQ(std::count(expected.begin(), expected.begin() + kGuards, kGuard), kGuards);
    ASSERT_EQ(std::count(expected.end() - kGuards, expected.end(), kGuard), kGuards);
    for (const auto& variant : variants.subspan(1))
        EXPECT_EQ(expected, run(variant)) << what << ' ' << variant.name << ' ' << in.size();
}

}  // namespace vastrelline
