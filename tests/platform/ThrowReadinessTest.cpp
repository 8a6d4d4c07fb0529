// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "platform/ThrowReadiness.h"

namespace vastrelline {

// What it is for needs a program without a C++ runtime: tests/faults has one.
TEST(MakeReadyToThrow, EveryThreadIsReadyWhereThereIsMemory) {
    EXPECT_TRUE(MakeReadyToThrow());
    bool isReady = false;
    bool hasCaught = false;
    std::thread other([&] {
        isReady = MakeReadyToThrow();
        try {
            throw std::runtime_error("thrown");
        } catch (const std::runtime_error&) {
            hasCaught = true;
        }
    });
    other.join();
    EXPECT_TRUE(isReady);
    EXPECT_TRUE(hasCaught);
}

}  // namespace vastrelline
