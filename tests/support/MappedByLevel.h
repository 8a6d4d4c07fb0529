// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>

#include "support/Frames.h"

namespace vastrelline {

// Expects that `after` came from `before` by a curve: a curve depends on levels, not on places, so pixels of
// one level stay pixels of one level.
inline void ExpectMappedByLevel(const Frame& before, const Frame& after) {
    ASSERT_EQ(before.pixels.size(), after.pixels.size());
    std::map<uint16_t, uint16_t> curve;
    for (size_t i = 0; i < before.pixels.size(); ++i)
        EXPECT_EQ(curve.emplace(before.pixels[i], after.pixels[i]).first->second, after.pixels[i]) << i;
}

}  // namespace vastrelline
