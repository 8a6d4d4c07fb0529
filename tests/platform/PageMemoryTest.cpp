// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "platform/PageMemory.h"

namespace vastrelline {
namespace {

constexpr size_t kTwoMebibytes = size_t{1} << 21;

TEST(PageMemory, BlocksAreZeroedAndCanBeWrittenToTheirEnd) {
    for (const size_t bytes : {kPageStep, kTwoMebibytes, 3 * kTwoMebibytes + kPageStep}) {
        auto* const block = static_cast<unsigned char*>(MapPages(bytes));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(std::count(block, block + bytes, 0), static_cast<std::ptrdiff_t>(bytes));
        std::fill_n(block, bytes, static_cast<unsigned char>(0xFF));
        UnmapPages(block, bytes);
    }
}

TEST(PageMemory, BlocksBeginAtALineOfTheCacheAtLeast) {
    for (const size_t bytes : {kPageStep, kTwoMebibytes}) {
        void* const block = MapPages(bytes);
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 64, 0U);
        UnmapPages(block, bytes);
    }
}

TEST(PageMemory, WhatNoSystemHasIsNotThere) {
    constexpr size_t kTooMuch = std::numeric_limits<size_t>::max() / 4 / kPageStep * kPageStep;
    EXPECT_EQ(MapPages(kTooMuch), nullptr);
}

}  // namespace
}  // namespace vastrelline
