// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "sweep/PictureLeaves.h"

namespace vastrelline {
namespace {

TEST(PictureLeaves, TellTheValues) {
    PictureLeaves leaves;
    EXPECT_EQ(leaves.Name({{"04_MAX_SLOPE", "1.5"}}), "04_MAX_SLOPE=1.5.png");
    EXPECT_EQ(leaves.Name({{"04_MAX_SLOPE", "1.5"}, {"A", "-2"}}), "04_MAX_SLOPE=1.5,A=-2.png");
}

TEST(PictureLeaves, HaveNoLetterThatAFileSystemRefuses) {
    PictureLeaves leaves;
    EXPECT_EQ(leaves.Name({{"A", "../x:\"y\"\\z w"}}), "A=.._x__y__z_w.png");
    EXPECT_EQ(leaves.Name({{".A", "1"}}), "_A=1.png");
}

TEST(PictureLeaves, AreAllDifferent) {
    PictureLeaves leaves;
    EXPECT_EQ(leaves.Name({{"A", "a b"}}), "A=a_b.png");
    EXPECT_EQ(leaves.Name({{"A", "a/b"}}), "A=a_b_2.png");
    EXPECT_EQ(leaves.Name({{"A", "A/B"}}), "A=A_B_3.png") << "the case of letters may not count";
}

TEST(PictureLeaves, AreNotTooLong) {
    PictureLeaves leaves;
    const std::string first = leaves.Name({{"A", std::string(300, 'x')}});
    const std::string second = leaves.Name({{"A", std::string(301, 'x')}});
    EXPECT_EQ(first.size(), 124U);
    EXPECT_NE(first, second);
}

}  // namespace
}  // namespace vastrelline
