// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

#include "pixels/ScratchVector.h"
#include "support/ToVector.h"

namespace vastrelline {
namespace {

TEST(ScratchVector, HoldsTheValuesThatItIsGiven) {
    const std::vector<uint16_t> source{1, 2, 3};
    EXPECT_EQ(ToVector(ScratchVector<uint16_t>(source.begin(), source.end())), source);
    EXPECT_EQ(ToVector(ScratchVector<uint16_t>(3, 7)), (std::vector<uint16_t>{7, 7, 7}));
    EXPECT_EQ(ToVector(ScratchVector<double>(2, 0.0)), (std::vector<double>{0.0, 0.0}));
}

TEST(ScratchVector, GrowsAndKeepsWhatItHolds) {
    ScratchVector<int32_t> numbers;
    for (int32_t i = 0; i < 100000; ++i) numbers.push_back(i);
    for (int32_t i = 0; i < 100000; ++i) ASSERT_EQ(numbers[static_cast<size_t>(i)], i);
    numbers.resize(5);
    EXPECT_EQ(ToVector(numbers), (std::vector<int32_t>{0, 1, 2, 3, 4}));
}

TEST(ScratchVector, MovesWithoutACopy) {
    ScratchVector<uint16_t> from(1000, 3);
    const uint16_t* const place = from.data();
    const ScratchVector<uint16_t> to = std::move(from);
    EXPECT_EQ(to.data(), place);
}

TEST(ScratchVector, FramesOfACallComeFromTheArena) {
    const ScratchCall call(1024, 1024);
    const ScratchVector<uint16_t> frame(size_t{1024} * 1024, 1);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(frame.data()) % ScratchArena::kAlignment, 0U);
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_GE(ScratchArena::Shared().MappedBytes(), frame.size() * sizeof(uint16_t));
#endif
}

TEST(ScratchVector, TooManyElementsCannotBeHad) {
    EXPECT_THROW(ScratchVector<double>(SIZE_MAX / 4), std::length_error);
    EXPECT_THROW((void)ScratchAllocator<double>().allocate(SIZE_MAX / 4), std::bad_array_new_length);
}

}  // namespace
}  // namespace vastrelline
