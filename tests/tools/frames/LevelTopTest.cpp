// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "frames/LevelTop.h"

namespace vastrelline {
namespace {

TEST(UsualTop, IsThatOf8Or12Or16Bits) {
    EXPECT_EQ(UsualTop(0), 255);
    EXPECT_EQ(UsualTop(255), 255);
    EXPECT_EQ(UsualTop(256), 4095);
    EXPECT_EQ(UsualTop(4095), 4095);
    EXPECT_EQ(UsualTop(4096), 65535);
    EXPECT_EQ(UsualTop(65535), 65535);
}

}  // namespace
}  // namespace vastrelline
