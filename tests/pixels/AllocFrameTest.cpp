// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

#include "pixels/AllocFrame.h"
#include "support/ToVector.h"

namespace vastrelline {
namespace {

constexpr int32_t kLargestSide = std::numeric_limits<int32_t>::max();

template <typename Element>
class AllocZeroedTest : public testing::Test {};

using ElementTypes = testing::Types<uint16_t, int32_t, uint32_t, double>;
TYPED_TEST_SUITE(AllocZeroedTest, ElementTypes);

TYPED_TEST(AllocZeroedTest, GivesOneZeroForEachPixel) {
    EXPECT_EQ(ToVector(AllocZeroed<TypeParam>(3, 2)), (std::vector<TypeParam>{0, 0, 0, 0, 0, 0}));
}

TYPED_TEST(AllocZeroedTest, BlockOfAnythingHasTheSameSizes) {
    EXPECT_EQ(AllocFrame<TypeParam>(3, 2).size(), 6U);
    EXPECT_TRUE(AllocFrame<TypeParam>(0, 5).empty());
    EXPECT_THROW((void)AllocFrame<TypeParam>(-1, 5), std::length_error);
    EXPECT_THROW((void)AllocFrame<TypeParam>(0x10001, 0x10000), std::length_error);
}

TYPED_TEST(AllocZeroedTest, TableOfHeightOneIsAsLongAsItsWidth) {
    const ScratchVector<TypeParam> table = AllocZeroed<TypeParam>(4096, 1);
    EXPECT_EQ(table.size(), 4096U);
    EXPECT_TRUE(std::all_of(table.begin(), table.end(), [](TypeParam entry) { return entry == 0; }));
}

TYPED_TEST(AllocZeroedTest, BlockWithoutRowsOrColumnsIsEmpty) {
    EXPECT_TRUE(AllocZeroed<TypeParam>(0, 5).empty());
    EXPECT_TRUE(AllocZeroed<TypeParam>(5, 0).empty());
    EXPECT_TRUE(AllocZeroed<TypeParam>(0, 0).empty());
}

TYPED_TEST(AllocZeroedTest, NegativeSideCannotBeHad) {
    EXPECT_THROW((void)AllocZeroed<TypeParam>(-1, 5), std::length_error);
    EXPECT_THROW((void)AllocZeroed<TypeParam>(5, -1), std::length_error);
    EXPECT_THROW((void)AllocZeroed<TypeParam>(-2, -2), std::length_error);
}

TYPED_TEST(AllocZeroedTest, FourGigabytesCannotBeHad) {
    // 65536 rows of exactly 65536 bytes are 2^32.
    const auto width = static_cast<int32_t>(0x10000 / sizeof(TypeParam));
    EXPECT_THROW((void)AllocZeroed<TypeParam>(width, 0x10000), std::length_error);
}

TYPED_TEST(AllocZeroedTest, SizeThatWrapsAroundIn32BitsGivesNoSmallBlock) {
    // 65537 * 65536 elements are 65536 modulo 2^32.
    EXPECT_THROW((void)AllocZeroed<TypeParam>(0x10001, 0x10000), std::length_error);
    EXPECT_THROW((void)AllocZeroed<TypeParam>(kLargestSide, kLargestSide), std::length_error);
}

}  // namespace
}  // namespace vastrelline
