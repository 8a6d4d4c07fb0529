// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "platform/OwnVersions.h"

namespace vastrelline {
namespace {

TEST(OwnVersions, HoldNothingAtFirst) {
    OwnVersions<int> own;
    EXPECT_FALSE(own.Contains(0));
}

TEST(OwnVersions, HoldTheLastFew) {
    OwnVersions<int> own;
    for (int version = 1; version <= 100; ++version) {
        own.Add(version);
        EXPECT_TRUE(own.Contains(version));
    }
    EXPECT_TRUE(own.Contains(90));
    EXPECT_FALSE(own.Contains(50));
    EXPECT_FALSE(own.Contains(0));
    EXPECT_FALSE(own.Contains(101));
}

}  // namespace
}  // namespace vastrelline
